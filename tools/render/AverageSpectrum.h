#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <complex>
#include <vector>

/** The long-term spectrum of a signal: Hann-windowed FFT frames, half overlapping, their power averaged
    over frames and channels. */
class AverageSpectrum
{
public:
    static constexpr int fftOrder = 12;
    static constexpr int fftSize = 1 << fftOrder; // about 10 Hz per bin at 44100 Hz
    static constexpr int numBins = fftSize / 2 + 1;
    static constexpr int maxFrames = 2000; // enough for a steady average; long files are sampled evenly
    static constexpr double floorDecibels = -240.0;

    /** In-place radix-2 FFT; the size must be a power of two. */
    static void transform (std::vector<std::complex<double>>& data);

    /** numBins levels in dB, 0 dB for a full-scale sine centred on a bin, never below floorDecibels. */
    static std::vector<double> measure (const juce::AudioBuffer<float>& buffer);

    static double binFrequency (int bin, double sampleRate) noexcept { return bin * sampleRate / fftSize; }
};
