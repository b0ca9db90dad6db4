#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The sign of a numeric display: frame 0 of its strip no sign, frame 1 a minus. */
class NumericDisplaySign final : public juce::Component
{
public:
    static constexpr int stripFrames = 2;

    NumericDisplaySign (const juce::Image& strip, int width, int height);

    void setNegative (bool shouldBeNegative);
    bool isNegative() const noexcept { return negative; }
    void paint (juce::Graphics& g) override;

private:
    juce::Image strip;
    bool negative = false;
};
