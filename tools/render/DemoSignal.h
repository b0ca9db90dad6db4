#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** The signal rendered when no input file is given: four bars of a synthesized drum-and-chord loop,
    kick, snare, hats and a chord pad, in stereo. The same for every run: its noise has fixed seeds. */
class DemoSignal
{
public:
    static constexpr double defaultSampleRate = 44100.0;
    static constexpr double tempoBpm = 120.0;
    static constexpr int numBars = 4;

    /** Eight seconds at 120 BPM, at any rate; the synthesis follows the rate, not the samples. */
    static juce::AudioBuffer<float> create (double sampleRate = defaultSampleRate);

    static double getDurationSeconds() noexcept { return numBars * 4 * 60.0 / tempoBpm; }
};
