#pragma once

#include "skin/GFXSlider.h"

/** A knob for a continuous parameter: turned by a vertical drag, its frame worked out in single precision. */
class GFXKnob : public GFXSlider
{
public:
    explicit GFXKnob (const juce::String& name = {});

    int getFrame() const override;
    void paint (juce::Graphics& g) override;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXKnob)
};
