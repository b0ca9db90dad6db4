#include "MidiChecks.h"

#include "AudioComparison.h"
#include "BlockRunner.h"
#include "ExpectedPlugin.h"
#include "HostParameters.h"
#include "MessagePump.h"
#include "ParameterSet.h"
#include "ReferenceRender.h"
#include "StateDocument.h"
#include "TestSignal.h"

namespace
{
constexpr double baseRate = 44100.0;
constexpr int maxBlockSize = 1024; // a host's largest block
constexpr juce::int64 seedBase = 9000;

constexpr int volumeController = 7; // the channel volume controller
constexpr int controllerValue = 100;
constexpr float controllerStep = 0.007874016f; // one controller step, 1/127 as the plug-in takes it

// A preset of the factory bank other than the first, which a new instance starts with.
constexpr int otherPreset = 5;

juce::String rateText (double rate) { return juce::String ((int) rate) + " Hz"; }

/** The values of a preset slot of the state's bank, by parameter index. */
ParameterSet presetValues (const juce::XmlElement& state, int index)
{
    ParameterSet values;
    if (auto* preset = StateDocument::getPreset (state, index))
        for (auto* param : preset->getChildWithTagNameIterator ("param"))
        {
            const int at = ExpectedPlugin::indexOf (param->getStringAttribute ("name"));
            if (at >= 0)
                values[at] = (float) param->getDoubleAttribute ("value");
        }
    return values;
}

/** The live values of the state's parameters. */
ParameterSet liveValues (const juce::XmlElement& state)
{
    ParameterSet values;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        values[i] = StateDocument::getParameter (state, ExpectedPlugin::parameters[(size_t) i].name);
    return values;
}

juce::String differences (const ParameterSet& actual, const ParameterSet& expected)
{
    juce::StringArray items;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        if (actual[i] != expected[i])
            items.add (juce::String (ExpectedPlugin::parameters[(size_t) i].name) + " "
                       + juce::String (actual[i], 7) + " not " + juce::String (expected[i], 7));
    return items.joinIntoString (", ");
}

} // namespace

MidiChecks::MidiChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void MidiChecks::run()
{
    checkController (baseRate);
    checkController (ExpectedPlugin::latencies[1].rate);
    checkProgramChange();
    checkSilentProgramChange();
}

void MidiChecks::checkController (double sampleRate)
{
    const auto at = " at " + rateText (sampleRate);
    const auto volumeName = ExpectedPlugin::parameters[ParameterIndex::outputVolume].name;
    const int length = (int) (sampleRate * 0.1); // a tenth of a second
    const int eventPosition = length / 3 + 1;    // seldom at the start of a random block
    const auto input = TestSignal::makeMaterial (length, sampleRate, seedBase);

    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::controllerEvent (1, volumeController, controllerValue), eventPosition);

    // JUCE's VST3 host sends controllers as parameter changes through the plug-in's MIDI mapping, at the
    // start of the block they fall in; a block starts at the controller there, as a host with a block
    // boundary at the event would.
    auto blocks = BlockRunner::randomBlocks (length, maxBlockSize, seedBase);
    if (isVst3())
        blocks = BlockRunner::splitAtEvents (blocks, midi);

    // An instance whose project maps the controller to "Output Volume", reopened and playing.
    juce::MemoryBlock chunk;
    auto play = [&] (const juce::MidiBuffer& events, juce::AudioBuffer<float>& audio)
    {
        auto instance = format.create (sampleRate, maxBlockSize);
        if (instance == nullptr)
            return instance;
        if (auto state = format.getStateXml (*instance))
        {
            StateDocument::setMap (*state, volumeController, volumeName);
            format.setStateXml (*instance, *state);
        }
        chunk = format.getChunk (*instance);
        FormatUnderTest::prepare (*instance, sampleRate, maxBlockSize);
        BlockRunner::run (*instance, audio, blocks, events);
        return instance;
    };

    auto hosted = input;
    auto instance = play (midi, hosted);
    if (instance == nullptr)
        return;

    juce::String whyNot;
    const auto expected = ReferenceRender::render (chunk, input, sampleRate, midi, false, whyNot);
    const bool identical =
        expected.getNumSamples() > 0 && AudioComparison::identical (hosted, expected, whyNot);
    report.check (identical, "MIDI: a mapped controller" + at + " gives the renderer's bits", whyNot);

    const float moved = (float) controllerValue * controllerStep;
    auto state = format.getStateXml (*instance);
    const float inState = state != nullptr ? StateDocument::getParameter (*state, volumeName) : 0.0f;
    report.check (inState == moved, "MIDI: the controller" + at + " moved \"Output Volume\" to 100/127",
                  "the plug-in's state holds " + juce::String (inState, 7));
    if (!isVst3())
    {
        auto* volume = HostParameters (*instance)[ParameterIndex::outputVolume];
        MessagePump::runUntil ([&] { return volume->getValue() == moved; });
        report.check (volume->getValue() == moved, "MIDI: and the host sees the new value" + at,
                      juce::String (volume->getValue(), 7));
    }

    if (sampleRate != baseRate)
        return;

    // Without resampling a sample's output comes from that sample's input, so the change must show
    // exactly at the controller's sample and not a sample earlier or later.
    auto unmoved = input;
    if (play ({}, unmoved) == nullptr)
        return;
    const int first = AudioComparison::firstDifference (hosted, unmoved);
    report.check (first == eventPosition,
                  "MIDI: the controller takes effect at its exact sample (" + juce::String (eventPosition)
                      + ")",
                  "the output first changes at " + juce::String (first));
    if (isVst3())
        report.skip ("MIDI: a controller inside a block",
                     "JUCE's VST3 host moves controllers to the start of their block, as parameter changes "
                     "through the plug-in's MIDI mapping; checked with a block starting at it");
}

