#include "skin/PatternNumberDisplay.h"

#include "common/ResourceLoader.h"
#include "skin/SkinXml.h"

namespace
{
constexpr int semitones = 12;
// The letter of each semitone, C 0 to B 6; a sharp takes the letter of the note below it.
constexpr int letterOf[semitones] = { 0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6 };
constexpr bool isSharp[semitones] = { false, true,  false, true,  false, false,
                                      true,  false, true,  false, true,  false };
constexpr float plainGrey = 0.9f;
const char* const digitKeys[] = { "firstDigit", "secondDigit", "thirdDigit", "fourthDigit" };
} // namespace

PatternNumberDisplay::PatternNumberDisplayDigit::PatternNumberDisplayDigit (int frameCount)
    : frames (frameCount)
{
    setInterceptsMouseClicks (false, false);
}

void PatternNumberDisplay::PatternNumberDisplayDigit::paint (juce::Graphics& g)
{
    if (strip.isValid())
    {
        GFXAnimation::paint (g);
        return;
    }
    g.fillAll (juce::Colour::greyLevel (plainGrey));
    g.setColour (juce::Colours::black);
    g.drawText (juce::String (getCurrentFrame()), getLocalBounds(), juce::Justification::centred, false);
}

PatternNumberDisplay::PatternNumberDisplay (const juce::String& name)
    : juce::Component (name)
{
    for (const int frames : digitFrames)
        addAndMakeVisible (digits.add (new PatternNumberDisplayDigit (frames)));
}

void PatternNumberDisplay::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                        EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    if (!SkinXml::isTag (element, "PatternNumberDisplay"))
        return;
    notePatternMin = SkinXml::getInt (element, "notePatternMin", 0);
    notePatternMax = SkinXml::getInt (element, "notePatternMax", 0);
    numericPatternMin = SkinXml::getInt (element, "numericPatternMin", 0);
    numericPatternMax = SkinXml::getInt (element, "numericPatternMax", 0);
    bankAndSlotPatternMin = SkinXml::getInt (element, "bankAndSlotPatternMin", 0);
    bankAndSlotPatternMax = SkinXml::getInt (element, "bankAndSlotPatternMax", 0);
    slotMax = juce::jmax (1, SkinXml::getInt (element, "slotMax", slotMax)); // slots divide the value

    if (auto* pos = SkinXml::getChild (element, "pos"))
        setTopLeftPosition (SkinXml::getInt (*pos, "left", 0), SkinXml::getInt (*pos, "top", 0));
    if (auto* size = SkinXml::getChild (element, "size"))
        setSize (SkinXml::getInt (*size, "width", 0), SkinXml::getInt (*size, "height", 0));
    if (auto* gfx = SkinXml::getChild (element, "gfx"))
        for (int i = 0; i < digits.size(); ++i)
        {
            juce::Image image;
            loadResourceImage (SkinXml::getAttribute (*gfx, digitKeys[i]), image);
            if (image.isValid())
                digits[i]->setStrip (image, digits[i]->frames);
        }
    resized();
}

void PatternNumberDisplay::resized()
{
    // Digits with a strip take its frame size, the others a quarter of the width; they stand in a row.
    int x = 0;
    for (auto* digit : digits)
    {
        const int width = digit->getStrip().isValid() ? digit->getFrameWidth() : getWidth() / 4;
        const int height = digit->getStrip().isValid() ? digit->getFrameHeight() : getHeight();
        digit->setBounds (x, 0, width, height);
        x += width;
    }
}

void PatternNumberDisplay::range (int& low, int& high) const noexcept
{
    low = mode == note ? notePatternMin : mode == numeric ? numericPatternMin : bankAndSlotPatternMin;
    high = mode == note ? notePatternMax : mode == numeric ? numericPatternMax : bankAndSlotPatternMax;
}

void PatternNumberDisplay::updateFromParameter (Parameter* changed)
{
    setPatternValue (changed->getIntValue());
}

void PatternNumberDisplay::setPatternValue (int newValue)
{
    int low = 0, high = 0;
    range (low, high);
    newValue = juce::jlimit (juce::jmin (low, high), juce::jmax (low, high), newValue);
    if (newValue == value)
        return;
    value = newValue;
    showValue();
}

void PatternNumberDisplay::showValue()
{
    int frames[4] = { 0, 0, 0, 0 };
    if (isEnabled())
    {
        const int v = juce::jmax (0, value);
        if (mode == note)
        {
            frames[0] = 11;
            frames[1] = 11 + letterOf[v % semitones];
            frames[2] = isSharp[v % semitones] ? 11 : 12;
            frames[3] = v / semitones + 1;
        }
        else if (mode == numeric)
        {
            frames[1] = v / 10 + 1;
            frames[2] = v % 10 + 1;
        }
        else
        {
            const int s = (v - 1) % slotMax + 1;
            frames[0] = (v - 1) / slotMax + 2;
            frames[1] = 18;
            frames[2] = s / 10 + 1;
            frames[3] = s % 10 + 1;
        }
    }
    // A digit never shows a frame its strip lacks: the octave of notes from 120 up would be one past it.
    for (int i = 0; i < digits.size(); ++i)
        digits[i]->setFrame (juce::jlimit (0, digits[i]->frames - 1, frames[i]));
}

int PatternNumberDisplay::getDigitFrame (int index) const noexcept
{
    return juce::isPositiveAndBelow (index, digits.size()) ? digits[index]->getCurrentFrame() : 0;
}
