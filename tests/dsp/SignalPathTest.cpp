#include "CoreHarness.h"

#include "dsp/ParameterCurves.h"

#include <gtest/gtest.h>
#include <juce_core/juce_core.h>

#include <cstring>
#include <map>

using namespace CoreHarness;

namespace
{
using Overrides = std::vector<std::pair<int, float>>;

struct Setting
{
    const char* name;
    Overrides overrides;
};

/** Settings that between them take every branch of the path. */
const std::vector<Setting>& settings()
{
    static const std::vector<Setting> all{
        { "defaults", {} },
        { "crushed_linked",
          { { ParameterIndex::preamp, 0.25f },
            { ParameterIndex::leftBits, 7.0f / 16.0f },
            { ParameterIndex::leftFrequency, 0.3f },
            { ParameterIndex::leftLinkFreq, 1.0f },
            { ParameterIndex::leftFilterType, 0.0f },
            { ParameterIndex::leftCutoff, 0.6f } } },
        { "unlinked_filters",
          { { ParameterIndex::linkChannels, 0.0f },
            { ParameterIndex::leftBits, 0.25f },
            { ParameterIndex::leftFrequency, 0.2f },
            { ParameterIndex::leftFilterType, 0.25f },
            { ParameterIndex::leftReso, 0.7f },
            { ParameterIndex::leftFilterOrder, 1.0f },
            { ParameterIndex::rightBits, 0.5f },
            { ParameterIndex::rightFrequency, 0.6f },
            { ParameterIndex::rightLinkFreq, 1.0f },
            { ParameterIndex::rightFilterType, 0.5f },
            { ParameterIndex::rightCutoff, 0.4f },
            { ParameterIndex::rightFilterOrder, 0.0f },
            { ParameterIndex::fx, 0.7f },
            { ParameterIndex::outputVolume, 0.6f } } },
        { "worst_case",
          { { ParameterIndex::linkChannels, 0.0f },
            { ParameterIndex::leftBits, 7.0f / 16.0f },
            { ParameterIndex::rightBits, 7.0f / 16.0f },
            { ParameterIndex::leftFilterType, 0.0f },
            { ParameterIndex::rightFilterType, 0.75f },
            { ParameterIndex::leftFilterOrder, 1.0f },
            { ParameterIndex::rightFilterOrder, 0.0f },
            { ParameterIndex::leftReso, 0.5f },
            { ParameterIndex::rightReso, 0.5f } } },
    };
    return all;
}

Stereo testSignal (int n, double rate)
{
    Stereo s{ sine (n, 330.0, rate, 0.6), sine (n, 4100.0, rate, 0.4) };
    const auto hiss = stereoNoise (n, 99);
    for (size_t i = 0; i < s.left.size(); ++i)
    {
        s.left[i] += 0.05f * hiss.left[i];
        s.right[i] += 0.05f * hiss.right[i];
    }
    return s;
}

juce::uint64 hashOf (const Stereo& s)
{
    juce::uint64 h = 14695981039346656037ull; // FNV-1a 64-bit offset basis
    for (const auto* v : { &s.left, &s.right })
        for (float x : *v)
        {
            juce::uint32 bits = 0;
            std::memcpy (&bits, &x, sizeof (bits));
            for (int b = 0; b < 4; ++b)
            {
                h ^= (bits >> (8 * b)) & 0xffu;
                h *= 1099511628211ull; // FNV-1a 64-bit prime
            }
        }
    return h;
}

struct SplitCase
{
    double rate;
    int setting;
    bool mono;
};

std::string nameOf (const ::testing::TestParamInfo<SplitCase>& info)
{
    return std::to_string ((int) info.param.rate) + "_" + settings()[(size_t) info.param.setting].name
           + (info.param.mono ? "_mono" : "_stereo");
}

std::vector<SplitCase> splitCases()
{
    std::vector<SplitCase> cases;
    for (double rate : { 44100.0, 48000.0, 96000.0, 192000.0, 32000.0 })
        for (int s = 0; s < (int) settings().size(); ++s)
            for (bool mono : { false, true })
                cases.push_back ({ rate, s, mono });
    return cases;
}
} // namespace

class BlockSplit : public ::testing::TestWithParam<SplitCase>
{
};

