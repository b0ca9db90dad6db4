#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

class GFXToggleButtonDragGroup;

/** A toggle bound to a boolean parameter, drawn from 2 frames (off, on) or in "3D" from 4 (off up, off
    pressed, on up, on pressed). It raises no events, and may belong to a drag group. */
class GFXToggleButton : public BaseGFXController, public juce::Button
{
public:
    explicit GFXToggleButton (const juce::String& name = {});
    ~GFXToggleButton() override;

    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void updateFromParameter (Parameter* changed) override;
    void frameSizeChanged() override { setSize (frameWidth, frameHeight); }
    void positionChanged() override { setTopLeftPosition (left, top); }
    void blinkChanged() override { repaint(); }

    bool is3D() const noexcept { return style == 1; }

    using juce::Button::clicked;
    void clicked() override;
    void mouseDown (const juce::MouseEvent& e) override;
    void mouseDrag (const juce::MouseEvent& e) override;
    void paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown) override;

private:
    int style = 0; // 0 "2D", 1 "3D"
    GFXToggleButtonDragGroup* dragGroup = nullptr;
    juce::String dragGroupName;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXToggleButton)
};
