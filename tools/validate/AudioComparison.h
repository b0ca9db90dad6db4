#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** Sample-exact comparison of two renders. */
class AudioComparison
{
public:
    /** Whether both have the same size and every sample the same bits; why not, in detail. */
    static bool identical (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b,
                           juce::String& whyNot);

    /** The first sample position at which any channel differs, or -1. */
    static int firstDifference (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b);

    /** The largest magnitude over all channels in [start, start + length). */
    static float peak (const juce::AudioBuffer<float>& audio, int start, int length);

    /** Whether every sample is a finite number. */
    static bool allFinite (const juce::AudioBuffer<float>& audio);
};
