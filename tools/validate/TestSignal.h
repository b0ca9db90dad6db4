#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** Deterministic stereo material for the checks: music-like tones with noise, and a steady tone. */
class TestSignal
{
public:
    /** Two tones and some noise per channel, different on each side, with a slow level swell so that the
        crusher's quantiser and the filters see a range of levels. The same seed gives the same samples. */
    static juce::AudioBuffer<float> makeMaterial (int numSamples, double sampleRate, juce::int64 seed);

    /** One sine on both channels at a steady level: what a fade is measured on. */
    static juce::AudioBuffer<float> makeSteadyTone (int numSamples, double sampleRate);
};
