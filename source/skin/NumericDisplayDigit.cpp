#include "skin/NumericDisplayDigit.h"

namespace
{
constexpr float integerGrey = 1.0f, fractionGrey = 0.8f;
}

NumericDisplayDigit::NumericDisplayDigit (const juce::Image& stripToUse, int width, int height, bool integer)
    : strip (stripToUse)
    , isInteger (integer)
{
    setInterceptsMouseClicks (false, false);
    if (strip.isValid())
        setSize (strip.getWidth(), strip.getHeight() / stripFrames);
    else
        setSize (width, height);
}

void NumericDisplayDigit::show (int newDigit, bool newBlank)
{
    if (newDigit == digit && newBlank == blank)
        return;
    digit = newDigit;
    blank = newBlank;
    repaint();
}

void NumericDisplayDigit::paint (juce::Graphics& g)
{
    if (strip.isValid())
    {
        const int frameHeight = strip.getHeight() / stripFrames;
        const int frame = blank || !isEnabled() ? 0 : juce::jlimit (0, stripFrames - 1, digit + 1);
        g.drawImage (strip, 0, 0, getWidth(), frameHeight, 0, frame * frameHeight, strip.getWidth(),
                     frameHeight);
        return;
    }
    g.fillAll (juce::Colour::greyLevel (isInteger ? integerGrey : fractionGrey));
    g.setColour (juce::Colours::black);
    g.setFont ((float) getHeight());
    if (!blank)
        g.drawText (juce::String (digit), getLocalBounds(), juce::Justification::centred, false);
}