TEST_P (BlockSplit, RandomRunLengthsGiveTheSameOutputAsOneRun)
{
    const auto param = GetParam();
    const auto& overrides = settings()[(size_t) param.setting].overrides;
    const auto in = testSignal (6000, param.rate);

    auto whole = makeCore (param.rate, overrides);
    auto split = makeCore (param.rate, overrides);
    std::mt19937 random (17);

    if (param.mono)
    {
        const auto expected = runMono (*whole, in.left, 6000);
        auto actual = in.left;
        for (int start = 0; start < 6000;)
        {
            const int length = std::min (6000 - start, (int) (random() % 300));
            float* l = actual.data() + start;
            split->processMono (&l, length);
            start += length;
        }
        EXPECT_EQ (actual, expected);
        return;
    }

    const auto expected = runStereo (*whole, in, 6000);
    auto actual = in;
    for (int start = 0; start < 6000;)
    {
        const int length = std::min (6000 - start, (int) (random() % 300));
        float* l = actual.left.data() + start;
        float* r = actual.right.data() + start;
        split->processStereo (&l, &r, length);
        start += length;
    }
    EXPECT_EQ (actual.left, expected.left);
    EXPECT_EQ (actual.right, expected.right);
}

INSTANTIATE_TEST_SUITE_P (Path, BlockSplit, ::testing::ValuesIn (splitCases()), nameOf);

TEST (SignalPath, GoldenRendersAreBitForBitTheSame)
{
    // Hashes of the output bits, one line per render. Set VANTRICE_UPDATE_GOLDEN=1 to write them anew
    // after an intended change of the sound.
    const auto file = juce::File (VANTRICE_TEST_DATA_DIR).getChildFile ("golden/core-renders.txt");
    std::map<std::string, std::string> rendered;
    for (double rate : { 44100.0, 48000.0, 96000.0 })
        for (const auto& s : settings())
        {
            auto core = makeCore (rate, s.overrides);
            const auto out = runStereo (*core, testSignal (8192, rate), 512);
            rendered[std::string (s.name) + "@" + std::to_string ((int) rate)] =
                juce::String::toHexString ((juce::int64) hashOf (out)).toStdString();
        }

    if (juce::SystemStats::getEnvironmentVariable ("VANTRICE_UPDATE_GOLDEN", {}).isNotEmpty())
    {
        juce::String text;
        for (const auto& [name, hash] : rendered)
            text << name << " " << hash << "\n";
        file.getParentDirectory().createDirectory();
        ASSERT_TRUE (file.replaceWithText (text));
        GTEST_SKIP() << "golden renders written to " << file.getFullPathName();
    }

    juce::StringArray lines;
    file.readLines (lines);
    lines.removeEmptyStrings();
    ASSERT_EQ ((size_t) lines.size(), rendered.size()) << "run with VANTRICE_UPDATE_GOLDEN=1 to create them";
    for (const auto& line : lines)
    {
        const auto name = line.upToFirstOccurrenceOf (" ", false, false).toStdString();
        const auto hash = line.fromFirstOccurrenceOf (" ", false, false).toStdString();
        ASSERT_TRUE (rendered.count (name)) << name;
        EXPECT_EQ (rendered[name], hash) << name;
    }
}

TEST (SignalPath, BandLimitedHoldHasFarFewerAliasProductsThanAPlainSampleAndHold)
{
    // The hold at about 8 kHz with "Left Link Freq" on, against a plain sample-and-hold at the same
    // moments. Products are everything but the fundamental, over a sweep of tones below the hold's
    // half rate, where a plain hold leaves its images.
    double lo = 0.0, hi = 1.0;
    for (int i = 0; i < 60; ++i)
    {
        const double mid = 0.5 * (lo + hi);
        (ParameterCurves::rateCurve (mid) < 8000.0 / 44100.0 ? lo : hi) = mid;
    }
    const float freqValue = (float) hi;
    const double holdRate = ParameterCurves::rateCurve ((double) freqValue);

    auto productsDb = [] (const std::vector<float>& y, double f, int from)
    {
        double re = 0.0, im = 0.0;
        const int n = (int) y.size() - from;
        for (int i = from; i < (int) y.size(); ++i)
        {
            re += y[(size_t) i] * std::cos (2.0 * 3.141592653589793 * f * i / 44100.0);
            im += y[(size_t) i] * std::sin (2.0 * 3.141592653589793 * f * i / 44100.0);
        }
        re *= 2.0 / n;
        im *= 2.0 / n;
        double rest = 0.0, total = 0.0;
        for (int i = from; i < (int) y.size(); ++i)
        {
            const double w = 2.0 * 3.141592653589793 * f * i / 44100.0;
            const double fitted = re * std::cos (w) + im * std::sin (w);
            rest += (y[(size_t) i] - fitted) * (y[(size_t) i] - fitted);
            total += fitted * fitted;
        }
        return 10.0 * std::log10 (rest / total);
    };

    double sumCrusher = 0.0, sumPlain = 0.0;
    int count = 0;
    for (double f = 500.0; f < 3800.0; f += 400.0)
    {
        const int n = 44100;
        const auto in = sine (n, f, 44100.0, 0.5);
        auto core = makeCore (44100.0, { { ParameterIndex::linkChannels, 0.0f },
                                         { ParameterIndex::leftFrequency, freqValue },
                                         { ParameterIndex::leftLinkFreq, 1.0f } });
        const auto out = runStereo (*core, { in, in });

        std::vector<float> plain ((size_t) n);
        double phase = 1.0;
        float held = 0.0f;
        for (int i = 0; i < n; ++i)
        {
            phase -= 1.0;
            if (phase <= 0.0)
            {
                held = in[(size_t) i];
                phase += 1.0 / holdRate;
            }
            plain[(size_t) i] = held;
        }

        const double crusherDb = productsDb (out.left, f, 4410);
        const double plainDb = productsDb (plain, f, 4410);
        sumCrusher += crusherDb;
        sumPlain += plainDb;
        ++count;
    }
    const double difference = (sumPlain - sumCrusher) / count;
    EXPECT_GT (difference, 40.0);
}

