#include "skin/GFXMultiStateButton.h"

#include "common/ResourceLoader.h"
#include "skin/ControlLook.h"
#include "skin/SkinXml.h"

GFXMultiStateButton::GFXMultiStateButton (const juce::String& name)
    : juce::Button (name)
{
    setClickingTogglesState (false);
}

void GFXMultiStateButton::setAction (const juce::String& type, int uid, const juce::String&)
{
    if (type == "onClick")
        clickUid = uid;
    else if (type == "onClickWithCtrl")
        ctrlClickUid = uid;
}

void GFXMultiStateButton::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                       EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    loadPos (element);
    loadSize (element);
    if (!SkinXml::isTag (element, "MultiStateButton"))
        return;

    const auto styleName = SkinXml::getAttribute (element, "style", "2D");
    if (styleName == "2D")
        style = 0;
    else if (styleName == "3D")
        style = 1;
    const int states = SkinXml::getInt (element, "states", 2);
    if (states >= 2)
        statesNum = states;

    if (auto* gfx = SkinXml::getChild (element, "gfx"))
    {
        juce::Image image;
        const auto key = SkinXml::getAttribute (*gfx, "resource");
        loadResourceImage (key, image);
        if (image.isValid())
        {
            setStrip (image, style == 1 ? statesNum * 2 : statesNum);
            stripKey = key;
        }
    }
    setTriggeredOnMouseDown (SkinXml::getAttribute (element, "clickEvent", "onRelease") == "onPress");
    setRadioGroupId (SkinXml::getInt (element, "radioGroupId", 0));
}

void GFXMultiStateButton::updateFromParameter (Parameter* changed)
{
    setState (frameForValue (changed->getNormalizedValue(), statesNum));
}

void GFXMultiStateButton::setState (int newState)
{
    if (newState == state)
        return;
    state = newState;
    repaint();
}

void GFXMultiStateButton::timerCallback()
{
    stopTimer();
    setState (0);
}

void GFXMultiStateButton::clicked (const juce::ModifierKeys& modifiers)
{
    const int uid = modifiers.isCtrlDown() ? ctrlClickUid : clickUid;
    if (uid != -1)
        sendEvent (uid);
}

void GFXMultiStateButton::paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown)
{
    const int pressed = isMouseOverButton && isButtonDown ? 1 : 0;
    if (strip.isValid())
    {
        int frame = 0;
        if (isBlinkedOff())
            frame = style == 1 ? pressed : 0;
        else
            frame = style == 1 ? 2 * state + pressed : state;
        drawFrame (g, frame);
        return;
    }
    ControlLook::drawDotBox (g, getLocalBounds(), state, statesNum, pressed != 0);
}
