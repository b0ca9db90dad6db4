#pragma once

#include <juce_core/juce_core.h>

/** A named run of consecutive presets in the bank's row; it may be empty. */
struct PresetGroup final
{
    PresetGroup (const juce::String& groupName, int groupSize)
        : name (groupName)
        , size (groupSize)
    {
    }

    juce::String name;
    int size = 0;
};
