#include "ExpectedPlugin.h"
#include "common/RateInfo.h"
#include "dsp/Vantrice.h"
#include "frame/FerrowynOldCompatible.h"
#include "support/PluginHarness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace
{
constexpr double testRate = 44100.0;
constexpr int blockSize = 256;
constexpr int parameterCount = ParameterIndex::count;

/** Passes audio through, runs the family's preset fade on it and writes down every call in order, in a
    form that reads well in a failure: "stereo 0+100" for a run of 100 samples from the block's start,
    "param 5", "prepare 512", "rate 48000"; the test writes "|" between blocks. */
class RecordingCore : public FerrowynEffectCore
{
public:
    struct ParameterCall
    {
        int index;
        float value;
        long samplesBefore;
    };

    RecordingCore()
        : FerrowynEffectCore (nullptr)
    {
    }

    void prepare (int size) override { trace.push_back ("prepare " + std::to_string (size)); }
    void setSampleRate (float rate) override
    {
        info = RateInfo::forRate (rate);
        trace.push_back ("rate " + std::to_string ((int) rate));
    }
    void setParameter (int index, float value) override
    {
        if (index >= parameterCount)
            return;
        trace.push_back ("param " + std::to_string (index));
        parameters.push_back ({ index, value, samplesDone });
    }
    int getLatency() override { return 0; }
    void clockTick (int index, Clock*) override
    {
        trace.push_back ("tick " + std::to_string (index) + " at " + std::to_string (samplesDone));
    }
    void processStereo (float** left, float** right, int numSamples) override
    {
        const auto offset = *left - leftBase;
        trace.push_back ("stereo " + std::to_string (offset) + "+" + std::to_string (numSamples)
                         + (*right - rightBase != offset ? " right elsewhere" : ""));
        run ({ *left, *right }, numSamples);
    }
    void processMono (float** channel, int numSamples) override
    {
        trace.push_back ("mono " + std::to_string (*channel - leftBase) + "+" + std::to_string (numSamples));
        run ({ *channel }, numSamples);
    }

    void forget()
    {
        trace.clear();
        parameters.clear();
        samplesDone = 0;
    }
    // The block about to be processed: runs are told by their offsets into it.
    void expectBlock (const juce::AudioBuffer<float>& buffer)
    {
        leftBase = buffer.getReadPointer (0);
        rightBase = buffer.getNumChannels() > 1 ? buffer.getReadPointer (1) : nullptr;
    }

    std::vector<std::string> trace;
    std::vector<ParameterCall> parameters;
    long samplesDone = 0;

private:
    void run (std::initializer_list<float*> channels, int numSamples)
    {
        for (int i = 0; i < numSamples; ++i, ++samplesDone)
            if (fadeActive && runFadeStep (info))
                for (auto* channel : channels)
                    channel[i] = (float) (channel[i] * fadeGain);
    }

    RateInfo info;
    const float* leftBase = nullptr;
    const float* rightBase = nullptr;
};

// A leaf of the family around the recording core, or around none.
class RecordingEffect : public FerrowynOldCompatible
{
public:
    explicit RecordingEffect (int clocksToMake = 0)
        : FerrowynOldCompatible (parameterCount)
        , numClocks (clocksToMake)
    {
    }

    juce::String getPluginName() const override { return "Vantrice"; }
    juce::String getPluginCode() const override { return "VT"; }
    int getNumberOfParameters() const override { return parameterCount; }
    Core* createCore() override { return new RecordingCore(); }
    int getNumberOfClocks() const override { return numClocks; }

    RecordingCore* getRecorder() const { return static_cast<RecordingCore*> (getCore()); }

private:
    const int numClocks;
};

class FamilyLayer : public ::testing::Test
{
protected:
    void SetUp() override { plugin = startPlugin(); }

    std::unique_ptr<RecordingEffect> startPlugin (int clocksToMake = 0)
    {
        auto p = std::make_unique<RecordingEffect> (clocksToMake);
        p->start (scratch.getChildFile ("Vantrice.so"));
        p->setRateAndBufferSizeDetails (testRate, blockSize);
        p->prepareToPlay (testRate, blockSize);
        if (auto* r = p->getRecorder())
            r->forget();
        return p;
    }

    RecordingCore& recorder() { return *plugin->getRecorder(); }

    float value (int id) { return plugin->getParameterManager().getNormalizedValue (id); }

    std::vector<float> liveValues() { return ::liveValues (*plugin); }
    std::vector<float> slotValues (int index) { return ::slotValues (*plugin, index); }

    // A block of constant input through the plug-in, the recorder told where it lies.
    void process (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
    {
        if (auto* r = plugin->getRecorder())
            r->expectBlock (buffer);
        plugin->processBlock (buffer, midi);
    }

    void processBlock (juce::MidiBuffer midi = {})
    {
        juce::AudioBuffer<float> buffer (2, blockSize);
        buffer.clear();
        process (buffer, midi);
    }

    // Blocks of a constant 1.0 with program changes at absolute sample positions; the left output.
    std::vector<float> renderProgramChanges (const std::vector<std::pair<int, int>>& changes, int numBlocks)
    {
        std::vector<float> out;
        for (int block = 0; block < numBlocks; ++block)
        {
            juce::MidiBuffer midi;
            for (const auto& [position, program] : changes)
                if (position >= block * blockSize && position < (block + 1) * blockSize)
                    midi.addEvent (juce::MidiMessage::programChange (1, program),
                                   position - block * blockSize);

            juce::AudioBuffer<float> buffer (2, blockSize);
            for (int channel = 0; channel < 2; ++channel)
                juce::FloatVectorOperations::fill (buffer.getWritePointer (channel), 1.0f, blockSize);
            process (buffer, midi);

            for (int i = 0; i < blockSize; ++i)
            {
                EXPECT_EQ (buffer.getSample (0, i), buffer.getSample (1, i)) << "sample " << i;
                out.push_back (buffer.getSample (0, i));
            }
        }
        return out;
    }

    // Positions at which the core was given preset parameters, in order, without repeats.
    std::vector<long> parameterPositions()
    {
        std::vector<long> positions;
        for (const auto& c : recorder().parameters)
            if (positions.empty() || positions.back() != c.samplesBefore)
                positions.push_back (c.samplesBefore);
        return positions;
    }

    // The factory preset that differs from preset `index` in the most values, other than `besides`.
    int presetUnlike (int index, int besides = -1)
    {
        int best = -1, bestCount = -1;
        for (int candidate = 0; candidate < 42; ++candidate)
        {
            if (candidate == index || candidate == besides)
                continue;
            int count = 0;
            for (int i = 0; i < parameterCount; ++i)
                count +=
                    plugin->getPreset (candidate)->getValue (i) != plugin->getPreset (index)->getValue (i);
            if (count > bestCount)
            {
                best = candidate;
                bestCount = count;
            }
        }
        return best;
    }

    const ScratchFolder scratch{ "vantrice-test" };
    std::unique_ptr<RecordingEffect> plugin;
};

//==============================================================================
// Cutting blocks at MIDI events.

struct TimedEvent
{
    int block;
    int position;
    juce::MidiMessage message;
};

struct CutCase
{
    const char* name;
    std::vector<TimedEvent> events;
    std::vector<std::string> trace;
    float leftCutoff; // value of parameter 5 after both blocks
};

void PrintTo (const CutCase& c, std::ostream* out) { *out << c.name; }

// The hold keeps the gain at zero give or take the 1e-20 that keeps it out of the denormal range.
bool isSilent (float sample) { return std::abs (sample) < 1e-15f; }

juce::MidiMessage cc (int controller, int value)
{
    return juce::MidiMessage::controllerEvent (1, controller, value);
}

// Controller 20 moves "Left Cutoff" (5), controller 21 "Left Reso/Bandwidth" (6); 99 is not mapped.
constexpr float ccScale = 1.0f / 127.0f;

class FamilyLayerCuts : public FamilyLayer, public ::testing::WithParamInterface<CutCase>
{
};

TEST_P (FamilyLayerCuts, RunsTheCoreBetweenEventsAtTheirExactSamples)
{
    const auto& c = GetParam();
    auto& manager = plugin->getParameterManager();
    plugin->getMidiControl().assign (20, manager.getParameter (5), true);
    plugin->getMidiControl().assign (21, manager.getParameter (6), true);
    manager.setNormalizedValue (5, 1.0f);
    manager.setNormalizedValue (6, 0.0f);
    recorder().forget();

    for (int block = 0; block < 2; ++block)
    {
        juce::MidiBuffer midi;
        for (const auto& e : c.events)
            if (e.block == block)
                midi.addEvent (e.message, e.position);
        const int numEventsBefore = midi.getNumEvents();

        processBlock (midi);
        recorder().trace.push_back ("|");

        EXPECT_EQ (midi.getNumEvents(), numEventsBefore) << "the block's MIDI stays as it came";
    }

    EXPECT_EQ (recorder().trace, c.trace);
    EXPECT_NEAR (value (5), c.leftCutoff, 1e-6f);

    // The core was last told the value the parameter has now.
    const auto& calls = recorder().parameters;
    const auto last =
        std::find_if (calls.rbegin(), calls.rend(), [] (const auto& call) { return call.index == 5; });
    if (last != calls.rend())
    {
        EXPECT_FLOAT_EQ (last->value, value (5));
    }
}

INSTANTIATE_TEST_SUITE_P (
    Events, FamilyLayerCuts,
    ::testing::Values (
        CutCase{ "NoEventsIsOneRun", {}, { "stereo 0+256", "|", "stereo 0+256", "|" }, 1.0f },
        CutCase{ "ControllerInTheBlock",
                 { { 0, 100, cc (20, 64) } },
                 { "stereo 0+100", "param 5", "stereo 100+156", "|", "stereo 0+256", "|" },
                 64 * ccScale },
        CutCase{ "SameControllerTwiceAtOnePosition",
                 { { 0, 40, cc (20, 10) }, { 0, 40, cc (20, 30) } },
                 { "stereo 0+40", "param 5", "param 5", "stereo 40+216", "|", "stereo 0+256", "|" },
                 30 * ccScale },
        CutCase{ "LastSample",
                 { { 0, 255, cc (20, 5) } },
                 { "stereo 0+255", "param 5", "stereo 255+1", "|", "stereo 0+256", "|" },
                 5 * ccScale },
        CutCase{ "FirstSampleOfTheNextBlock",
                 { { 0, 256, cc (20, 64) } },
                 { "stereo 0+256", "|", "param 5", "stereo 0+256", "|" },
                 64 * ccScale },
        CutCase{ "BeyondTheBlockComesInTheNext",
                 { { 0, 300, cc (20, 64) } },
                 { "stereo 0+256", "|", "stereo 0+44", "param 5", "stereo 44+212", "|" },
                 64 * ccScale },
        CutCase{ "HeldEventBeforeANewOneAtItsPosition",
                 { { 0, 300, cc (20, 64) }, { 1, 44, cc (20, 100) } },
                 { "stereo 0+256", "|", "stereo 0+44", "param 5", "param 5", "stereo 44+212", "|" },
                 100 * ccScale },
        CutCase{ "NegativePositionsAreDropped",
                 { { 0, -5, cc (20, 64) }, { 1, -1, cc (21, 64) } },
                 { "stereo 0+256", "|", "stereo 0+256", "|" },
                 1.0f },
        CutCase{ "UnmappedControllerStillCuts",
                 { { 0, 100, cc (99, 64) } },
                 { "stereo 0+100", "stereo 100+156", "|", "stereo 0+256", "|" },
                 1.0f },
        CutCase{ "OtherMessagesCutAndDoNothing",
                 { { 0, 64, juce::MidiMessage::noteOn (1, 60, (juce::uint8) 100) },
                   { 1, 128, juce::MidiMessage::pitchWheel (1, 100) } },
                 { "stereo 0+64", "stereo 64+192", "|", "stereo 0+128", "stereo 128+128", "|" },
                 1.0f }),
    [] (const ::testing::TestParamInfo<CutCase>& paramInfo) { return std::string (paramInfo.param.name); });

//==============================================================================
// Program changes.

TEST_F (FamilyLayer, NormalProgramChangeAppliesThePresetAtItsSample)
{
    const int target = presetUnlike (0);
    ASSERT_GE (target, 0);
    ASSERT_NE (liveValues(), slotValues (target));

    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::programChange (16, target), 64); // the channel plays no part
    processBlock (midi);

    EXPECT_EQ (plugin->getCurrentPreset(), target);
    EXPECT_EQ (liveValues(), slotValues (target));
    EXPECT_EQ (
        plugin->getParameterManager().getParameter (BasePluginOldStyle::currentPresetNumberId)->getIntValue(),
        target);
    EXPECT_EQ (plugin->getParameterManager().getStringValue (BasePluginOldStyle::currentPresetNameId),
               plugin->getPresetName (target));

    // Every value reached the core between the two runs.
    const auto trace = recorder().trace;
    ASSERT_GE (trace.size(), 3u);
    EXPECT_EQ (trace.front(), "stereo 0+64");
    EXPECT_EQ (trace.back(), "stereo 64+192");
    for (size_t i = 1; i + 1 < trace.size(); ++i)
        EXPECT_EQ (trace[i].rfind ("param ", 0), 0u) << trace[i];
    for (const auto& c : recorder().parameters)
        EXPECT_EQ (c.value, slotValues (target)[(size_t) c.index]) << "parameter " << c.index;
}

TEST_F (FamilyLayer, SilentProgramChangeFadesOutAppliesAtSilenceHoldsAndFadesIn)
{
    const int target = presetUnlike (0);
    const auto before = liveValues();
    ASSERT_NE (before, slotValues (target));
    plugin->setChangingType (BasePluginOldStyle::silent);

    constexpr int changeAt = 10;
    const auto out = renderProgramChanges ({ { changeAt, target } }, 1);

    // The selection moves at once; the values and the preset parameters wait for silence.
    EXPECT_EQ (plugin->getCurrentPreset(), target);
    EXPECT_EQ (liveValues(), before);
    EXPECT_EQ (
        plugin->getParameterManager().getParameter (BasePluginOldStyle::currentPresetNumberId)->getIntValue(),
        0);
    EXPECT_TRUE (recorder().isFadeActive());

    auto all = out;
    const auto rest = renderProgramChanges ({}, 39);
    all.insert (all.end(), rest.begin(), rest.end());

    for (int i = 0; i < changeAt; ++i)
        ASSERT_EQ (all[(size_t) i], 1.0f) << "sample " << i;

    // Down to silence: about 3450 samples at 44100 Hz.
    int silence = changeAt;
    while (silence < (int) all.size() && all[(size_t) silence] != 0.0f)
    {
        ASSERT_LT (all[(size_t) silence], silence == changeAt ? 1.0f : all[(size_t) silence - 1])
            << "sample " << silence;
        ++silence;
    }
    EXPECT_GE (silence - changeAt, 3400);
    EXPECT_LE (silence - changeAt, 3500);

    // The preset lands at the sample that reached silence.
    EXPECT_EQ (parameterPositions(), (std::vector<long>{ silence }));
    EXPECT_EQ (liveValues(), slotValues (target));
    EXPECT_EQ (
        plugin->getParameterManager().getParameter (BasePluginOldStyle::currentPresetNumberId)->getIntValue(),
        target);

    // 4000 samples of silence, then the fade back up to 0.99 in about 2300 samples.
    for (int i = silence; i < silence + 4000; ++i)
        ASSERT_TRUE (isSilent (all[(size_t) i])) << "sample " << i << ": " << all[(size_t) i];
    int full = silence + 4000;
    while (full < (int) all.size() && all[(size_t) full] != 1.0f)
    {
        ASSERT_GT (all[(size_t) full], full == silence + 4000 ? 0.0f : all[(size_t) full - 1])
            << "sample " << full;
        ASSERT_LE (all[(size_t) full], 0.99f) << "sample " << full;
        ++full;
    }
    EXPECT_GE (full - (silence + 4000), 2250);
    EXPECT_LE (full - (silence + 4000), 2350);
    ASSERT_LT (full, (int) all.size());
    for (size_t i = (size_t) full; i < all.size(); ++i)
        ASSERT_EQ (all[i], 1.0f) << "sample " << i;
    EXPECT_FALSE (recorder().isFadeActive());
}

TEST_F (FamilyLayer, SecondSilentChangeDuringTheFadeOutAppliesOnlyTheLast)
{
    const int first = presetUnlike (0);
    const int second = presetUnlike (first, 0);
    ASSERT_NE (slotValues (first), slotValues (second));
    plugin->setChangingType (BasePluginOldStyle::silent);

    const auto out = renderProgramChanges ({ { 0, first }, { 1000, second } }, 40);

    EXPECT_EQ (plugin->getCurrentPreset(), second);
    // The fade went on from where it was: one silence, reached as without the second change.
    EXPECT_LT (out[1000], out[999]);
    EXPECT_GT (out[1000], 0.9f * out[999]);
    const auto positions = parameterPositions();
    ASSERT_EQ (positions.size(), 1u);
    EXPECT_GE (positions[0], 3400);
    EXPECT_LE (positions[0], 3500);
    EXPECT_EQ (liveValues(), slotValues (second));
    for (const auto& c : recorder().parameters)
        EXPECT_EQ (c.value, slotValues (second)[(size_t) c.index]) << "parameter " << c.index;
}

TEST_F (FamilyLayer, SecondSilentChangeDuringTheFadeInGoesBackDownFromTheGainReached)
{
    const int first = presetUnlike (0);
    const int second = presetUnlike (first, 0);
    plugin->setChangingType (BasePluginOldStyle::silent);

    // Silence near 3450 and 4000 samples of hold put 8200 in the middle of the fade in.
    constexpr int secondAt = 8200;
    const auto out = renderProgramChanges ({ { 0, first }, { secondAt, second } }, 76);

    ASSERT_GT (out[secondAt - 1], 0.2f);
    ASSERT_LT (out[secondAt - 1], 0.99f);
    ASSERT_GT (out[secondAt - 1], out[secondAt - 2]) << "still rising before the second change";
    EXPECT_LT (out[secondAt], out[secondAt - 1]);
    EXPECT_GT (out[secondAt], 0.9f * out[secondAt - 1]);

    const auto positions = parameterPositions();
    ASSERT_EQ (positions.size(), 2u);
    EXPECT_GT (positions[1], secondAt);
    for (int i = secondAt; i < positions[1]; ++i)
        ASSERT_LT (out[(size_t) i], out[(size_t) i - 1]) << "sample " << i;
    for (long i = positions[1]; i < positions[1] + 4000; ++i)
        ASSERT_TRUE (isSilent (out[(size_t) i])) << "sample " << i << ": " << out[(size_t) i];
    EXPECT_EQ (out.back(), 1.0f);
    EXPECT_EQ (plugin->getCurrentPreset(), second);
    EXPECT_EQ (liveValues(), slotValues (second));
}

TEST_F (FamilyLayer, SilentChangeDuringTheHoldAppliesAtOnceAndHoldsAgain)
{
    const int first = presetUnlike (0);
    const int second = presetUnlike (first, 0);
    plugin->setChangingType (BasePluginOldStyle::silent);

    constexpr int secondAt = 5000; // inside the 4000 samples of silence after about 3450
    const auto out = renderProgramChanges ({ { 0, first }, { secondAt, second } }, 48);

    const auto positions = parameterPositions();
    ASSERT_EQ (positions.size(), 2u);
    EXPECT_EQ (positions[1], secondAt);
    for (long i = positions[0]; i < secondAt + 4000; ++i)
        ASSERT_TRUE (isSilent (out[(size_t) i])) << "sample " << i << ": " << out[(size_t) i];
    EXPECT_GT (out[secondAt + 4000], 0.0f);
    EXPECT_EQ (liveValues(), slotValues (second));
}

//==============================================================================
// Channels.

// Stereo runs for two in and two out only, mono otherwise; an output without an input of its own is
// cleared.
TEST_F (FamilyLayer, RunsStereoOnlyForTwoInTwoOut)
{
    for (const auto& [inputs, outputs] :
         { std::pair{ 2, 2 }, std::pair{ 1, 2 }, std::pair{ 1, 1 }, std::pair{ 2, 1 } })
    {
        SCOPED_TRACE (std::to_string (inputs) + " in, " + std::to_string (outputs) + " out");
        plugin->setPlayConfigDetails (inputs, outputs, testRate, blockSize);
        plugin->prepareToPlay (testRate, blockSize);
        recorder().forget();
        juce::AudioBuffer<float> buffer (juce::jmax (inputs, outputs), blockSize);
        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            juce::FloatVectorOperations::fill (buffer.getWritePointer (channel),
                                               0.25f * (float) (channel + 1), blockSize);
        juce::MidiBuffer midi;
        process (buffer, midi);
        EXPECT_EQ (recorder().trace,
                   (std::vector<std::string>{ inputs == 2 && outputs == 2 ? "stereo 0+256" : "mono 0+256" }));
        for (int channel = 0; channel < outputs; ++channel)
            EXPECT_EQ (buffer.getSample (channel, blockSize - 1),
                       channel < inputs ? 0.25f * (float) (channel + 1) : 0.0f);
    }
}

/** A host playing from the start at 120 bpm. */
struct PlayingHead : juce::AudioPlayHead
{
    juce::Optional<PositionInfo> getPosition() const override
    {
        PositionInfo info;
        info.setBpm (120.0);
        info.setPpqPosition (ppq);
        info.setIsPlaying (true);
        return info;
    }
    double ppq = 0.0;
};

// This effect never makes a clock, but a family member with one has its runs cut at the clock's edges on
// the host's grid: sixteenth notes of 5512.5 samples, the gate opening at 0, 5513 and 11025.
TEST_F (FamilyLayer, RunsAreCutAtTheClockEdgesOfTheHostsGrid)
{
    plugin = startPlugin (1);
    PlayingHead head;
    plugin->setPlayHead (&head);
    plugin->prepareToPlay (testRate, 4096);
    recorder().forget();
    for (int block = 0; block < 3; ++block)
    {
        head.ppq = block * 4096 / 22050.0; // quarters at 120 bpm and 44100 Hz
        juce::AudioBuffer<float> buffer (2, 4096);
        buffer.clear();
        juce::MidiBuffer midi;
        process (buffer, midi);
    }
    std::vector<std::string> ticks;
    for (const auto& call : recorder().trace)
    {
        if (call.rfind ("tick", 0) == 0)
            ticks.push_back (call);
        EXPECT_EQ (call.find ("+0"), std::string::npos) << "an empty run";
    }
    EXPECT_EQ (ticks, (std::vector<std::string>{ "tick 0 at 0", "tick 0 at 5513", "tick 0 at 11025" }));
    EXPECT_EQ (recorder().samplesDone, 3 * 4096);
    plugin->setPlayHead (nullptr);
}

// Each new rate brings its own latency, reported to the host; a rate the core can't run has none.
TEST (VantriceLatency, FollowsTheRateAtEachPrepare)
{
    PluginHarness plugin;
    for (const auto& [rate, latency] : ExpectedPlugin::latencies)
    {
        plugin.prepared (rate, blockSize);
        EXPECT_EQ (plugin->getLatencySamples(), latency) << rate << " Hz";
        plugin.prepared (11025.0, blockSize);
        EXPECT_EQ (plugin->getLatencySamples(), 0);
    }
}
} // namespace
