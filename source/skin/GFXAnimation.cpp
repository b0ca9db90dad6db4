#include "skin/GFXAnimation.h"

#include "skin/ControlLook.h"

GFXAnimation::GFXAnimation (const juce::String& name)
    : juce::Component (name)
{
}

GFXAnimation::~GFXAnimation() { stopTimer(); }

void GFXAnimation::setFrameValue (float value) { setFrame (frameForValue (value, framesNum)); }

void GFXAnimation::setFrame (int frame)
{
    if (frame == currentFrame)
        return;
    currentFrame = frame;
    repaint();
}

void GFXAnimation::updateFromParameter (Parameter* changed) { setFrameValue (changed->getNormalizedValue()); }

void GFXAnimation::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                EventsMap& events, BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml (element, parameters, events, editor);
    currentFrame = 0;
    repaint();
}

void GFXAnimation::frameSizeChanged() { setSize (frameWidth, frameHeight); }

void GFXAnimation::positionChanged() { setTopLeftPosition (left, top); }

void GFXAnimation::blinkChanged() { repaint(); }

void GFXAnimation::timerCallback()
{
    stopTimer();
    setFrame (restFrame);
}

void GFXAnimation::paint (juce::Graphics& g)
{
    if (strip.isValid())
        drawFrame (g, isBlinkedOff() ? 0 : currentFrame);
    else
        ControlLook::drawDotBox (g, getLocalBounds(), currentFrame, framesNum, false);
}
