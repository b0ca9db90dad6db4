#include "CoreHarness.h"
#include "CoreStateProbe.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

using namespace CoreHarness;

namespace
{
using Overrides = std::vector<std::pair<int, float>>;

struct Setting
{
    const char* name;
    Overrides overrides;
};

/** Settings that between them take every branch of the block form: linked and unlinked, whole and
    fractional step positions, quantised and not, filters off, before and behind the crusher. */
const std::vector<Setting>& settings()
{
    static const std::vector<Setting> all{
        { "defaults", {} },
        { "linked_pre_lowpass",
          { { ParameterIndex::preamp, 0.3f },
            { ParameterIndex::leftBits, 7.0f / 16.0f },
            { ParameterIndex::leftFrequency, 0.3f },
            { ParameterIndex::leftLinkFreq, 1.0f },
            { ParameterIndex::leftFilterType, 0.0f },
            { ParameterIndex::leftReso, 0.6f },
            { ParameterIndex::leftFilterOrder, 1.0f } } },
        { "linked_post_bandpass",
          { { ParameterIndex::leftBits, 0.25f },
            { ParameterIndex::leftFrequency, 0.6f },
            { ParameterIndex::leftFilterType, 0.25f },
            { ParameterIndex::leftCutoff, 0.4f },
            { ParameterIndex::fx, 0.8f } } },
        { "unlinked_filters",
          { { ParameterIndex::linkChannels, 0.0f },
            { ParameterIndex::leftBits, 0.25f },
            { ParameterIndex::leftFrequency, 0.2f },
            { ParameterIndex::leftFilterType, 0.5f },
            { ParameterIndex::leftReso, 0.7f },
            { ParameterIndex::leftFilterOrder, 1.0f },
            { ParameterIndex::rightBits, 0.5f },
            { ParameterIndex::rightFrequency, 0.6f },
            { ParameterIndex::rightLinkFreq, 1.0f },
            { ParameterIndex::rightFilterType, 0.75f },
            { ParameterIndex::rightCutoff, 0.4f },
            { ParameterIndex::rightFilterOrder, 0.0f } } },
        { "unlinked_slowest_hold",
          { { ParameterIndex::linkChannels, 0.0f },
            { ParameterIndex::leftFrequency, 0.0f },
            { ParameterIndex::leftLinkFreq, 1.0f },
            { ParameterIndex::rightFrequency, 0.05f },
            { ParameterIndex::rightBits, 0.2f } } },
        { "worst_case",
          { { ParameterIndex::linkChannels, 0.0f },
            { ParameterIndex::leftBits, 7.0f / 16.0f },
            { ParameterIndex::rightBits, 7.0f / 16.0f },
            { ParameterIndex::leftLinkFreq, 1.0f },
            { ParameterIndex::rightLinkFreq, 1.0f },
            { ParameterIndex::leftFilterType, 0.0f },
            { ParameterIndex::rightFilterType, 0.25f },
            { ParameterIndex::leftFilterOrder, 1.0f },
            { ParameterIndex::rightFilterOrder, 0.0f },
            { ParameterIndex::leftReso, 0.5f },
            { ParameterIndex::rightReso, 0.5f } } },
    };
    return all;
}

struct DifferentialCase
{
    double rate;
    int setting;
};

std::string nameOf (const ::testing::TestParamInfo<DifferentialCase>& info)
{
    return std::to_string ((int) info.param.rate) + "_" + settings()[(size_t) info.param.setting].name;
}

std::vector<DifferentialCase> differentialCases()
{
    std::vector<DifferentialCase> cases;
    for (double rate : { 44100.0, 48000.0, 96000.0, 192000.0, 32000.0, 88200.0, 22050.0 })
        for (int s = 0; s < (int) settings().size(); ++s)
            cases.push_back ({ rate, s });
    return cases;
}

enum class Layout
{
    stereo,
    mono,
    alternating
};

enum class Signal
{
    loud,           // noise and a tone, now and then past full scale or exactly 0
    quietWithZeros, // below the activity threshold, with samples of digital silence in both channels
    silence
};

/** Applies a preset at the bottom of a fade, from inside the run, as the bank layer does. */
struct PresetOwner : PresetChanger::Owner
{
    explicit PresetOwner (VantriceCore& c)
        : core (c)
    {
    }
    void applyCurrentPreset() override
    {
        core.setParameter (ParameterIndex::leftFrequency, 0.45f);
        core.setParameter (ParameterIndex::leftBits, 0.5f);
    }
    VantriceCore& core;
};

bool sameBits (const std::vector<float>& a, const std::vector<float>& b)
{
    return a.size() == b.size() && std::memcmp (a.data(), b.data(), a.size() * sizeof (float)) == 0;
}
} // namespace

class FastPathAgainstReference : public ::testing::TestWithParam<DifferentialCase>
{
protected:
    void SetUp() override
    {
        const auto& overrides = settings()[(size_t) GetParam().setting].overrides;
        reference = makeCore (GetParam().rate, overrides);
        fast = makeCore (GetParam().rate, overrides);
        reference->setReferenceLoop (true);
        random.seed (1 + (unsigned) GetParam().setting * 7919u + (unsigned) GetParam().rate);
    }

    void both (const std::function<void (VantriceCore&)>& change)
    {
        change (*reference);
        change (*fast);
    }

