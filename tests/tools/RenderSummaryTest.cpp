#include "RenderSummary.h"

#include <gtest/gtest.h>

namespace
{
struct LevelCase
{
    const char* name;
    float (*sample) (int channel, int index);
    double peakDb;
    double rmsDb;
};

std::ostream& operator<< (std::ostream& s, const LevelCase& c) { return s << c.name; }

class RenderSummaryLevels : public ::testing::TestWithParam<LevelCase>
{
};

TEST_P (RenderSummaryLevels, PeakAndRmsInDecibels)
{
    const auto& c = GetParam();
    juce::AudioBuffer<float> buffer (2, 4400); // 44 whole periods of 100 samples
    for (int ch = 0; ch < 2; ++ch)
        for (int i = 0; i < buffer.getNumSamples(); ++i)
            buffer.setSample (ch, i, c.sample (ch, i));

    const auto level = RenderSummary::measure (buffer);
    EXPECT_NEAR (RenderSummary::toDecibels (level.peak), c.peakDb, 0.005);
    EXPECT_NEAR (RenderSummary::toDecibels (level.rms), c.rmsDb, 0.005);
}

// 441 Hz at 44100 Hz: 100 samples a period, with the crest on sample 25.
float halfSine (int, int i)
{
    return (float) (0.5 * std::sin (juce::MathConstants<double>::twoPi * i / 100.0));
}
float fullSquare (int, int i) { return i % 100 < 50 ? 1.0f : -1.0f; }
float quarterDc (int, int) { return -0.25f; }
float oneSidedSquare (int channel, int i) { return channel == 0 ? fullSquare (channel, i) : 0.0f; }

INSTANTIATE_TEST_SUITE_P (
    Table, RenderSummaryLevels,
    ::testing::Values (LevelCase{ "FullScaleSquare", fullSquare, 0.0, 0.0 },
                       LevelCase{ "HalfScaleSine", halfSine, -6.0206, -9.0309 },
                       LevelCase{ "NegativeDc", quarterDc, -12.0412, -12.0412 },
                       // Power averaged over both channels: half the power is 3 dB down.
                       LevelCase{ "SquareOnOneChannel", oneSidedSquare, 0.0, -3.0103 }),
    [] (const ::testing::TestParamInfo<LevelCase>& param) { return std::string (param.param.name); });

TEST (RenderSummary, SilenceIsMinusInfinity)
{
    juce::AudioBuffer<float> silence (1, 100);
    silence.clear();
    const auto level = RenderSummary::measure (silence);
    EXPECT_EQ (level.peak, 0.0);
    EXPECT_EQ (level.rms, 0.0);
    EXPECT_EQ (RenderSummary::formatDecibels (RenderSummary::toDecibels (level.peak)), "-inf");
    EXPECT_EQ (RenderSummary::formatDecibels (-6.0206), "-6.02");
    EXPECT_EQ (RenderSummary::formatDecibels (0.0), "0.00");

    const auto empty = RenderSummary::measure (juce::AudioBuffer<float> (2, 0));
    EXPECT_EQ (empty.rms, 0.0);
}

TEST (RenderSummary, TextShowsEveryFigure)
{
    juce::AudioBuffer<float> input (2, 96000);
    input.clear();
    input.setSample (1, 10, 0.5f);

    Renderer::Result result;
    result.output.setSize (2, 96000);
    result.output.clear();
    result.output.setSample (0, 20, 1.0f);
    result.sampleRate = 96000.0;
    result.latencySamples = 149;
    result.processingSeconds = 0.25;

    const auto text = RenderSummary (input, result, "Dist'n'Crush", 64).toText();
    EXPECT_TRUE (text.contains ("duration     1.000 s, 96000 samples, stereo\n")) << text;
    EXPECT_TRUE (text.contains ("sample rate  96000 Hz, blocks of 64\n")) << text;
    EXPECT_TRUE (text.contains ("preset       Dist'n'Crush\n")) << text;
    EXPECT_TRUE (text.contains ("latency      149 samples (1.55 ms)\n")) << text;
    EXPECT_TRUE (text.contains ("input        peak -6.02 dBFS, RMS ")) << text;
    EXPECT_TRUE (text.contains ("output       peak 0.00 dBFS, RMS ")) << text;
    EXPECT_TRUE (text.contains ("speed        4.0x real time\n")) << text;
}
} // namespace
