#pragma once

#include "skin/GFXSlider.h"

/** A stepped control: a rotary switch, or a lever that snaps to the pointer. It moves in steps of 0.005;
    the parameter rounds to its own steps and the frame shown follows the parameter's answer, while the
    drag keeps running underneath from where it began. */
class GFXSwitch : public GFXSlider
{
public:
    enum Style
    {
        vertical = 0,
        horizontal = 1,
        rotary = 2
    };

    explicit GFXSwitch (const juce::String& name = {});

    /** Reads the style, compared without regard to case; an unknown one keeps the rotary behaviour. */
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    int getFrame() const override;
    void paint (juce::Graphics& g) override;
    int getStyle() const noexcept { return style; }

private:
    int style = rotary;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXSwitch)
};
