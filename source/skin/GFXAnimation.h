#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Shows one frame of a strip and takes no input: the skin's meters and lamps. The frame comes from the
    bound parameter or from its owner, and a repaint happens only when the frame changes. An owner may
    also start a one-shot timer that brings the frame back to rest. */
class GFXAnimation : public BaseGFXController, public juce::Component, private juce::Timer
{
public:
    explicit GFXAnimation (const juce::String& name = {});
    ~GFXAnimation() override;

    /** Shows the frame of a normalised value; repaints only if it differs from the one on show. */
    void setFrameValue (float value);
    /** Shows a frame directly; repaints only on a change. */
    void setFrame (int frame);
    int getCurrentFrame() const noexcept { return currentFrame; }

    /** Goes back to the rest frame `milliseconds` after the last call. */
    void returnToRestAfter (int milliseconds) { startTimer (milliseconds); }
    void setRestFrame (int frame) noexcept { restFrame = frame; }

    void updateFromParameter (Parameter* changed) override;
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void frameSizeChanged() override;
    void positionChanged() override;
    void blinkChanged() override;
    void paint (juce::Graphics& g) override;

private:
    void timerCallback() override;

    int currentFrame = 0;
    int restFrame = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXAnimation)
};
