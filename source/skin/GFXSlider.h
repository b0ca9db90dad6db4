#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** What a knob and a switch share: a slider whose face is a frame strip. All mouse work is the slider's
    own (a drag of 250 pixels over the range, the wheel, Ctrl for the fine drag); the control copies the
    value to and from its parameter and picks the frame. Its drags, wheel steps included, are the host's
    gestures. */
class GFXSlider : public BaseGFXController, public juce::Slider
{
public:
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    /** Shows the parameter's value without a notification of any kind. */
    void updateFromParameter (Parameter* changed) override;

    void startedDragging() override { beginGesture(); }
    void stoppedDragging() override { endGesture(); }
    void valueChanged() override;
    void paint (juce::Graphics& g) override;

    /** The frame the present value shows; 0 while the control or a parent is disabled. */
    virtual int getFrame() const = 0;

protected:
    GFXSlider (const juce::String& name, double interval);

    /** The plain face of a control without a strip: its value over its name. */
    void paintDiagnosticFace (juce::Graphics& g, const juce::String& valueText, float fontHeight);
};
