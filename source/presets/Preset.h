#pragma once

#include <juce_core/juce_core.h>

#include <atomic>
#include <memory>

/** One slot of the bank: a name and one normalised value per preset parameter. The values are single
    words read and written atomically: the audio thread reads a slot while it applies it, a word at a
    time, and a file may be read into it meanwhile. The name is guarded by the bank. */
struct Preset final
{
    Preset (int numValuesToUse, int numberInRow);

    float getValue (int index) const noexcept;
    void setValue (int index, float value) noexcept;
    void copyValuesFrom (const Preset& other) noexcept;

    juce::String name{ "Preset" };
    std::unique_ptr<std::atomic<float>[]> values;
    int numValues = 0;
    int number = -1; // position when made; nothing reads it after a move

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Preset)
};
