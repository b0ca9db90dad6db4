#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** One digit of a numeric display: frame 0 of its strip unlit, frame n + 1 the digit n. */
class NumericDisplayDigit final : public juce::Component
{
public:
    static constexpr int stripFrames = 11;

    NumericDisplayDigit (const juce::Image& strip, int width, int height, bool isInteger);

    /** Shows `digit`, or nothing while `blank`; repaints on a change. */
    void show (int digit, bool blank);
    int getDigit() const noexcept { return digit; }
    bool isBlank() const noexcept { return blank; }
    bool isIntegerDigit() const noexcept { return isInteger; }

    void paint (juce::Graphics& g) override;

private:
    juce::Image strip;
    bool isInteger;
    bool blank = true;
    int digit = 0;
};
