#include "windows/WindowComponent.h"

#include "common/EmbeddedFonts.h"
#include "common/ResourceLoader.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
// The window's measures: its border, the inset of its content, the title bar's height and place, and the
// smallest window there is.
constexpr int borderInset = 3, contentInset = 5, titleBarHeight = 33, titleBarMargin = 8, titleBarDepth = 28;
constexpr int closeButtonMargin = 10, iconGap = 6, titleGaps = 12;
constexpr int smallestWidth = 250, smallestHeight = 120;
constexpr float cornerRadius = 8.0f, borderThickness = 3.0f, titleCorner = 4.0f, titleOutlineCorner = 5.0f;
constexpr float titleHeight = 15.0f;
} // namespace

WindowComponent::WindowComponent()
    : titleFont (EmbeddedFonts::make (titleHeight, true))
{
    icon = loadCachedResourceImage ("TitleDisc.png");
    setShadowImages (loadCachedResourceImage ("ShadowTop.png"), loadCachedResourceImage ("ShadowBottom.png"),
                     loadCachedResourceImage ("ShadowLeft.png"), loadCachedResourceImage ("ShadowRight.png"));
    closeButton.addListener (this);
    addAndMakeVisible (closeButton);
}

WindowComponent::~WindowComponent() { closeButton.removeListener (this); }

void WindowComponent::setTitle (const juce::String& newTitle)
{
    if (newTitle == title)
        return;
    title = newTitle;
    if (hasTitleBar)
        repaint();
}

void WindowComponent::setCornerStyle (int style)
{
    if (style == cornerStyle)
        return;
    cornerStyle = style;
    repaint();
}

void WindowComponent::setBorderVisible (bool shouldBeVisible)
{
    if (shouldBeVisible == hasBorder)
        return;
    hasBorder = shouldBeVisible;
    repaint();
}

void WindowComponent::setShadowSide (int side)
{
    if (side == shadowSide)
        return;
    shadowSide = side;
    repaint();
}

void WindowComponent::setTitleBarVisible (bool shouldBeVisible)
{
    if (shouldBeVisible == hasTitleBar)
        return;
    hasTitleBar = shouldBeVisible;
    closeButton.setVisible (hasTitleBar);
    repaint();
}

void WindowComponent::setShadowImages (const juce::Image& top, const juce::Image& bottom,
                                       const juce::Image& left, const juce::Image& right)
{
    topShadowImage = top;
    bottomShadowImage = bottom;
    leftShadowImage = left;
    rightShadowImage = right;
}

const juce::Image& WindowComponent::shadowImage (int side) const
{
    return side == topShadow      ? topShadowImage
           : side == bottomShadow ? bottomShadowImage
           : side == leftShadow   ? leftShadowImage
                                  : rightShadowImage;
}

juce::Rectangle<int> WindowComponent::getContentArea() const
{
    auto area = getLocalBounds();
    if (hasBorder)
        area = area.reduced (borderInset); // held at a size of 0 or more
    if (shadowSide == topShadow)
        area.removeFromTop (topShadowImage.getHeight());
    else if (shadowSide == bottomShadow)
        area.removeFromBottom (bottomShadowImage.getHeight());
    else if (shadowSide == leftShadow)
        area.removeFromLeft (leftShadowImage.getWidth());
    else if (shadowSide == rightShadow)
        area.removeFromRight (rightShadowImage.getWidth());
    area = area.reduced (contentInset);
    if (hasTitleBar)
        area.removeFromTop (titleBarHeight);
    return area;
}

void WindowComponent::setContentSize (int width, int height)
{
    if (hasBorder)
    {
        width += 2 * borderInset;
        height += 2 * borderInset;
    }
    if (shadowSide == topShadow || shadowSide == bottomShadow)
        height += shadowImage (shadowSide).getHeight();
    else if (shadowSide == leftShadow || shadowSide == rightShadow)
        width += shadowImage (shadowSide).getWidth();
    width += 2 * contentInset;
    height += 2 * contentInset;
    if (hasTitleBar)
        height += titleBarHeight;
    setSize (juce::jmax (smallestWidth, width), juce::jmax (smallestHeight, height));
}

void WindowComponent::resized()
{
    closeButton.setTopLeftPosition (getWidth() - closeButtonMargin - closeButton.getWidth(), titleBarMargin);
    titleBarArea = { titleBarMargin, titleBarMargin, getWidth() - 2 * titleBarMargin, titleBarDepth };
    titleTextArea =
        titleBarArea.withTrimmedLeft (icon.getWidth() + iconGap)
            .withWidth (titleBarArea.getWidth() - (closeButton.getWidth() + icon.getWidth() + titleGaps));
}

void WindowComponent::paint (juce::Graphics& g)
{
    const auto bounds = getLocalBounds().toFloat();
    g.setColour (findColour (DefaultLookAndFeel::windowBodyColourId));
    if (cornerStyle == 1)
        g.fillRoundedRectangle (hasBorder ? bounds.reduced (1.0f) : bounds, cornerRadius);
    else
        g.fillRect (bounds);

    if (shadowSide != noShadow)
    {
        const auto& strip = shadowImage (shadowSide);
        const int w = getWidth(), h = getHeight();
        if (shadowSide == topShadow)
            g.drawImage (strip, 0, 0, w, strip.getHeight(), 0, 0, strip.getWidth(), strip.getHeight());
        else if (shadowSide == bottomShadow)
            g.drawImage (strip, 0, h - strip.getHeight(), w, strip.getHeight(), 0, 0, strip.getWidth(),
                         strip.getHeight());
        else if (shadowSide == leftShadow)
            g.drawImage (strip, 0, 0, strip.getWidth(), h, 0, 0, strip.getWidth(), strip.getHeight());
        else
            g.drawImage (strip, w - strip.getWidth(), 0, strip.getWidth(), h, 0, 0, strip.getWidth(),
                         strip.getHeight());
    }

    if (hasBorder)
    {
        g.setColour (findColour (DefaultLookAndFeel::windowBorderColourId));
        if (cornerStyle == 1)
            g.drawRoundedRectangle (bounds, cornerRadius, borderThickness);
        else
            g.drawRect (bounds, borderThickness);
    }

    if (hasTitleBar)
    {
        g.setColour (findColour (DefaultLookAndFeel::titleBarColourId));
        g.fillRoundedRectangle (titleBarArea.toFloat().reduced (1.0f), titleCorner);
        g.setColour (findColour (DefaultLookAndFeel::titleTextColourId));
        g.drawRoundedRectangle (titleBarArea.toFloat(), titleOutlineCorner, 1.0f);
        g.drawImageAt (icon, titleBarArea.getX() + 3, titleBarArea.getY() + 2);
        g.setFont (titleFont);
        g.drawText (title, titleTextArea, juce::Justification::centredLeft, false);
    }
}

void WindowComponent::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        look->setButtonIcon (closeButton, DefaultLookAndFeel::closeIcon, 1);
    resized();
}

void WindowComponent::buttonClicked (juce::Button* button)
{
    if (button == &closeButton)
        hide();
}
