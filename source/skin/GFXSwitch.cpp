#include "skin/GFXSwitch.h"

#include "skin/SkinXml.h"

#include <cmath>

namespace
{
constexpr double stepInterval = 0.005;
}

GFXSwitch::GFXSwitch (const juce::String& name)
    : GFXSlider (name, stepInterval)
{
}

void GFXSwitch::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                             BasePluginEditor* editor)
{
    GFXSlider::loadFromXml (element, parameters, events, editor);
    const auto name = SkinXml::getAttribute (element, "style");
    const int chosen = name.equalsIgnoreCase ("Vertical")     ? vertical
                       : name.equalsIgnoreCase ("Horizontal") ? horizontal
                       : name.equalsIgnoreCase ("Rotary")     ? rotary
                                                              : -1;
    if (chosen < 0)
        return;
    style = chosen;
    setSliderStyle (style == vertical     ? LinearVertical
                    : style == horizontal ? LinearHorizontal
                                          : RotaryVerticalDrag);
    repaint();
}

int GFXSwitch::getFrame() const
{
    if (!isEnabled())
        return 0;
    const double t = (getValue() - getMinimum()) / (getMaximum() - getMinimum());
    return (int) std::floor ((double) (framesNum - 1) * t + 0.5);
}

void GFXSwitch::paint (juce::Graphics& g)
{
    if (strip.isValid())
        GFXSlider::paint (g);
    else
        paintDiagnosticFace (g, juce::String::formatted ("%.9g", getValue()), 0.0f);
}