void MidiChecks::checkProgramChange()
{
    const int length = (int) (baseRate * 0.1);
    const int eventPosition = length / 2 + 3;
    const auto input = TestSignal::makeMaterial (length, baseRate, seedBase + 1);
    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::programChange (1, otherPreset), eventPosition);

    auto instance = format.createPrepared (baseRate, maxBlockSize);
    auto plain = format.createPrepared (baseRate, maxBlockSize);
    if (instance == nullptr || plain == nullptr)
        return;
    const auto chunk = format.getChunk (*instance);
    const auto before = format.getStateXml (*instance);
    if (!report.check (before != nullptr, "MIDI: the host's state holds the plug-in's state"))
        return;
    const auto preset = presetValues (*before, otherPreset);

    auto hosted = input;
    auto unchanged = input;
    BlockRunner::run (*instance, hosted, BlockRunner::randomBlocks (length, maxBlockSize, seedBase + 1),
                      midi);
    BlockRunner::run (*plain, unchanged, BlockRunner::randomBlocks (length, maxBlockSize, seedBase + 2));

    const auto after = format.getStateXml (*instance);
    report.check (after != nullptr && StateDocument::getCurrentPreset (*after) == otherPreset,
                  "MIDI: a program change selects its preset",
                  after == nullptr
                      ? juce::String ("no state")
                      : "current preset " + juce::String (StateDocument::getCurrentPreset (*after)));
    const auto live = after != nullptr ? liveValues (*after) : ParameterSet();
    report.check (differences (live, preset).isEmpty(), "MIDI: and applies its values to the parameters",
                  differences (live, preset));

    if (isVst3())
    {
        report.skip ("MIDI: and the host sees the preset's values",
                     "JUCE's VST3 host passes the plug-in's output parameter changes to its edit controller, "
                     "not to the host's parameters");
    }
    else
    {
        auto* volume = HostParameters (*instance)[ParameterIndex::outputVolume];
        MessagePump::runUntil ([&] { return volume->getValue() == preset[ParameterIndex::outputVolume]; });
        const auto shown = ParameterSet::readFrom (*instance);
        report.check (differences (shown, preset).isEmpty(), "MIDI: and the host sees the preset's values",
                      differences (shown, preset));
    }

    juce::String whyNot;
    const auto expected = ReferenceRender::render (chunk, input, baseRate, midi, false, whyNot);
    const bool identical =
        expected.getNumSamples() > 0 && AudioComparison::identical (hosted, expected, whyNot);
    report.check (identical, "MIDI: the program change gives the renderer's bits", whyNot);
    const int first = AudioComparison::firstDifference (hosted, unchanged);
    report.check (first == eventPosition,
                  "MIDI: the program change takes effect at its exact sample (" + juce::String (eventPosition)
                      + ")",
                  "the output first changes at " + juce::String (first));
}

