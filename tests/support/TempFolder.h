#pragma once

#include "common/ScratchFolder.h"

/** A fresh folder, removed with everything in it at the end: a plug-in started there reads its settings
    from it and writes them there when it goes, so no test shares a settings file with another. */
struct TempFolder
{
    TempFolder()
        : scratch ("vantrice-test")
        , folder (scratch.getFolder())
    {
    }

    ScratchFolder scratch;
    const juce::File folder;
};
