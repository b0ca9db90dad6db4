#pragma once

#include <juce_core/juce_core.h>

/** A fresh folder, removed with everything in it at the end: a plug-in started there reads its settings
    from it and writes them there when it goes, so no test shares a settings file with another. */
struct TempFolder
{
    TempFolder()
        : folder (juce::File::createTempFile ("vantrice-test"))
    {
        folder.createDirectory();
    }

    ~TempFolder() { folder.deleteRecursively(); }

    TempFolder (const TempFolder&) = delete;
    TempFolder& operator= (const TempFolder&) = delete;

    juce::File folder;
};