TEST (ChannelFilter, LowPassAtNoResonancePassesDcAtUnityAndFullResonanceIsTwentyDecibelsDown)
{
    // Unlinked left channel, "Pre": the filter sees the plain input and the hold passes it on.
    for (const auto& [reso, gain] : std::vector<std::pair<float, double>>{ { 0.0f, 1.0 }, { 1.0f, 0.1 } })
    {
        auto core = makeCore (44100.0, { { ParameterIndex::linkChannels, 0.0f },
                                         { ParameterIndex::leftFilterType, 0.0f },
                                         { ParameterIndex::leftCutoff, 0.5f },
                                         { ParameterIndex::leftReso, reso },
                                         { ParameterIndex::leftFilterOrder, 1.0f } });
        runStereo (*core, { std::vector<float> (30000, 0.5f), std::vector<float> (30000, 0.5f) });
        EXPECT_NEAR (core->getLeft().low, 0.5 * gain, 1e-6) << reso;
    }
}

TEST (ChannelFilter, OffLeavesTheStateAloneAndNotchIsHighPlusLow)
{
    auto core = makeCore (44100.0, { { ParameterIndex::linkChannels, 0.0f },
                                     { ParameterIndex::leftFilterType, 0.75f },
                                     { ParameterIndex::leftCutoff, 0.5f } });
    runStereo (*core, stereoNoise (500, 8));
    const auto& l = core->getLeft();
    EXPECT_NEAR (l.notch, l.high + l.low, 1e-15);

    core->setParameter (ParameterIndex::leftFilterType, 1.0f);
    const double low = l.low, band = l.band, high = l.high, notch = l.notch;
    for (const float position : { 0.0f, 1.0f })
    {
        core->setParameter (ParameterIndex::leftFilterOrder, position);
        runStereo (*core, stereoNoise (500, 9));
        EXPECT_EQ (l.low, low);
        EXPECT_EQ (l.band, band);
        EXPECT_EQ (l.high, high);
        EXPECT_EQ (l.notch, notch);
    }
}

TEST (ChannelFilter, ResonanceStandsAboutTwentyDecibelsAboveTheInput)
{
    // F of the cutoff curve at about 1 kHz; the state-variable peak lies near f = F fs / (2 pi) at the
    // doubled rate.
    auto core = makeCore (44100.0, { { ParameterIndex::linkChannels, 0.0f },
                                     { ParameterIndex::leftFilterType, 0.25f },
                                     { ParameterIndex::leftCutoff, 0.33f },
                                     { ParameterIndex::leftReso, 1.0f },
                                     { ParameterIndex::leftFilterOrder, 1.0f } });
    const double f = core->getLeft().cutoff;
    const double centre = 2.0 * 44100.0 / (2.0 * 3.141592653589793) * 2.0 * std::asin (f / 2.0);
    const auto out =
        runStereo (*core, { sine (44100, centre, 44100.0, 0.01), sine (44100, centre, 44100.0, 0.01) });
    float peak = 0.0f;
    for (size_t i = 22050; i < out.left.size(); ++i)
        peak = std::max (peak, std::abs (out.left[i]));
    EXPECT_NEAR (20.0 * std::log10 (peak / 0.01), 20.0, 1.5);
}
