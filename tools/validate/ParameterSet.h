#pragma once

#include "ExpectedPlugin.h"

#include <juce_audio_processors/juce_audio_processors.h>

/** Values for the 18 parameters: settings for a check, or what a processor's host parameters show. */
class ParameterSet
{
public:
    /** The defaults of a fresh instance. */
    ParameterSet();

    /** Every parameter at a value of its own, drawn by a seeded generator; stepped parameters on their
        steps, continuous ones anywhere, and the channels sometimes linked. */
    static ParameterSet random (juce::int64 seed);

    float& operator[] (int index) { return values[(size_t) index]; }
    float operator[] (int index) const { return values[(size_t) index]; }

    /** The values as the processor's host parameters show them now. */
    static ParameterSet readFrom (juce::AudioProcessor& processor);

    juce::String describe() const;

private:
    std::array<float, ExpectedPlugin::numParameters> values{};
};
