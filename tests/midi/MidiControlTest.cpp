#include "MidiTestTable.h"

#include <gtest/gtest.h>

namespace
{
struct MoveCase
{
    const char* parameter;
    int value;
    float expected;
};

TEST (MidiControl, ControllerValueScalesOntoTheParameterRange)
{
    const MoveCase cases[] = {
        { "Preamp", 127, 1.0f },       { "Preamp", 0, 0.0f },  { "Preamp", 64, 0.503937f },
        { "Preamp", 1, 0.007874016f }, { "Wide", 127, 10.0f }, { "Wide", 0, -10.0f },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (juce::String (c.parameter) + " " + juce::String (c.value));
        MidiTestTable table;
        auto* parameter = table.byName (c.parameter);
        table.midi.assign (7, parameter, false);
        parameter->setNormalizedValue (0.3f, false);

        table.midi.handleMidiMessage (controller (7, c.value));

        EXPECT_NEAR (parameter->getValue(), c.expected, 1e-6f);
        EXPECT_EQ (table.midi.getLastMovedParameter(), parameter);
        pumpMessages();
    }
}

TEST (MidiControl, OtherMessagesAndUnassignedControllersMoveNothing)
{
    MidiTestTable table;
    MidiRecorder recorder;
    table.midi.addListener (&recorder);
    auto* parameter = table.byName ("Preamp");
    table.midi.assign (1, parameter, false);
    parameter->setNormalizedValue (0.5f, false);

    const juce::MidiMessage others[] = {
        juce::MidiMessage::noteOn (1, 1, (juce::uint8) 127),
        juce::MidiMessage::noteOff (1, 1),
        juce::MidiMessage::pitchWheel (1, 16383),
        juce::MidiMessage::programChange (1, 1),
        juce::MidiMessage::aftertouchChange (1, 1, 127),
        juce::MidiMessage::channelPressureChange (1, 127),
        controller (2, 127),
    };

    for (const auto& message : others)
        table.midi.handleMidiMessage (message);

    const juce::uint8 malformed[][3] = { { 0xb0, 0x81, 0x7f }, { 0xb0, 0x01, 0x80 } };

    for (const auto& bytes : malformed)
        table.midi.handleMidiMessage (juce::MidiMessage (bytes, 3));

    EXPECT_FLOAT_EQ (parameter->getValue(), 0.5f);
    EXPECT_EQ (table.midi.getLastMovedParameter(), nullptr);
    pumpMessages();
    EXPECT_TRUE (recorder.calls.isEmpty());
}

TEST (MidiControl, AssignKeepsOneControllerPerParameter)
{
    MidiTestTable table;
    auto* preamp = table.byName ("Preamp");
    auto* fx = table.byName ("FX");

    table.midi.assign (1, preamp, false);
    table.midi.assign (2, fx, false);
    EXPECT_EQ (table.midi.getNumAssignments(), 2);

    table.midi.assign (5, preamp, false);
    EXPECT_EQ (table.midi.getAssignedParameter (1), nullptr);
    EXPECT_EQ (table.midi.getAssignedParameter (5), preamp);
    EXPECT_EQ (table.midi.findController (preamp), 5);
    EXPECT_EQ (table.midi.getNumAssignments(), 2);

    table.midi.assign (2, preamp, false);
    EXPECT_EQ (table.midi.getAssignedParameter (2), preamp);
    EXPECT_EQ (table.midi.getAssignedParameter (5), nullptr);
    EXPECT_EQ (table.midi.findController (fx), -1);
    EXPECT_EQ (table.midi.getNumAssignments(), 1);

    table.midi.assign (2, nullptr, false);
    EXPECT_EQ (table.midi.getNumAssignments(), 0);
    EXPECT_EQ (table.midi.findController (nullptr), -1);
}

TEST (MidiControl, ClearControllerAndClearAll)
{
    MidiTestTable table;
    table.midi.assign (1, table.byName ("Preamp"), false);
    table.midi.assign (2, table.byName ("FX"), false);
    table.midi.assign (3, table.byName ("Left Bits"), false);

    table.midi.clearController (2);
    table.midi.clearController (2);
    EXPECT_EQ (table.midi.getNumAssignments(), 2);
    EXPECT_EQ (table.midi.getAssignedParameter (2), nullptr);

    table.midi.clearAll();
    EXPECT_EQ (table.midi.getNumAssignments(), 0);

    for (int number = 0; number < MidiControl::numControllers; ++number)
        EXPECT_EQ (table.midi.getAssignedParameter (number), nullptr);

    pumpMessages();
}

} // namespace
