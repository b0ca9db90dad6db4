#include "CoreHarness.h"

#include <gtest/gtest.h>

using namespace CoreHarness;

namespace
{
std::vector<float> constant (int n, float value) { return std::vector<float> ((size_t) n, value); }

/** Counts the presets applied at the bottom of a fade. */
struct CountingOwner : PresetChanger::Owner
{
    void applyCurrentPreset() override { ++applied; }
    int applied = 0;
};

float publishedLeft (const VantriceCore& core)
{
    float l = 0.0f, r = 0.0f;
    core.readMeters (l, r);
    return l;
}
} // namespace

TEST (CoreMeters, FullScaleShowsItsPeakThenDecaysAndPublishesOncePerRun)
{
    auto core = makeCore (44100.0, { { ParameterIndex::fx, 0.0f } });
    auto out = runStereo (*core, { constant (22, 1.0f), constant (22, 1.0f) }, 22);
    // The dry signal reaches the output at sample 21, a full-scale 1.0: the peak before one decay.
    EXPECT_NEAR (publishedLeft (*core), 0.8 * 0.9999, 1e-6);

    // The dry full scale lasts to sample 42; from there the peak decays by 0.9999 per sample.
    runStereo (*core, { constant (1000, 0.0f), constant (1000, 0.0f) }, 1000);
    EXPECT_NEAR (publishedLeft (*core), 0.8 * std::pow (0.9999, 1022 - 42), 1e-5);

    // Silence for long enough leaves the peak near 1e-16, kept off zero by the 1e-20 terms.
    runStereo (*core, { constant (500000, 0.0f), constant (500000, 0.0f) }, 8192);
    EXPECT_GT (core->getLeft().meterPeak, 0.0);
    EXPECT_LT (core->getLeft().meterPeak, 1e-15);
}

TEST (CoreMeters, MonoMeasuresTheLeftForBothAndLeavesTheRightIndicator)
{
    auto core = makeCore (44100.0, { { ParameterIndex::fx, 0.0f } });
    runStereo (*core, { constant (50, 0.0f), constant (50, 0.5f) });
    bool l = false, r = false;
    core->readIndicators (l, r);
    ASSERT_TRUE (r);

    runMono (*core, constant (300, 0.9f));
    float ml = 0.0f, mr = 0.0f;
    core->readMeters (ml, mr);
    EXPECT_EQ (ml, mr);
    EXPECT_GT (ml, 0.7f);
    core->readIndicators (l, r);
    EXPECT_TRUE (l);
    EXPECT_TRUE (r) << "mono leaves the right indicator as it was";
}

// The fade's sequences at 44100 Hz are the family layer's tests; the hold is the host rate's.
TEST (CoreFade, HoldScalesWithTheHostRate)
{
    auto core = makeCore (96000.0, { { ParameterIndex::fx, 0.0f } });
    CountingOwner owner;
    core->owner = &owner;
    core->beginPresetChange();

    const int n = 20000;
    const auto out = runStereo (*core, { constant (n, 0.5f), constant (n, 0.5f) }, 512);
    int zeros = 0;
    for (int i = 300; i < n; ++i)
        zeros += std::abs (out.left[(size_t) i]) < 1e-15f ? 1 : 0;
    EXPECT_NEAR (zeros, (int) (96000.0 / 44100.0 * 4000.0), 2);
}
