#include "AverageSpectrum.h"

#include <gtest/gtest.h>

namespace
{
class AverageSpectrumTransform : public ::testing::TestWithParam<int>
{
};

TEST_P (AverageSpectrumTransform, MatchesThePlainDft)
{
    const int n = GetParam();
    juce::Random random (7);
    std::vector<std::complex<double>> data ((size_t) n);
    for (auto& x : data)
        x = { random.nextDouble() - 0.5, random.nextDouble() - 0.5 };

    auto fast = data;
    AverageSpectrum::transform (fast);

    for (int k = 0; k < n; ++k)
    {
        std::complex<double> sum;
        for (int i = 0; i < n; ++i)
            sum += data[(size_t) i] * std::polar (1.0, -juce::MathConstants<double>::twoPi * k * i / n);
        EXPECT_NEAR (fast[(size_t) k].real(), sum.real(), 1.0e-9) << "bin " << k;
        EXPECT_NEAR (fast[(size_t) k].imag(), sum.imag(), 1.0e-9) << "bin " << k;
    }
}

INSTANTIATE_TEST_SUITE_P (Sizes, AverageSpectrumTransform, ::testing::Values (1, 2, 8, 64, 256));

struct SineCase
{
    int bin;
    double amplitude;
    int numSamples;
};

class AverageSpectrumSine : public ::testing::TestWithParam<SineCase>
{
};

TEST_P (AverageSpectrumSine, PeaksAtItsBinWithItsLevel)
{
    const auto& c = GetParam();
    const double rate = 44100.0;
    const double hz = AverageSpectrum::binFrequency (c.bin, rate);
    juce::AudioBuffer<float> buffer (2, c.numSamples);
    for (int ch = 0; ch < 2; ++ch)
        for (int i = 0; i < c.numSamples; ++i)
            buffer.setSample (
                ch, i, (float) (c.amplitude * std::sin (juce::MathConstants<double>::twoPi * hz * i / rate)));

    const auto levels = AverageSpectrum::measure (buffer);
    ASSERT_EQ ((int) levels.size(), AverageSpectrum::numBins);

    const auto peak = std::max_element (levels.begin(), levels.end()) - levels.begin();
    EXPECT_EQ (peak, c.bin);
    // A full frame has the sine's level and Hann's sidelobes, far down a few bins away; a shorter signal
    // is cut off by the frame's end.
    if (c.numSamples >= AverageSpectrum::fftSize)
    {
        EXPECT_NEAR (levels[(size_t) c.bin], 20.0 * std::log10 (c.amplitude), 0.01);
        EXPECT_LT (levels[(size_t) c.bin + 10], levels[(size_t) c.bin] - 60.0);
    }
}

INSTANTIATE_TEST_SUITE_P (Table, AverageSpectrumSine,
                          ::testing::Values (SineCase{ 100, 1.0, 44100 }, SineCase{ 37, 0.5, 44100 },
                                             SineCase{ 1000, 0.1, AverageSpectrum::fftSize },
                                             SineCase{ 300, 1.0, 1000 }));

TEST (AverageSpectrum, SilenceLiesOnTheFloor)
{
    juce::AudioBuffer<float> silence (1, 5000);
    silence.clear();
    for (double level : AverageSpectrum::measure (silence))
        EXPECT_EQ (level, AverageSpectrum::floorDecibels);
    for (double level : AverageSpectrum::measure (juce::AudioBuffer<float> (1, 0)))
        EXPECT_EQ (level, AverageSpectrum::floorDecibels);
}
} // namespace