    float sample (Signal signal, double tone)
    {
        std::uniform_real_distribution<float> u (-1.0f, 1.0f);
        if (signal == Signal::silence)
            return 0.0f;
        if (signal == Signal::quietWithZeros)
            return random() % 3 == 0 ? 0.0f : 1e-5f * u (random);
        if (random() % 97 == 0)
            return random() % 2 == 0 ? 0.0f : 1.5f * u (random);
        return 0.6f * (float) std::sin (tone) + 0.3f * u (random);
    }

    /** Runs `samples` through both cores in runs of 1 to 600, calling `between` before each run; false
        at the first run whose output or state differs. */
    bool play (const char* stage, int samples, Layout layout, Signal signal,
               const std::function<void()>& between = {})
    {
        for (int done = 0; done < samples;)
        {
            if (between)
                between();
            const int n = std::min (samples - done, 1 + (int) (random() % 600));
            const bool mono = layout == Layout::mono || (layout == Layout::alternating && random() % 2 == 0);
            Stereo in{ std::vector<float> ((size_t) n), std::vector<float> ((size_t) n) };
            for (int i = 0; i < n; ++i, phase += 0.05)
            {
                in.left[(size_t) i] = sample (signal, phase);
                in.right[(size_t) i] = signal == Signal::quietWithZeros && in.left[(size_t) i] == 0.0f
                                           ? 0.0f
                                           : sample (signal, 1.3 * phase);
            }

            Stereo expected = in, actual = in;
            if (mono)
            {
                expected.left = runMono (*reference, in.left, n);
                actual.left = runMono (*fast, in.left, n);
            }
            else
            {
                expected = runStereo (*reference, in, n);
                actual = runStereo (*fast, in, n);
            }

            const auto state = CoreStateProbe::firstDifference (*reference, *fast);
            if (!sameBits (expected.left, actual.left) || !sameBits (expected.right, actual.right)
                || !state.empty())
            {
                ADD_FAILURE() << stage << ", run of " << n << (mono ? " mono" : " stereo") << " after "
                              << done
                              << " samples: " << (state.empty() ? "the output" : "the state, first " + state)
                              << " differs";
                return false;
            }
            done += n;
        }
        return true;
    }

    std::unique_ptr<VantriceCore> reference, fast;
    std::mt19937 random;
    double phase = 0.0;
};

TEST_P (FastPathAgainstReference, GivesTheReferenceBitsAndStateThroughEveryTransition)
{
    const double rateRatio = GetParam().rate / 44100.0;
    const auto scaled = [rateRatio] (int coreSamples) { return (int) (coreSamples * rateRatio); };

    // Silence into the linked stage's standstill first, while the envelope is still low; a quiet
    // input with samples of digital silence goes in and out of it.
    const bool unlinked = !reference->isLinked();
    both ([] (VantriceCore& c) { c.setParameter (ParameterIndex::linkChannels, 1.0f); });
    ASSERT_TRUE (play ("quiet with silent samples", scaled (4000), Layout::stereo, Signal::quietWithZeros));
    for (int i = 0; i < 100 && (reference->getLeft().active || reference->getRight().active); ++i)
        ASSERT_TRUE (play ("into standstill", scaled (2000), Layout::stereo, Signal::silence));
    ASSERT_FALSE (reference->getLeft().active || reference->getRight().active) << "no standstill reached";
    ASSERT_TRUE (play ("standstill", scaled (1000), Layout::stereo, Signal::silence));
    ASSERT_TRUE (play ("out of standstill", scaled (3000), Layout::stereo, Signal::loud));
    if (unlinked)
        both ([] (VantriceCore& c) { c.setParameter (ParameterIndex::linkChannels, 0.0f); });

    ASSERT_TRUE (play ("steady", scaled (6000), Layout::stereo, Signal::loud));
    const auto blockFormAfterSteady = fast->getFormCounts().blockStretches;

    ASSERT_TRUE (play ("parameter changes", scaled (5000), Layout::stereo, Signal::loud,
                       [this]
                       {
                           if (random() % 3 != 0)
                               return;
                           const int index = (int) (random() % ParameterIndex::count);
                           const float value = (float) (random() % 1001) / 1000.0f;
                           if (index != 13)
                               both ([=] (VantriceCore& c) { c.setParameter (index, value); });
                       }));

    ASSERT_TRUE (
        play ("link toggles", scaled (5000), Layout::stereo, Signal::loud,
              [this]
              {
                  if (random() % 3 == 0)
                      both ([] (VantriceCore& c)
                            { c.setParameter (ParameterIndex::linkChannels, c.isLinked() ? 0.0f : 1.0f); });
              }));

    PresetOwner referenceOwner (*reference), fastOwner (*fast);
    reference->owner = &referenceOwner;
    fast->owner = &fastOwner;
    both ([] (VantriceCore& c) { c.beginPresetChange(); });
    ASSERT_TRUE (play ("fade", scaled (11000), Layout::stereo, Signal::loud));

    const auto blockFormBeforeMono = fast->getFormCounts().blockStretches;
    ASSERT_TRUE (play ("mono", scaled (3000), Layout::mono, Signal::loud));
    const auto blockFormInMono = fast->getFormCounts().blockStretches - blockFormBeforeMono;
    ASSERT_TRUE (play ("mono and stereo", scaled (5000), Layout::alternating, Signal::loud));

    EXPECT_GT (blockFormAfterSteady, 0u) << "the block form never ran in stereo";
    EXPECT_GT (blockFormInMono, 0u) << "the block form never ran in mono";
}

INSTANTIATE_TEST_SUITE_P (Path, FastPathAgainstReference, ::testing::ValuesIn (differentialCases()), nameOf);
