#include "MidiTestTable.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace
{
// Steps of a learn case: "P:<name>" a control of that parameter moves, "C:<n>" controller n moves,
// "M:<n>" a controller message of n arrives, "S:<n>" the list selects row n, "X:<n>" row n is cleared,
// "off" and "on" switch learn.
struct LearnCase
{
    const char* label;
    std::vector<const char*> steps;
    const char* learnParameter;
    int learnController;
    std::vector<std::pair<int, const char*>> map;
};

// Every case starts with learn on, "Left Bits" on controller 11 and "FX" on controller 12.
const LearnCase learnCases[] = {
    { "idle, free parameter waits", { "P:Preamp" }, "Preamp", -1, {} },
    { "idle, bound parameter shows its controller", { "P:Left Bits" }, "Left Bits", 11, {} },
    { "idle, free controller waits", { "C:5" }, nullptr, 5, {} },
    { "idle, bound controller shows its parameter", { "C:11" }, "Left Bits", 11, {} },
    { "parameter waiting, same parameter", { "P:Preamp", "P:Preamp" }, "Preamp", -1, {} },
    { "parameter waiting, other free parameter", { "P:Preamp", "P:Output Volume" }, "Output Volume", -1, {} },
    { "parameter waiting, other bound parameter", { "P:Preamp", "P:Left Bits" }, "Left Bits", 11, {} },
    { "parameter waiting, free controller assigns", { "P:Preamp", "C:5" }, "Preamp", 5, { { 5, "Preamp" } } },
    { "parameter waiting, taken controller keeps its parameter", { "P:Preamp", "C:11" }, "Preamp", 11, {} },
    { "controller waiting, free parameter assigns", { "C:5", "P:Preamp" }, "Preamp", 5, { { 5, "Preamp" } } },
    { "controller waiting, bound parameter moves over",
      { "C:5", "P:Left Bits" },
      "Left Bits",
      5,
      { { 5, "Left Bits" }, { 11, nullptr } } },
    { "controller waiting, same controller", { "C:5", "C:5" }, nullptr, 5, {} },
    { "controller waiting, other free controller", { "C:5", "C:6" }, nullptr, 6, {} },
    { "controller waiting, other bound controller", { "C:5", "C:12" }, "FX", 12, {} },
    { "pair, same parameter", { "C:11", "P:Left Bits" }, "Left Bits", 11, {} },
    { "pair, other free parameter", { "C:11", "P:Preamp" }, "Preamp", -1, {} },
    { "pair, other bound parameter", { "C:11", "P:FX" }, "FX", 12, {} },
    { "pair, same controller", { "P:Left Bits", "C:11" }, "Left Bits", 11, {} },
    { "pair, other free controller", { "P:Left Bits", "C:5" }, nullptr, 5, {} },
    { "pair, other bound controller", { "P:Left Bits", "C:12" }, "FX", 12, {} },
    { "after an assignment a new controller opens a new step",
      { "P:Preamp", "C:5", "C:6" },
      nullptr,
      6,
      { { 5, "Preamp" } } },
    { "after an assignment a new parameter opens a new step",
      { "C:5", "P:Preamp", "P:Output Volume" },
      "Output Volume",
      -1,
      { { 5, "Preamp" } } },
    { "leaving learn drops a half-made pair",
      { "P:Preamp", "off", "on", "C:5" },
      nullptr,
      5,
      { { 5, nullptr } } },
    { "controller messages take part in learning", { "P:Preamp", "M:5" }, "Preamp", 5, { { 5, "Preamp" } } },
    { "selecting a bound row", { "S:12" }, "FX", 12, {} },
    { "selecting a free row", { "S:40" }, nullptr, 40, {} },
    { "selecting a free row, then a parameter", { "S:40", "P:Preamp" }, "Preamp", 40, { { 40, "Preamp" } } },
    { "clearing a row goes back to idle", { "P:Left Bits", "X:11" }, nullptr, -1, { { 11, nullptr } } },
    { "clearing a free row goes back to idle", { "C:5", "X:5" }, nullptr, -1, {} },
};

void runStep (MidiTestTable& table, const juce::String& step)
{
    const auto argument = step.fromFirstOccurrenceOf (":", false, false);

    if (step.startsWith ("P:"))
        table.midi.setLearnParameter (table.byName (argument.toRawUTF8()));
    else if (step.startsWith ("C:"))
        table.midi.setLearnController (argument.getIntValue());
    else if (step.startsWith ("M:"))
        table.midi.handleMidiMessage (controller (argument.getIntValue(), 100));
    else if (step.startsWith ("S:"))
        table.midi.selectLearnAssignment (argument.getIntValue());
    else if (step.startsWith ("X:"))
        table.midi.clearController (argument.getIntValue());
    else
        table.midi.setLearnActive (step == "on");
}

TEST (MidiLearn, EveryTransitionOfTheLearnTable)
{
    for (const auto& c : learnCases)
    {
        SCOPED_TRACE (c.label);
        MidiTestTable table;
        auto* leftBits = table.byName ("Left Bits");
        auto* fx = table.byName ("FX");
        table.midi.assign (11, leftBits, false);
        table.midi.assign (12, fx, false);
        table.midi.setLearnActive (true);

        for (const auto* step : c.steps)
            runStep (table, step);

        EXPECT_EQ (table.midi.getLearnParameter(),
                   c.learnParameter == nullptr ? nullptr : table.byName (c.learnParameter));
        EXPECT_EQ (table.midi.getLearnController(), c.learnController);

        // Rows the case names hold what it says; the two starting rows hold their parameters otherwise.
        std::map<int, Parameter*> expected{ { 11, leftBits }, { 12, fx } };

        for (const auto& [number, name] : c.map)
            expected[number] = name == nullptr ? nullptr : table.byName (name);

        int assigned = 0;

        for (int number = 0; number < MidiControl::numControllers; ++number)
        {
            const auto found = expected.find (number);
            auto* wanted = found == expected.end() ? nullptr : found->second;
            EXPECT_EQ (table.midi.getAssignedParameter (number), wanted) << "controller " << number;
            assigned += wanted != nullptr ? 1 : 0;
        }

        EXPECT_EQ (table.midi.getNumAssignments(), assigned);
        pumpMessages();
    }
}

// A controller message learns only while learning is on, and the first one already moves the parameter.
TEST (MidiLearn, MessagesLearnOnlyWhileLearningAndTheFirstMoves)
{
    MidiTestTable table;
    auto* preamp = table.byName ("Preamp");
    table.midi.handleMidiMessage (controller (5, 127));
    EXPECT_EQ (table.midi.getLearnController(), -1);
    table.midi.setLearnActive (true);
    table.midi.setLearnParameter (preamp);

    table.midi.handleMidiMessage (controller (5, 127));

    EXPECT_EQ (table.midi.getAssignedParameter (5), preamp);
    EXPECT_FLOAT_EQ (preamp->getValue(), 1.0f);
    pumpMessages();
}

} // namespace
