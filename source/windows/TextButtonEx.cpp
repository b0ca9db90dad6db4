#include "windows/TextButtonEx.h"

#include "windows/DefaultLookAndFeel.h"

namespace
{
constexpr float disabledOpacity = 0.5f;
}

TextButtonEx::TextButtonEx (const juce::String& buttonText, int styleToUse)
    : GFXButton (buttonText)
    , style (styleToUse)
{
    setButtonText (buttonText);
    refit();
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        look->setTextButtonImages (*this, style);
}

void TextButtonEx::setImages (const juce::Image& leftToUse, const juce::Image& middle,
                              const juce::Image& right, const juce::Image& downLeftToUse,
                              const juce::Image& downMiddleToUse, const juce::Image& downRightToUse,
                              const juce::Image& overlayToUse)
{
    normalLeft = leftToUse;
    normalMiddle = middle;
    normalRight = right;
    downLeft = downLeftToUse;
    downMiddle = downMiddleToUse;
    downRight = downRightToUse;
    overlay = overlayToUse;
    leftWidth = leftToUse.isValid() ? leftToUse.getWidth() : 0;
    rightWidth = right.isValid() ? right.getWidth() : 0;
    buttonHeight = leftToUse.isValid() ? leftToUse.getHeight() : 0;
    refit();
}

void TextButtonEx::setText (const juce::String& newText)
{
    setButtonText (newText);
    refit();
}

void TextButtonEx::refit()
{
    textWidth = (int) font.getStringWidthFloat (getButtonText());
    const int width = leftWidth + textWidth + rightWidth;
    if (width != getWidth() || buttonHeight != getHeight())
        setSize (width, buttonHeight);
}

void TextButtonEx::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        font = look->getBoldFont();
        refit();
        look->setTextButtonImages (*this, style);
    }
}

void TextButtonEx::paintButton (juce::Graphics& g, bool isMouseOverButton, bool isButtonDown)
{
    if (normalLeft.isNull())
    {
        GFXButton::paintButton (g, isMouseOverButton, isButtonDown);
        return;
    }
    // A disabled button fades as a whole: caps, middle, text and overlay first drawn together, so that
    // the overlay doesn't show through the faded middle.
    const bool faded = !isEnabled();
    if (faded)
        g.beginTransparencyLayer (disabledOpacity);
    const bool down = isButtonDown;
    const auto& leftCap = down ? downLeft : normalLeft;
    const auto& middle = down ? downMiddle : normalMiddle;
    const auto& rightCap = down ? downRight : normalRight;
    g.drawImageAt (leftCap, 0, 0);
    g.drawImage (middle, leftWidth, 0, textWidth, buttonHeight, 0, 0, middle.getWidth(), middle.getHeight());
    g.drawImageAt (rightCap, leftWidth + textWidth, 0);
    g.setFont (font);
    g.drawText (getButtonText(), leftWidth, 0, textWidth, getHeight(), juce::Justification::centred, false);
    g.drawImage (overlay, leftWidth, 0, textWidth, buttonHeight, 0, 0, overlay.getWidth(),
                 overlay.getHeight());
    if (faded)
        g.endTransparencyLayer();
}
