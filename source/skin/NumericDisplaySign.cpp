#include "skin/NumericDisplaySign.h"

NumericDisplaySign::NumericDisplaySign (const juce::Image& stripToUse, int width, int height)
    : strip (stripToUse)
{
    setInterceptsMouseClicks (false, false);
    if (strip.isValid())
        setSize (strip.getWidth(), strip.getHeight() / stripFrames);
    else
        setSize (width, height);
}

void NumericDisplaySign::setNegative (bool shouldBeNegative)
{
    if (negative == shouldBeNegative)
        return;
    negative = shouldBeNegative;
    repaint();
}

void NumericDisplaySign::paint (juce::Graphics& g)
{
    if (strip.isValid())
    {
        const int frameHeight = strip.getHeight() / stripFrames;
        g.drawImage (strip, 0, 0, getWidth(), frameHeight, 0, negative ? frameHeight : 0, strip.getWidth(),
                     frameHeight);
        return;
    }
    g.fillAll (juce::Colours::white);
    g.setColour (juce::Colours::black);
    g.setFont ((float) getHeight());
    if (negative)
        g.drawText ("-", getLocalBounds(), juce::Justification::centred, false);
}
