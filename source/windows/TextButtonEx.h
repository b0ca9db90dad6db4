#pragma once

#include "skin/GFXButton.h"

/** The text button of every dialog: its text between two caps over a stretched middle, with a shine over
    the text. It takes the width of its text, and its pictures from the look and feel. */
class TextButtonEx : public GFXButton
{
public:
    /** `style` chooses the pictures: 0 and 1 the normal size, 2 the large one. */
    TextButtonEx (const juce::String& buttonText, int style = 0);

    void setImages (const juce::Image& left, const juce::Image& middle, const juce::Image& right,
                    const juce::Image& downLeft, const juce::Image& downMiddle, const juce::Image& downRight,
                    const juce::Image& overlay);
    int getStyle() const noexcept { return style; }
    const juce::Font& getFont() const noexcept { return font; }

    /** Changes the text and the width with it. */
    void setText (const juce::String& newText);

    void lookAndFeelChanged() override;
    void paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown) override;

private:
    /** Measures the text and takes the size it gives, keeping the position. */
    void refit();

    juce::Image normalLeft, normalMiddle, normalRight, downLeft, downMiddle, downRight, overlay;
    int textWidth = 0;
    int leftWidth = 10, rightWidth = 10;
    int buttonHeight = 20;
    juce::Font font;
    int style = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TextButtonEx)
};
