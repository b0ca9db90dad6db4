#include "skin/GFXRocker.h"

#include "skin/SkinXml.h"

namespace
{
constexpr float restGrey = 0.7f, pressedGrey = 0.5f, faceGrey = 0.9f;
constexpr int halfGap = 2;
} // namespace

GFXRocker::GFXRocker (const juce::String& name)
    : juce::Component (name)
{
}

void GFXRocker::setAction (const juce::String& type, int uid, const juce::String&)
{
    if (type == "onLessClick")
        lessUid = uid;
    else if (type == "onMoreClick")
        moreUid = uid;
    else if (type == "onLessClickWithCtrl")
        ctrlLessUid = uid;
    else if (type == "onMoreClickWithCtrl")
        ctrlMoreUid = uid;
}

void GFXRocker::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                             BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml (element, parameters, events, editor);
    if (SkinXml::isTag (element, "Rocker"))
    {
        const auto type = SkinXml::getAttribute (element, "type");
        if (type == "vertical")
            orientation = 0;
        else if (type == "horizontal")
            orientation = 1;
    }
    setBounds (left, top, frameWidth, frameHeight);
}

bool GFXRocker::isMoreSide (juce::Point<int> position) const
{
    return isHorizontal() ? position.x > getWidth() / 2 : position.y < getHeight() / 2;
}

void GFXRocker::mouseDown (const juce::MouseEvent& e)
{
    const bool more = isMoreSide (e.getPosition());
    const bool ctrl = e.mods.isCtrlDown();
    frame = more ? 2 : 0;
    const int uid = more ? (ctrl ? ctrlMoreUid : moreUid) : (ctrl ? ctrlLessUid : lessUid);
    showRest = false;
    if (uid != -1)
        sendEvent (uid);
    repaint();
}

void GFXRocker::mouseDrag (const juce::MouseEvent& e)
{
    // Pressed while the pointer stays on the half it went down on, at rest anywhere else.
    const bool onControl = getLocalBounds().contains (e.getPosition());
    showRest = !onControl || isMoreSide (e.getPosition()) != (frame == 2);
    repaint();
}

void GFXRocker::mouseUp (const juce::MouseEvent&)
{
    showRest = false;
    frame = 1;
    repaint();
}

void GFXRocker::paint (juce::Graphics& g)
{
    if (strip.isValid())
    {
        // A strip of fewer than three frames draws what it has; the skin must give three.
        drawFrame (g, juce::jmin (getShownFrame(), framesNum - 1));
        return;
    }
    g.fillAll (juce::Colour::greyLevel (faceGrey));
    auto area = getLocalBounds();
    const auto first = isHorizontal() ? area.removeFromLeft ((area.getWidth() - halfGap) / 2)
                                      : area.removeFromTop ((area.getHeight() - halfGap) / 2);
    const auto second = isHorizontal() ? area.withTrimmedLeft (halfGap) : area.withTrimmedTop (halfGap);
    // Vertical: the upper half is "more"; horizontal: the right half.
    const auto& moreHalf = isHorizontal() ? second : first;
    const auto& lessHalf = isHorizontal() ? first : second;
    const int shown = getShownFrame();
    g.setColour (juce::Colour::greyLevel (shown == 2 ? pressedGrey : restGrey));
    g.fillRect (moreHalf);
    g.setColour (juce::Colour::greyLevel (shown == 0 ? pressedGrey : restGrey));
    g.fillRect (lessHalf);
    g.setColour (juce::Colours::black);
    g.drawRect (getLocalBounds());
}
