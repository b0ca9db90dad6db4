#include "AudioChecks.h"

#include "AudioComparison.h"
#include "BlockRunner.h"
#include "ExpectedPlugin.h"
#include "MessagePump.h"
#include "ParameterSet.h"
#include "ReferenceRender.h"
#include "StateDocument.h"
#include "TestSignal.h"

namespace
{
// A host's largest block; the random blocks run from one sample up to it.
constexpr int maxBlockSize = 1024;
// A fifth of a second: long enough for the smoothing to settle and the slowest hold rate to step.
constexpr double renderSeconds = 0.2;
constexpr juce::int64 seedBase = 7000;
constexpr int settingsPreset = 9; // a slot of the factory bank's first group

juce::String rateText (double rate) { return juce::String ((int) rate) + " Hz"; }

} // namespace

AudioChecks::AudioChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void AudioChecks::run()
{
    for (int i = 0; i < (int) ExpectedPlugin::latencies.size(); ++i)
        checkRate (ExpectedPlugin::latencies[(size_t) i].rate, i);
    checkLatencyFollowsRate();
}

void AudioChecks::checkRate (double sampleRate, int rateIndex)
{
    const auto at = " at " + rateText (sampleRate);

    // The settings are a preset of the project's bank that a program change selects at the first sample,
    // as a song starting with one: every format and the renderer then take them at the same point,
    // after the processor has been prepared. The project is the state the plug-in saved with them, which
    // holds a preset's values with six decimals.
    juce::MemoryBlock chunk;
    const auto settings = ParameterSet::random (seedBase + rateIndex);
    {
        auto editor = format.create (sampleRate, maxBlockSize);
        if (editor == nullptr)
            return;
        auto state = format.getStateXml (*editor);
        if (!report.check (state != nullptr, "audio: the host's state holds the plug-in's state" + at))
            return;
        for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
            StateDocument::setPresetParameter (*state, settingsPreset,
                                               ExpectedPlugin::parameters[(size_t) i].name, settings[i]);
        format.setStateXml (*editor, *state);
        chunk = format.getChunk (*editor);
    }

    auto instance = format.create (sampleRate, maxBlockSize);
    if (instance == nullptr)
        return;
    format.setChunk (*instance, chunk);
    FormatUnderTest::prepare (*instance, sampleRate, maxBlockSize);
    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::programChange (1, settingsPreset), 0);

    const int length = (int) (sampleRate * renderSeconds);
    const auto input = TestSignal::makeMaterial (length, sampleRate, seedBase + rateIndex);
    auto hosted = input;
    BlockRunner::run (*instance, hosted,
                      BlockRunner::randomBlocks (length, maxBlockSize, seedBase + rateIndex), midi);

    juce::String whyNot;
    const auto expected = ReferenceRender::render (chunk, input, sampleRate, midi, false, whyNot);
    const bool identical =
        expected.getNumSamples() > 0 && AudioComparison::identical (hosted, expected, whyNot);
    report.check (identical, "audio: random blocks" + at + " give the renderer's bits",
                  whyNot + "; settings " + settings.describe());
    report.check (AudioComparison::peak (hosted, length / 2, length / 2) > 0.0f
                      && AudioComparison::firstDifference (hosted, input) >= 0,
                  "audio: the output" + at + " is processed sound, neither silence nor the input");

    const int latency = ExpectedPlugin::latencies[(size_t) rateIndex].latency;
    MessagePump::runUntil ([&] { return instance->getLatencySamples() == latency; });
    report.check (instance->getLatencySamples() == latency,
                  "audio: reports a latency of " + juce::String (latency) + " samples" + at,
                  "it reports " + juce::String (instance->getLatencySamples()));
}

void AudioChecks::checkLatencyFollowsRate()
{
    // One instance taken through every rate, released in between, as a host does when its rate changes;
    // the reported latency must follow each time.
    const auto& first = ExpectedPlugin::latencies[0];
    auto instance = format.createPrepared (first.rate, maxBlockSize);
    if (instance == nullptr)
        return;

    juce::StringArray wrong;
    auto order = ExpectedPlugin::latencies;
    std::reverse (order.begin() + 1, order.end()); // from 44100 Hz straight to the highest rate
    for (const auto& entry : order)
    {
        instance->releaseResources();
        FormatUnderTest::prepare (*instance, entry.rate, maxBlockSize);
        FormatUnderTest::playSilence (*instance, maxBlockSize);
        MessagePump::runUntil ([&] { return instance->getLatencySamples() == entry.latency; });
        if (instance->getLatencySamples() != entry.latency)
            wrong.add (rateText (entry.rate) + ": " + juce::String (instance->getLatencySamples()));
    }
    report.check (wrong.isEmpty(), "audio: the reported latency changes with the rate of one instance",
                  wrong.joinIntoString (", "));
}
