#include "NoteParameter.h"

#include "common/NumberText.h"

namespace
{
constexpr int highestNote = 127;
constexpr int notesPerOctave = 12;
constexpr int octaveTen = 10;

// Pitch classes by letter, A to G.
constexpr int naturalPitches[] = { 9, 11, 0, 2, 4, 5, 7 };
} // namespace

NoteParameter::NoteParameter (int parameterIndex, const juce::String& parameterName, int startValue)
    : IntParameter (parameterIndex, parameterName, 0, highestNote, startValue)
{
}

std::unique_ptr<Parameter> NoteParameter::clone() const
{
    auto copy = std::make_unique<NoteParameter> (getIndex(), getName(), getIntValue());
    copy->setAutomatable (isAutomatable());
    return copy;
}

juce::String NoteParameter::getStringValue() const { return noteText (getIntValue()); }

void NoteParameter::setStringValue (const juce::String& newValue, bool notify)
{
    int noteNumber = 0;

    if (parseNoteText (newValue, noteNumber))
        setIntValue (noteNumber, notify);
    else
        setNormalizedValue (NumberText::toFloat (newValue.getDoubleValue()), notify);
}

juce::String NoteParameter::noteText (int noteNumber)
{
    if (noteNumber < 0 || noteNumber > highestNote)
        return {};

    static const char* const pitchTexts[] = { "C-", "C#", "D-", "D#", "E-", "F-",
                                              "F#", "G-", "G#", "A-", "A#", "B-" };
    const int octave = noteNumber / notesPerOctave;
    const auto octaveText = octave == octaveTen ? juce::String ("X") : juce::String (octave);
    return juce::String (pitchTexts[noteNumber % notesPerOctave]) + octaveText;
}

bool NoteParameter::parseNoteText (const juce::String& text, int& noteNumber)
{
    if (text.length() != 3)
        return false;

    const auto letter = text[0];
    const auto accidental = text[1];
    const auto octaveChar = text[2];

    if (letter < 'A' || letter > 'G' || (accidental != '-' && accidental != '#'))
        return false;

    int octave = 0;

    if (octaveChar == 'X')
        octave = octaveTen;
    else if (octaveChar >= '0' && octaveChar <= '9')
        octave = octaveChar - '0';
    else
        return false;

    int pitch = naturalPitches[letter - 'A'];

    // E sharp and B sharp stay on their own pitch instead of reaching into the next letter.
    if (accidental == '#' && letter != 'E' && letter != 'B')
        ++pitch;

    noteNumber = juce::jmin (highestNote, pitch + notesPerOctave * octave);
    return true;
}
