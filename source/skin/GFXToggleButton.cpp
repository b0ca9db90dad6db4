#include "skin/GFXToggleButton.h"

#include "common/ResourceLoader.h"
#include "skin/BasePluginEditor.h"
#include "skin/GFXToggleButtonDragGroup.h"
#include "skin/SkinXml.h"

namespace
{
constexpr float outlineGrey = 0.7f, smallestHorizontalScale = 0.7f;
constexpr int captionRoom = 32, textLines = 2;
constexpr float squareShare = 0.75f;
} // namespace

GFXToggleButton::GFXToggleButton (const juce::String& name)
    : juce::Button (name)
{
    setClickingTogglesState (true);
}

GFXToggleButton::~GFXToggleButton()
{
    if (dragGroup != nullptr)
        dragGroup->removeButton (this);
}

void GFXToggleButton::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                   EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    loadPos (element);
    loadSize (element);
    if (!SkinXml::isTag (element, "ToggleButton"))
        return;

    // Values compare exactly: "3d" is no style.
    const auto styleName = SkinXml::getAttribute (element, "style", "2D");
    if (styleName == "2D")
        style = 0;
    else if (styleName == "3D")
        style = 1;

    if (auto* gfx = SkinXml::getChild (element, "gfx"))
    {
        // The frame count follows the style, whatever the skin says.
        juce::Image image;
        const auto key = SkinXml::getAttribute (*gfx, "resource");
        loadResourceImage (key, image);
        if (image.isValid())
        {
            setStrip (image, is3D() ? 4 : 2);
            stripKey = key;
        }
    }

    setTriggeredOnMouseDown (SkinXml::getAttribute (element, "clickEvent", "onRelease") == "onPress");
    setRadioGroupId (SkinXml::getInt (element, "radioGroupId", 0));

    if (SkinXml::hasAttribute (element, "dragGroup") && editor != nullptr)
    {
        dragGroupName = SkinXml::getAttribute (element, "dragGroup");
        dragGroup = &editor->getToggleDragGroups();
        dragGroup->addButton (dragGroupName, this);
    }
}

void GFXToggleButton::updateFromParameter (Parameter* changed)
{
    setToggleState (changed->getBoolValue(), juce::dontSendNotification);
}

void GFXToggleButton::clicked()
{
    if (parameter != nullptr)
    {
        parameter->setBoolValue (getToggleState(), true);
        sendValueChanged();
    }
    if (dragGroup != nullptr)
        dragGroup->setDragValue (dragGroupName, getToggleState());
}

void GFXToggleButton::mouseDown (const juce::MouseEvent& e)
{
    juce::Button::mouseDown (e);
    if (dragGroup != nullptr)
        dragGroup->setDragStart (dragGroupName, e.getScreenX(), e.getScreenY());
}

void GFXToggleButton::mouseDrag (const juce::MouseEvent& e)
{
    juce::Button::mouseDrag (e);
    if (dragGroup != nullptr)
        dragGroup->dragTo (dragGroupName, e.getScreenX(), e.getScreenY());
}

void GFXToggleButton::paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown)
{
    const bool on = getToggleState();
    if (strip.isValid())
    {
        int frame = 0;
        if (isEnabled() && !isBlinkedOff())
            frame =
                framesNum == 4 ? (on ? 2 : 0) + (isMouseOverButton && isButtonDown ? 1 : 0) : (on ? 1 : 0);
        drawFrame (g, frame);
        return;
    }

    const auto area = getLocalBounds();
    g.setColour (juce::Colour::greyLevel (outlineGrey));
    g.drawRect (area);
    g.setColour (juce::Colours::black);
    g.drawFittedText (on ? "On" : "Off", area.withHeight (area.getHeight() / 2), juce::Justification::centred,
                      textLines, smallestHorizontalScale);
    g.drawFittedText (parameter != nullptr ? parameter->getName() : juce::String(),
                      area.withTrimmedTop (area.getHeight() / 2), juce::Justification::centred, textLines,
                      smallestHorizontalScale);
    const float side = squareShare * (float) juce::jmin (area.getHeight() - captionRoom, area.getWidth());
    const auto square = area.toFloat().withSizeKeepingCentre (side, side);
    if (on && isEnabled() && !isBlinkedOff())
        g.fillRect (square);
    else
        g.drawRect (square);
}