void MidiChecks::checkSilentProgramChange()
{
    auto* install = format.getInstall();
    if (!report.check (install->writeSettings ("silent"),
                       "MIDI: user settings with the silent changing type"))
        return;
    auto instance = format.createPrepared (baseRate, maxBlockSize);
    install->removeSettings();
    if (instance == nullptr)
        return;

    // The fade at 44100 Hz: about 3450 samples down to a thousandth, 4000 of silence, about 2300 up.
    const int length = (int) (baseRate * 0.5);
    const int eventPosition = 4410 + 7;
    const int silenceStart = eventPosition + 3500;
    const int silenceLength = 3900;
    const int backAt = eventPosition + 3500 + 4000 + 2400;
    const int soon = 200; // samples after the change, well inside the fade-out

    const auto input = TestSignal::makeSteadyTone (length, baseRate);
    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::programChange (1, otherPreset), eventPosition);

    const auto chunk = format.getChunk (*instance);
    const auto before = format.getStateXml (*instance);
    if (before == nullptr)
        return;
    const auto oldValues = liveValues (*before);
    const auto newValues = presetValues (*before, otherPreset);

    auto hosted = input;
    const auto blocks = BlockRunner::randomBlocks (eventPosition + soon, maxBlockSize, seedBase + 3);
    BlockRunner::run (*instance, hosted, blocks, midi);
    const auto during = format.getStateXml (*instance);
    report.check (during != nullptr && StateDocument::getCurrentPreset (*during) == otherPreset,
                  "MIDI: with the silent changing type the program change selects its preset at once");
    report.check (during != nullptr && differences (liveValues (*during), oldValues).isEmpty(),
                  "MIDI: but the parameters keep their values while the sound fades",
                  during != nullptr ? differences (liveValues (*during), oldValues) : juce::String());

    BlockRunner::runFrom (
        *instance, hosted, eventPosition + soon,
        BlockRunner::randomBlocks (length - eventPosition - soon, maxBlockSize, seedBase + 4), midi);
    const auto after = format.getStateXml (*instance);
    report.check (after != nullptr && differences (liveValues (*after), newValues).isEmpty(),
                  "MIDI: the preset's values are applied in the silence",
                  after != nullptr ? differences (liveValues (*after), newValues) : juce::String());

    const float level = AudioComparison::peak (hosted, eventPosition - 1000, 1000);
    const float fading = AudioComparison::peak (hosted, eventPosition + 1500, 100);
    const float silence = AudioComparison::peak (hosted, silenceStart, silenceLength);
    const float back = AudioComparison::peak (hosted, backAt, 2000);
    const float inaudible = 1.0e-6f;
    report.check (level > 0.0f && fading < level && fading > level * 1.0e-3f,
                  "MIDI: the sound fades out gradually after the program change",
                  "level " + juce::String (level) + " before, " + juce::String (fading)
                      + " 1500 samples after");
    report.check (silence < inaudible, "MIDI: then holds silence (3900 samples from 3500 after the change)",
                  "peak " + juce::String (silence));
    report.check (back > 1.0e-3f, "MIDI: and fades back in with the new preset",
                  "peak " + juce::String (back));

    juce::String whyNot;
    const auto expected = ReferenceRender::render (chunk, input, baseRate, midi, true, whyNot);
    const bool identical =
        expected.getNumSamples() > 0 && AudioComparison::identical (hosted, expected, whyNot);
    report.check (identical, "MIDI: the faded program change gives the renderer's bits", whyNot);

    instance.reset();
    install->removeSettings();
}
