#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A button that shows one of several states and raises events: one frame per state, or in "3D" two
    (up, pressed). Its state comes from its parameter or from its owner, never from its own clicks; the
    MIDI learn button is one. */
class GFXMultiStateButton : public BaseGFXController, public juce::Button, private juce::Timer
{
public:
    explicit GFXMultiStateButton (const juce::String& name = {});

    void setAction (const juce::String& type, int uid, const juce::String& label) override;
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void updateFromParameter (Parameter* changed) override;
    void frameSizeChanged() override { setSize (frameWidth, frameHeight); }
    void positionChanged() override { setTopLeftPosition (left, top); }
    void blinkChanged() override { repaint(); }

    /** Shows a state; repaints on a change. */
    void setState (int newState);
    int getState() const noexcept { return state; }
    int getNumStates() const noexcept { return statesNum; }
    /** Shows the state for a while, then goes back to 0. */
    void showStateFor (int milliseconds) { startTimer (milliseconds); }

    using juce::Button::clicked;
    void clicked (const juce::ModifierKeys& modifiers) override;
    void paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown) override;

private:
    void timerCallback() override;

    int style = 0; // 0 "2D", 1 "3D"
    int state = 0;
    int statesNum = 2;
    int clickUid = -1, ctrlClickUid = -1;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXMultiStateButton)
};
