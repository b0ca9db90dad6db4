#include "CoreHarness.h"

#include "dsp/ParameterCurves.h"

#include <gtest/gtest.h>

using namespace CoreHarness;

namespace
{
constexpr int fxIndex = 14, volumeIndex = 15, linkIndex = 13;

std::vector<float> constant (int n, float value) { return std::vector<float> ((size_t) n, value); }
} // namespace

TEST (VantriceCore, AllDryIsTheInputDelayedBy21SamplesTimesTheVolume)
{
    // Whatever the preamp and the crusher do, "FX" at 0 leaves only the dry ring, 21 samples back.
    const std::vector<std::vector<std::pair<int, float>>> settings{
        { { fxIndex, 0.0f }, { volumeIndex, 0.25f } },
        { { fxIndex, 0.0f }, { volumeIndex, 0.5f }, { 0, 1.0f }, { 1, 0.2f }, { 2, 0.3f } },
        { { fxIndex, 0.0f },
          { volumeIndex, 0.75f },
          { linkIndex, 0.0f },
          { 7, 0.1f },
          { 8, 0.05f },
          { 4, 0.0f },
          { 16, 1.0f } },
    };

    for (const auto& overrides : settings)
    {
        auto core = makeCore (44100.0, overrides);
        const double volume = core->getVolumeTarget();
        const auto in = stereoNoise (3000, 7);
        const auto out = runStereo (*core, in, 333);

        for (size_t i = 0; i < 21; ++i)
            ASSERT_NEAR (out.left[i], 0.0f, 1e-12f);
        for (size_t i = 21; i < in.left.size(); ++i)
        {
            ASSERT_EQ (out.left[i], (float) (in.left[i - 21] * volume)) << "sample " << i;
            ASSERT_EQ (out.right[i], (float) (in.right[i - 21] * volume)) << "sample " << i;
        }
    }
}

// The quantiser's scales and levels are the golden renders' to hold.
TEST (VantriceCore, LinkingCopiesTheLeftFilterAndUnlinkingRestoresTheRightControls)
{
    auto core = makeCore (44100.0, { { 5, 0.3f }, { 6, 0.4f }, { 4, 0.0f } });
    ASSERT_TRUE (core->isLinked());
    EXPECT_EQ (core->getRight().cutoffTarget, core->getLeft().cutoffTarget);
    EXPECT_EQ (core->getRight().filterType, 0);

    // Right controls moved while linked change nothing...
    core->setParameter (ParameterIndex::rightBits, 0.25f);
    core->setParameter (ParameterIndex::rightFrequency, 0.5f);
    core->setParameter (ParameterIndex::rightLinkFreq, 1.0f);
    core->setParameter (ParameterIndex::rightFilterType, 0.75f);
    core->setParameter (ParameterIndex::rightCutoff, 0.9f);
    core->setParameter (ParameterIndex::rightReso, 0.1f);
    EXPECT_EQ (core->getRight().cutoffTarget, core->getLeft().cutoffTarget);
    EXPECT_EQ (core->getRight().filterType, 0);
    EXPECT_EQ (core->getRight().quantScale, 65537.0);

    // ...until unlinking brings them into effect, with no glide of the filter.
    core->setParameter (linkIndex, 0.0f);
    EXPECT_FALSE (core->isLinked());
    EXPECT_EQ (core->getRight().quantScale, 32.0);
    EXPECT_EQ (core->getRight().rate, ParameterCurves::rateCurve (0.5));
    EXPECT_TRUE (core->getRight().antiAlias);
    EXPECT_EQ (core->getRight().stepSpeed, core->getRight().rate * 128.0);
    EXPECT_EQ (core->getRight().filterType, 3);
    EXPECT_EQ (core->getRight().cutoffTarget, ParameterCurves::cutoffCurve ((double) 0.9f));
    EXPECT_EQ (core->getRight().cutoff, core->getRight().cutoffTarget);
    EXPECT_EQ (core->getRight().reso, ParameterCurves::resoCurve ((double) 0.1f));

    // Linking again snaps the right filter to the left's smoothed values.
    core->setParameter (linkIndex, 1.0f);
    EXPECT_EQ (core->getRight().cutoff, core->getLeft().cutoff);
    EXPECT_EQ (core->getRight().reso, core->getLeft().reso);
    EXPECT_EQ (core->getRight().filterType, core->getLeft().filterType);
}

TEST (VantriceCore, LinkedStageStandsStillWhenBothChannelsAreSilentWhileTheDryPathRunsOn)
{
    auto core = makeCore (44100.0, { { fxIndex, 0.5f } });
    auto burst = stereoNoise (2000, 11);
    runStereo (*core, burst);

    // 108000 samples of silence take the envelope below 2e-5; run well past that.
    runStereo (*core, { constant (130000, 0.0f), constant (130000, 0.0f) }, 4096);
    EXPECT_FALSE (core->getLeft().active);
    EXPECT_FALSE (core->getRight().active);
    const double heldBefore = core->getLeft().heldValue;
    const double lowBefore = core->getLeft().low;

    auto more = runStereo (*core, { constant (100, 0.0f), constant (100, 0.0f) });
    EXPECT_EQ (core->getLeft().heldValue, heldBefore);
    EXPECT_EQ (core->getLeft().low, lowBefore);
    for (float x : more.left)
        EXPECT_LT (std::abs (x), 1e-15f);
}
