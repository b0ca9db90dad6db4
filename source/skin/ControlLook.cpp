#include "skin/ControlLook.h"

namespace
{
constexpr int boxSide = 16;
constexpr float smallestDot = 2.0f, dotGrowth = 10.0f;
constexpr float lightGrey = 0.9f, pressedGrey = 0.4f;
} // namespace

void ControlLook::drawDotBox (juce::Graphics& g, juce::Rectangle<int> bounds, int index, int count,
                              bool pressed)
{
    const auto box = bounds.withSizeKeepingCentre (boxSide, boxSide).toFloat();
    g.setColour (juce::Colour::greyLevel (pressed ? pressedGrey : lightGrey));
    g.fillRect (box);
    g.setColour (juce::Colours::black);
    g.drawRect (box, 1.0f);
    // One frame alone shows the smallest dot: there is no range to divide.
    const float share = count > 1 ? (float) index / (float) (count - 1) : 0.0f;
    const float diameter = share * dotGrowth + smallestDot;
    g.fillEllipse (box.withSizeKeepingCentre (diameter, diameter));
}
