#include "CoreHarness.h"
#include "ExpectedPlugin.h"

#include <gtest/gtest.h>

using namespace CoreHarness;

namespace
{
/** Where an impulse through the all-dry path comes out, as the sample nearest the peak of its
    response. The dry path has the same delay as the crushed one, by design. */
int measuredImpulseDelay (double rate)
{
    // Unlinked: the linked stage stands still while both channels are silent, which an impulse
    // through a converter meets.
    auto core = makeCore (rate, { { ParameterIndex::fx, 0.0f }, { ParameterIndex::linkChannels, 0.0f } });
    const int start = 64;
    const int n = 2048;
    Stereo s{ std::vector<float> ((size_t) n, 0.0f), std::vector<float> ((size_t) n, 0.0f) };
    s.left[(size_t) start] = 0.5f;
    s.right[(size_t) start] = 0.5f;
    const auto out = runStereo (*core, s, 97);

    int peak = 0;
    for (int i = 1; i < n; ++i)
        if (std::abs (out.left[(size_t) i]) > std::abs (out.left[(size_t) peak]))
            peak = i;
    return peak - start;
}

} // namespace

class FamilyRate : public ::testing::TestWithParam<ExpectedPlugin::RateLatency>
{
};

// The host-visible latencies, the delay an impulse meets, and silence for the first samples after a
// change to the rate while the converters fill.
TEST_P (FamilyRate, ReportedLatencyIsTheMeasuredDelay)
{
    const auto [rate, latency] = GetParam();
    auto core = makeCore (rate);
    EXPECT_EQ (core->getLatency(), latency);
    EXPECT_EQ (core->isResampling(), rate != 44100.0);
    EXPECT_EQ (measuredImpulseDelay (rate), latency) << "measured at " << rate;
    if (rate != 44100.0)
    {
        EXPECT_EQ (VantriceCore::measureLatency ((int) rate), latency);
        auto changed = makeCore (44100.0);
        runStereo (*changed, stereoNoise (1000, 5));
        changed->setSampleRate ((float) rate);
        const auto out = runStereo (*changed, stereoNoise (8, 6));
        for (size_t i = 0; i < 4; ++i)
            EXPECT_TRUE (out.left[i] == 0.0f && out.right[i] == 0.0f) << i;
    }
}

TEST_P (FamilyRate, HoldRatesSoundTheSameAtEveryRate)
{
    // A 1 kHz tone held at about 4 kHz: the strongest image of the hold lies at 4 kHz - 1 kHz at every
    // host rate, since the crusher always runs at 44100 Hz.
    const double rate = GetParam().rate;
    auto core = makeCore (rate, { { ParameterIndex::leftFrequency, 0.45f } });
    const int n = (int) rate;
    const auto in = sine (n, 1000.0, rate, 0.5);
    const auto out = runStereo (*core, { in, in });

    auto level = [&] (double frequency)
    {
        double re = 0.0, im = 0.0;
        for (int i = n / 2; i < n; ++i)
        {
            re += out.left[(size_t) i] * std::cos (2.0 * 3.141592653589793 * frequency * i / rate);
            im += out.left[(size_t) i] * std::sin (2.0 * 3.141592653589793 * frequency * i / rate);
        }
        return std::sqrt (re * re + im * im) / (n / 2) * 2.0;
    };
    const double holdHz = VantriceCore::isSupportedRate (rate) ? core->getLeft().rate * 44100.0 : 0.0;
    EXPECT_NEAR (level (1000.0), 0.5, 0.1);
    EXPECT_GT (level (holdHz - 1000.0), 0.01) << "the image of the hold at " << holdHz - 1000.0 << " Hz";
}

INSTANTIATE_TEST_SUITE_P (Rates, FamilyRate, ::testing::ValuesIn (ExpectedPlugin::latencies));

class OtherRate : public ::testing::TestWithParam<double>
{
};

TEST_P (OtherRate, IsRunWithTheLatencyItsPathHas)
{
    const double rate = GetParam();
    ASSERT_TRUE (VantriceCore::isSupportedRate (rate));
    auto core = makeCore (rate);
    EXPECT_TRUE (core->isResampling());
    EXPECT_GT (core->getLatency(), 0);
    EXPECT_EQ (measuredImpulseDelay (rate), core->getLatency()) << rate;
}

INSTANTIATE_TEST_SUITE_P (Rates, OtherRate,
                          ::testing::Values (22050.0, 24000.0, 32000.0, 64000.0, 352800.0, 384000.0));

TEST (VantriceCore, RefusedRatesPassAudioThroughWithNoLatency)
{
    for (const double rate : { 8000.0, 11025.0, 16000.0, 44100.5, 47999.0, 400000.0, 768000.0 })
    {
        EXPECT_FALSE (VantriceCore::isSupportedRate (rate)) << rate;
        auto core = makeCore (rate);
        EXPECT_EQ (core->getLatency(), 0) << rate;
        const auto in = stereoNoise (300, 9);
        const auto out = runStereo (*core, in);
        EXPECT_EQ (out.left, in.left) << rate;
        EXPECT_EQ (out.right, in.right) << rate;
    }
}
