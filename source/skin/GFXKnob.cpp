#include "skin/GFXKnob.h"

#include <cmath>

namespace
{
constexpr float diagnosticFontHeight = 13.0f;
}

GFXKnob::GFXKnob (const juce::String& name)
    : GFXSlider (name, 0.0)
{
}

int GFXKnob::getFrame() const
{
    if (!isEnabled())
        return 0;
    const float t = (float) ((getValue() - getMinimum()) / (getMaximum() - getMinimum()));
    return (int) std::floor ((float) (framesNum - 1) * t + 0.5f);
}

void GFXKnob::paint (juce::Graphics& g)
{
    if (strip.isValid())
        GFXSlider::paint (g);
    else
        paintDiagnosticFace (g, juce::String::formatted ("%f", getValue()), diagnosticFontHeight);
}
