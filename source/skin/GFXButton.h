#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A button that only raises events: its click event, or with Ctrl down its Ctrl-click event (never the
    plain one in its place). It may repeat while held, and its tooltip always tells what a click would do
    now, following Ctrl as it goes down and up. */
class GFXButton : public BaseGFXController, public juce::Button
{
public:
    explicit GFXButton (const juce::String& name = {});

    void setAction (const juce::String& type, int uid, const juce::String& label) override;
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;

    int getClickUid() const noexcept { return clickUid; }
    int getCtrlClickUid() const noexcept { return ctrlClickUid; }

    /** The event of a completed click with these keys, or -1 for none. */
    int eventFor (const juce::ModifierKeys& modifiers) const noexcept;

    using juce::Button::clicked;
    void clicked (const juce::ModifierKeys& modifiers) override;
    void mouseEnter (const juce::MouseEvent& e) override;
    void modifierKeysChanged (const juce::ModifierKeys& modifiers) override;
    void paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown) override;

protected:
    /** Reads the trigger: "onPress" fires on mouse down, anything else on mouse up. */
    void loadClickEvent (const juce::XmlElement& element);
    void updateTooltip (const juce::ModifierKeys& modifiers);

private:
    int clickUid = -1, ctrlClickUid = -1;
    juce::String clickLabel, ctrlClickLabel;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXButton)
};
