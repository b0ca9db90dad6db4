#include "parameters/NoteParameter.h"

#include <gtest/gtest.h>

namespace
{
struct NoteCase
{
    int number;
    const char* text;
};

TEST (NoteParameter, NoteTextOfEveryPitchAndOctave)
{
    const NoteCase cases[] = {
        { 0, "C-0" },   { 1, "C#0" },   { 2, "D-0" },  { 3, "D#0" },  { 4, "E-0" },
        { 5, "F-0" },   { 6, "F#0" },   { 7, "G-0" },  { 8, "G#0" },  { 9, "A-0" },
        { 10, "A#0" },  { 11, "B-0" },  { 37, "C#3" }, { 60, "C-5" }, { 119, "B-9" },
        { 120, "C-X" }, { 127, "G-X" }, { -1, "" },    { 128, "" },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.number);
        EXPECT_EQ (NoteParameter::noteText (c.number), juce::String (c.text));
    }
}

TEST (NoteParameter, EveryNoteTextReadsBackToItsNumber)
{
    for (int number = 0; number <= 127; ++number)
    {
        int parsed = -1;
        ASSERT_TRUE (NoteParameter::parseNoteText (NoteParameter::noteText (number), parsed));
        EXPECT_EQ (parsed, number);
    }
}

struct ParseCase
{
    const char* text;
    bool valid;
    int number;
};

TEST (NoteParameter, ValidNoteTexts)
{
    const ParseCase cases[] = {
        { "C#3", true, 37 },  { "E#4", true, 52 },  { "B#1", true, 23 },  { "G#X", true, 127 },
        { "B-X", true, 127 }, { "A-0", true, 9 },   { "D#X", true, 123 }, { "c-5", false, 0 },
        { "C-", false, 0 },   { "C-55", false, 0 }, { "H-1", false, 0 },  { "C+1", false, 0 },
        { "C-Y", false, 0 },  { "C-x", false, 0 },  { "", false, 0 },     { " C-1", false, 0 },
        { "0.5", false, 0 },  { "Cb1", false, 0 },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        int number = -1;
        EXPECT_EQ (NoteParameter::parseNoteText (c.text, number), c.valid);

        if (c.valid)
        {
            EXPECT_EQ (number, c.number);
        }
    }
}

struct TextCase
{
    const char* text;
    int expected;
};

TEST (NoteParameter, TextIsANoteOrANormalisedNumber)
{
    const TextCase cases[] = {
        { "C#3", 37 }, { "0.5", 64 },  { "1", 127 },   { "c#3", 0 },
        { "junk", 0 }, { "G-X", 127 }, { "0.25", 32 },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        NoteParameter parameter (0, "n", 100);
        parameter.setStringValue (c.text, true);
        EXPECT_EQ (parameter.getIntValue(), c.expected);
    }
}

TEST (NoteParameter, RangeIsTheMidiNotes)
{
    NoteParameter parameter (0, "n", 300);
    EXPECT_EQ (parameter.getIntValue(), 127);
    EXPECT_EQ (parameter.getMinimum(), 0);
    EXPECT_EQ (parameter.getMaximum(), 127);
    EXPECT_EQ (parameter.getStringValue(), "G-X");
}
} // namespace
