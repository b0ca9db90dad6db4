#include "skin/GFXButton.h"

#include "skin/SkinXml.h"

namespace
{
// A button made in code without a skin: its text in 12-point type with 4 pixels either side, 18 high.
constexpr float textHeight = 12.0f;
constexpr int textPadding = 8, plainSize = 18;
// The repeat of a held button: the first event a second after the press, then ten a second.
constexpr int repeatDelay = 1000, repeatInterval = 100;
constexpr float upGrey = 0.9f, downGrey = 0.4f;
} // namespace

GFXButton::GFXButton (const juce::String& name)
    : juce::Button (name)
{
    setClickingTogglesState (false);
    if (name.isEmpty())
        setSize (plainSize, plainSize);
    else
        setSize (juce::Font (textHeight).getStringWidth (name) + textPadding, plainSize);
}

void GFXButton::setAction (const juce::String& type, int uid, const juce::String& label)
{
    if (type == "onClick")
    {
        clickUid = uid;
        clickLabel = label;
    }
    else if (type == "onClickWithCtrl")
    {
        ctrlClickUid = uid;
        ctrlClickLabel = label;
    }
}

void GFXButton::loadClickEvent (const juce::XmlElement& element)
{
    setTriggeredOnMouseDown (SkinXml::getAttribute (element, "clickEvent", "onRelease") == "onPress");
}

void GFXButton::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                             BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml (element, parameters, events, editor);
    if (SkinXml::isTag (element, "Button"))
    {
        loadClickEvent (element);
        const auto repeat = SkinXml::getAttribute (element, "autorepeat", "no");
        if (repeat == "yes")
            setRepeatSpeed (repeatDelay, repeatInterval, -1);
        else if (repeat == "no")
            setRepeatSpeed (0, 0, -1);
    }
    setBounds (left, top, frameWidth, frameHeight);
}

int GFXButton::eventFor (const juce::ModifierKeys& modifiers) const noexcept
{
    return modifiers.isCtrlDown() ? ctrlClickUid : clickUid;
}

void GFXButton::clicked (const juce::ModifierKeys& modifiers)
{
    const int uid = eventFor (modifiers);
    if (uid != -1)
        sendEvent (uid);
}

void GFXButton::updateTooltip (const juce::ModifierKeys& modifiers)
{
    setTooltip (modifiers.isCtrlDown() && ctrlClickUid != -1 ? ctrlClickLabel : clickLabel);
}

void GFXButton::mouseEnter (const juce::MouseEvent& e)
{
    juce::Button::mouseEnter (e);
    updateTooltip (e.mods);
}

void GFXButton::modifierKeysChanged (const juce::ModifierKeys& modifiers)
{
    juce::Button::modifierKeysChanged (modifiers);
    updateTooltip (modifiers);
}

void GFXButton::paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown)
{
    const bool pressed = isMouseOverButton && isButtonDown;
    if (strip.isValid())
    {
        drawFrame (g, pressed ? 1 : 0);
        return;
    }
    g.fillAll (juce::Colour::greyLevel (pressed ? downGrey : upGrey));
    g.setColour (juce::Colours::black);
    g.drawRect (getLocalBounds());
    g.setColour (isEnabled() ? juce::Colours::black : juce::Colours::grey);
    g.setFont (textHeight);
    g.drawText (getButtonText(), getLocalBounds(), juce::Justification::centred, false);
}
