#pragma once

#include "IntParameter.h"

// A MIDI note number from 0 to 127, written as a three-character note text from "C-0" to "G-X".
class NoteParameter final : public IntParameter
{
public:
    NoteParameter (int index, const juce::String& name, int value);

    std::unique_ptr<Parameter> clone() const override;

    juce::String getStringValue() const override;
    void setStringValue (const juce::String& value, bool notify) override;

    // The note text of a note number; empty outside 0 to 127.
    static juce::String noteText (int noteNumber);

    // Whether text is a valid note text; if so its number, limited to 127, goes to noteNumber.
    static bool parseNoteText (const juce::String& text, int& noteNumber);

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (NoteParameter)
};
