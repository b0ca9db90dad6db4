#pragma once

#include "skin/GFXAnimation.h"

/** A pattern number in four picture digits: as a note (letter, sharp or natural, octave), as a number, or
    as a bank and a slot. Only the note form is reached in this system: nothing sets another. */
class PatternNumberDisplay : public GUIController, public juce::Component
{
public:
    enum Mode
    {
        note = 0,
        numeric = 1,
        bankAndSlot = 2
    };

    /** The frames each of the four digits' strips holds. */
    static constexpr int digitFrames[4] = { 12, 19, 13, 11 };

    explicit PatternNumberDisplay (const juce::String& name = {});

    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void updateFromParameter (Parameter* changed) override;
    void enablementChanged() override { showValue(); }

    /** Shows a value in the present mode, limited to its range. */
    void setPatternValue (int newValue);
    int getPatternValue() const noexcept { return value; }
    /** The frame digit `index` (0 to 3) shows. */
    int getDigitFrame (int index) const noexcept;

    void resized() override;

private:
    /** A digit: an animation whose strip has a fixed number of frames, with the frame it should show. */
    class PatternNumberDisplayDigit final : public GFXAnimation
    {
    public:
        explicit PatternNumberDisplayDigit (int frames);
        void paint (juce::Graphics& g) override;
        const int frames;
    };

    void showValue();
    void range (int& low, int& high) const noexcept;

    juce::OwnedArray<PatternNumberDisplayDigit> digits;
    int value = 0;
    int notePatternMin = 0, notePatternMax = 0;
    int numericPatternMin = 0, numericPatternMax = 0;
    int bankAndSlotPatternMin = 0, bankAndSlotPatternMax = 0;
    int slotMax = 12;
    int mode = note;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PatternNumberDisplay)
};
