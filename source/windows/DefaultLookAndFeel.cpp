#include "windows/DefaultLookAndFeel.h"

#include "common/EmbeddedFonts.h"
#include "common/ResourceLoader.h"
#include "windows/TextButtonEx.h"

namespace
{
// The family's text size and metrics.
constexpr float textHeight = 13.0f;
constexpr int statusBarHeight = 16;
constexpr int checkBoxGap = 5, radioTitleInset = 13, radioTitlePadding = 4, radioButtonInset = 6;
constexpr int radioVerticalMargin = 2, radioRowHeight = 20, radioLabelGap = 6;
constexpr float radioCornerRadius = 4.0f;
constexpr int tabDepth = 23, tabIndent = 8, tabOverlap = 4, tabTextPadding = 30;
constexpr int scrollbarWidth = 13;
constexpr float scrollbarCorner = 4.0f, disabledAlpha = 0.5f, backTabAlpha = 0.66f;
constexpr int tooltipPadX = 12, tooltipPadY = 7;
constexpr float tooltipCorner = 3.5f, tooltipOutlineCorner = 4.0f, tooltipOutline = 1.2f;
// The icon tiles: 27 pixels a side in the normal set, 43 in the large one; text button frames likewise.
constexpr int smallIconSide = 27, largeIconSide = 43, largeSize = 2;
// JUCE's own image button already weakens a disabled picture; this brings it back to the family's level.
constexpr float disabledImageBoost = 1.4f;
const juce::Colour plainGrey (0xff808080), resizerHighlight (0xffccff52), titleBarFill (0xffcbcbcb);
constexpr float titleTextShare = 0.65f;

/** The picture of icon `index` at a size, cut from its strip. */
juce::Image iconImage (int index, int size, bool down)
{
    const int side = size == largeSize ? largeIconSide : smallIconSide;
    const auto strip =
        loadCachedResourceImage ("Icons" + juce::String (side) + (down ? "Down" : "") + ".png");
    if (strip.isNull())
        return {};
    return strip.getClippedImage ({ 0, index * side, side, side });
}

struct PaletteEntry
{
    int id;
    juce::uint32 argb;
};

const PaletteEntry palette[] = {
    { juce::Slider::rotarySliderFillColourId, 0xff808080 },
    { juce::Slider::rotarySliderOutlineColourId, 0xff000000 },
    { juce::TooltipWindow::outlineColourId, 0xff444444 },
    { juce::TooltipWindow::textColourId, 0xff000000 },
    { juce::ScrollBar::thumbColourId, 0xff6e6e6e },
    { juce::ScrollBar::trackColourId, 0xffcccccc },
    { DefaultLookAndFeel::panelColourId, 0xffe3e3e3 },
    { DefaultLookAndFeel::windowBodyColourId, 0xffc5c5c5 },
    { DefaultLookAndFeel::windowBorderColourId, 0xff444444 },
    { DefaultLookAndFeel::titleBarColourId, 0xff444444 },
    { DefaultLookAndFeel::titleTextColourId, 0xffffffff },
    { DefaultLookAndFeel::titleButtonColourId, 0xffffffff },
    { DefaultLookAndFeel::listBackgroundColourId, 0xffc5c5c5 },
    { DefaultLookAndFeel::listRowColourId, 0xffe3e3e3 },
    { DefaultLookAndFeel::listLineColourId, 0xffffffff },
    { DefaultLookAndFeel::listAlternateRowColourId, 0xffe3e3e3 },
    { DefaultLookAndFeel::listTextColourId, 0xff000000 },
    { DefaultLookAndFeel::listSelectedRowColourId, 0xffadadad },
    { DefaultLookAndFeel::listSelectedTextColourId, 0xffffffff },
    { DefaultLookAndFeel::listOutlineColourId, 0xff5b5b5b },
    { DefaultLookAndFeel::listHighlightColourId, 0xffffffff },
    { DefaultLookAndFeel::keyboardOutlineColourId, 0xff000000 },
    { DefaultLookAndFeel::keyboardWhiteKeyColourId, 0xffffffff },
    { DefaultLookAndFeel::keyboardBlackKeyColourId, 0xff000000 },
    { DefaultLookAndFeel::keyboardKeyOverColourId, 0xffb2b2b2 }, // grey level 0.7
    { DefaultLookAndFeel::keyboardKeyDownColourId, 0xff7f7f7f }, // grey level 0.5
    { DefaultLookAndFeel::pathFieldColourId, 0xffe3e3e3 },
    { DefaultLookAndFeel::pathTextColourId, 0xff000000 },
    { DefaultLookAndFeel::pathOutlineColourId, 0xffffffff },
    { DefaultLookAndFeel::tabPageColourId, 0xffc5c5c5 },
    { DefaultLookAndFeel::frontTabTextColourId, 0xff000000 },
    { DefaultLookAndFeel::tabOutlineColourId, 0xff5b5b5b },
    { DefaultLookAndFeel::browserBackgroundColourId, 0xffc5c5c5 },
    { DefaultLookAndFeel::browserListColourId, 0xffe3e3e3 },
    { DefaultLookAndFeel::browserLineColourId, 0xffffffff },
    { DefaultLookAndFeel::browserAlternateRowColourId, 0xffe3e3e3 },
    { DefaultLookAndFeel::browserTextColourId, 0xff000000 },
    { DefaultLookAndFeel::browserSelectedRowColourId, 0xffadadad },
    { DefaultLookAndFeel::browserSelectedTextColourId, 0xffffffff },
    { DefaultLookAndFeel::browserOutlineColourId, 0xff5b5b5b },
    { DefaultLookAndFeel::browserHighlightColourId, 0xffffffff },
    { DefaultLookAndFeel::statusBarBackgroundColourId, 0xff444444 },
    { DefaultLookAndFeel::statusBarTextColourId, 0xffffffff },
    { DefaultLookAndFeel::aboutBodyColourId, 0xff000000 },
    { DefaultLookAndFeel::aboutBorderColourId, 0xffffffff },
    { DefaultLookAndFeel::aboutTextColourId, 0xffffffff },
    { DefaultLookAndFeel::aboutLinkColourId, 0xffffff00 },
};
} // namespace

DefaultLookAndFeel::DefaultLookAndFeel()
    : normalFont (EmbeddedFonts::make (textHeight))
    , boldFont (EmbeddedFonts::make (textHeight, true))
{
    for (const auto& entry : palette)
        setColour (entry.id, juce::Colour (entry.argb));

    // The scroll bar's arrow, pointing up, and its three turns about the middle of its square.
    arrowUp.startNewSubPath (4.0f, 11.0f);
    arrowUp.lineTo (4.0f, 8.0f);
    arrowUp.lineTo (1.75f, 8.0f);
    arrowUp.lineTo (6.5f, 1.6f);
    arrowUp.lineTo (11.25f, 8.0f);
    arrowUp.lineTo (9.0f, 8.0f);
    arrowUp.lineTo (9.0f, 11.0f);
    arrowUp.closeSubPath();
    constexpr float centre = 6.5f;
    const float quarter = juce::MathConstants<float>::halfPi;
    arrowRight = arrowUp;
    arrowRight.applyTransform (juce::AffineTransform::rotation (quarter, centre, centre));
    arrowDown = arrowUp;
    arrowDown.applyTransform (juce::AffineTransform::rotation (2.0f * quarter, centre, centre));
    arrowLeft = arrowUp;
    arrowLeft.applyTransform (juce::AffineTransform::rotation (3.0f * quarter, centre, centre));
}

juce::Image DefaultLookAndFeel::getCheckBoxOffImage() { return loadCachedResourceImage ("CheckOff.png"); }
juce::Image DefaultLookAndFeel::getCheckBoxOnImage() { return loadCachedResourceImage ("CheckOn.png"); }
juce::Font DefaultLookAndFeel::getCheckBoxFont() { return normalFont; }
int DefaultLookAndFeel::getCheckBoxGap() { return checkBoxGap; }
juce::Image DefaultLookAndFeel::getRadioOffImage() { return loadCachedResourceImage ("RadioOff.png"); }
juce::Image DefaultLookAndFeel::getRadioOnImage() { return loadCachedResourceImage ("RadioOn.png"); }
juce::Font DefaultLookAndFeel::getRadioTitleFont() { return boldFont; }
juce::Font DefaultLookAndFeel::getRadioLabelFont() { return normalFont; }
int DefaultLookAndFeel::getRadioTitleInset() { return radioTitleInset; }
int DefaultLookAndFeel::getRadioTitlePadding() { return radioTitlePadding; }
int DefaultLookAndFeel::getRadioButtonInset() { return radioButtonInset; }
int DefaultLookAndFeel::getRadioVerticalMargin() { return radioVerticalMargin; }
int DefaultLookAndFeel::getRadioRowHeight() { return radioRowHeight; }
float DefaultLookAndFeel::getRadioCornerRadius() { return radioCornerRadius; }
int DefaultLookAndFeel::getRadioLabelGap() { return radioLabelGap; }
juce::Font DefaultLookAndFeel::getTabFont() { return boldFont; }
int DefaultLookAndFeel::getTabDepth() { return tabDepth; }
int DefaultLookAndFeel::getTabIndent() { return tabIndent; }
juce::Font DefaultLookAndFeel::getStatusBarFont() { return normalFont; }
int DefaultLookAndFeel::getStatusBarHeight() { return statusBarHeight; }
int DefaultLookAndFeel::getDefaultIconSize() { return 1; }
int DefaultLookAndFeel::getDefaultTextButtonSize() { return 1; }

juce::ImageButton* DefaultLookAndFeel::createIconButton (const juce::String& name, int icon, int size)
{
    if (!juce::isPositiveAndBelow (icon, (int) numIcons))
        return nullptr;
    auto* button = new juce::ImageButton (name);
    setButtonIcon (*button, icon, size);
    return button;
}

juce::ImageButton* DefaultLookAndFeel::createIconButton (const juce::String& name, int icon)
{
    return createIconButton (name, icon, getDefaultIconSize());
}

void DefaultLookAndFeel::setButtonIcon (juce::ImageButton& button, int icon, int size)
{
    if (!juce::isPositiveAndBelow (icon, (int) numIcons))
        return;
    const auto up = iconImage (icon, size, false), down = iconImage (icon, size, true);
    button.setImages (false, false, true, up, 1.0f, {}, {}, 1.0f, {}, down, 1.0f, {});
    button.setSize (up.getWidth(), up.getHeight());
}

TextButtonEx* DefaultLookAndFeel::createTextButton (const juce::String& text, int size)
{
    auto* button = new TextButtonEx (text, 0);
    setTextButtonImages (*button, size);
    return button;
}

TextButtonEx* DefaultLookAndFeel::createTextButton (const juce::String& text)
{
    return createTextButton (text, getDefaultTextButtonSize());
}

void DefaultLookAndFeel::setTextButtonImages (TextButtonEx& button, int size)
{
    if (size < 0 || size > largeSize)
        return;
    const juce::String set = size == largeSize ? "LargeButton" : "Button";
    auto image = [&set] (const char* part) { return loadCachedResourceImage (set + part + ".png"); };
    button.setImages (image ("Left"), image ("Middle"), image ("Right"), image ("DownLeft"),
                      image ("DownMiddle"), image ("DownRight"), image ("Overlay"));
}

int DefaultLookAndFeel::getDefaultScrollbarWidth() { return scrollbarWidth; }
int DefaultLookAndFeel::getScrollbarButtonSize (juce::ScrollBar&) { return scrollbarWidth; }

void DefaultLookAndFeel::drawScrollbarButton (juce::Graphics& g, juce::ScrollBar& bar, int, int,
                                              int buttonDirection, bool, bool isMouseOverButton, bool)
{
    auto colour = bar.findColour (juce::ScrollBar::thumbColourId);
    if (!bar.isEnabled())
        colour = colour.withMultipliedAlpha (disabledAlpha);
    else if (isMouseOverButton)
        colour = juce::Colours::black;
    g.setColour (colour);
    const juce::Path* arrows[] = { &arrowUp, &arrowRight, &arrowDown, &arrowLeft };
    g.fillPath (*arrows[juce::jlimit (0, 3, buttonDirection)]);
}

void DefaultLookAndFeel::drawScrollbar (juce::Graphics& g, juce::ScrollBar& bar, int x, int y, int width,
                                        int height, bool isScrollbarVertical, int thumbStartPosition,
                                        int thumbSize, bool isMouseOver, bool)
{
    const auto background = bar.findColour (juce::ScrollBar::backgroundColourId);
    if (!background.isTransparent())
        g.fillAll (background);
    const bool enabled = bar.isEnabled();
    g.setColour (bar.findColour (juce::ScrollBar::trackColourId).withAlpha (enabled ? 1.0f : disabledAlpha));
    g.fillRoundedRectangle (juce::Rectangle<int> (x, y, width, height).toFloat(), scrollbarCorner);
    auto thumb = bar.findColour (juce::ScrollBar::thumbColourId);
    if (!enabled)
        thumb = thumb.withAlpha (disabledAlpha);
    else if (isMouseOver)
        thumb = juce::Colours::black;
    g.setColour (thumb);
    const auto area = isScrollbarVertical
                          ? juce::Rectangle<int> (x + 2, thumbStartPosition, width - 4, thumbSize)
                          : juce::Rectangle<int> (thumbStartPosition, y + 2, thumbSize, height - 4);
    g.fillRoundedRectangle (area.toFloat(), scrollbarCorner);
}

void DefaultLookAndFeel::drawTreeviewPlusMinusBox (juce::Graphics& g, const juce::Rectangle<float>& area,
                                                   juce::Colour, bool isOpen, bool)
{
    const float x = area.getX(), y = area.getY(), w = area.getWidth(), h = area.getHeight();
    juce::Path triangle;
    if (isOpen)
        triangle.addTriangle (x + 3.0f, y + 4.0f, x + w - 1.0f, y + 4.0f, x + w / 2.0f + 1.0f, y + h - 4.0f);
    else
        triangle.addTriangle (x + 4.0f, y + 3.0f, x + 4.0f, y + h - 3.0f, x + w - 2.0f, y + h / 2.0f);
    g.setColour (plainGrey);
    g.fillPath (triangle);
}

void DefaultLookAndFeel::drawTextEditorOutline (juce::Graphics& g, int width, int height, juce::TextEditor&)
{
    g.drawRect (0, 0, width, height, 1);
}

void DefaultLookAndFeel::positionComboBoxText (juce::ComboBox& box, juce::Label& label)
{
    // Room on the right for the box's arrow.
    label.setBounds (0, 0, box.getWidth() - 20, box.getHeight());
}

juce::Rectangle<int> DefaultLookAndFeel::getTooltipBounds (const juce::String& tipText,
                                                           juce::Point<int> screenPos,
                                                           juce::Rectangle<int> parentArea)
{
    const int w = (int) normalFont.getStringWidthFloat (tipText) + tooltipPadX;
    const int h = (int) normalFont.getHeight() + tooltipPadY;
    // Below and right of the pointer where there is room, else above or left of it.
    const int x =
        screenPos.x > parentArea.getCentreX() ? screenPos.x - (w + tooltipPadX) : screenPos.x + tooltipPadX;
    const int y =
        screenPos.y > parentArea.getCentreY() ? screenPos.y - (h + tooltipPadY) : screenPos.y + tooltipPadY;
    return juce::Rectangle<int> (x, y, w, h).constrainedWithin (parentArea);
}

void DefaultLookAndFeel::drawTooltip (juce::Graphics& g, const juce::String& text, int width, int height)
{
    const auto area = juce::Rectangle<int> (width, height).toFloat();
    g.setColour (findColour (juce::TooltipWindow::backgroundColourId));
    g.fillRoundedRectangle (area.reduced (1.0f), tooltipCorner);
    g.setColour (findColour (juce::TooltipWindow::outlineColourId));
    g.drawRoundedRectangle (area, tooltipOutlineCorner, tooltipOutline);
    g.setFont (normalFont);
    g.setColour (findColour (juce::TooltipWindow::textColourId));
    g.drawText (text, area, juce::Justification::centred, false);
}

void DefaultLookAndFeel::drawCornerResizer (juce::Graphics& g, int w, int h, bool isMouseOver,
                                            bool isMouseDragging)
{
    const bool active = isMouseOver || isMouseDragging;
    juce::Path triangle;
    triangle.addTriangle (4.0f, (float) h - 3.0f, (float) w - 3.0f, 4.0f, (float) w - 3.0f, (float) h - 3.0f);
    g.setColour (active ? resizerHighlight : plainGrey);
    g.fillPath (triangle);
    g.setColour (active ? juce::Colours::black : plainGrey);
    g.strokePath (triangle, juce::PathStrokeType (1.0f));
}

void DefaultLookAndFeel::drawDocumentWindowTitleBar (juce::DocumentWindow& window, juce::Graphics& g, int,
                                                     int h, int titleSpaceX, int titleSpaceW,
                                                     const juce::Image*, bool)
{
    g.fillAll (titleBarFill);
    g.setColour (juce::Colours::black);
    g.setFont (normalFont.withHeight ((float) h * titleTextShare));
    g.drawText (window.getName(), titleSpaceX, 0, titleSpaceW, h, juce::Justification::centredLeft, true);
}

void DefaultLookAndFeel::positionDocumentWindowButtons (juce::DocumentWindow&, int, int, int titleBarW,
                                                        int titleBarH, juce::Button*, juce::Button*,
                                                        juce::Button* closeButton, bool)
{
    if (closeButton != nullptr)
        closeButton->setTopLeftPosition (titleBarW - closeButton->getWidth() - 1,
                                         (titleBarH - closeButton->getHeight()) / 2 + 3);
}

void DefaultLookAndFeel::drawImageButton (juce::Graphics& g, juce::Image* image, int imageX, int imageY,
                                          int imageW, int imageH, const juce::Colour& overlayColour,
                                          float imageOpacity, juce::ImageButton& button)
{
    if (!button.isEnabled())
        imageOpacity *= disabledImageBoost;
    LookAndFeel_V2::drawImageButton (g, image, imageX, imageY, imageW, imageH, overlayColour, imageOpacity,
                                     button);
}

int DefaultLookAndFeel::getTabButtonOverlap (int) { return tabOverlap; }

int DefaultLookAndFeel::getTabButtonBestWidth (juce::TabBarButton& button, int)
{
    return (int) getTabFont().getStringWidthFloat (button.getButtonText()) + tabTextPadding;
}

void DefaultLookAndFeel::createTabButtonShape (juce::TabBarButton& button, juce::Path& path, bool, bool)
{
    const float o = (float) tabOverlap, w = (float) button.getWidth(), h = (float) button.getHeight();
    juce::Path shape;
    shape.startNewSubPath (o + 0.5f, 0.5f);
    shape.lineTo (w + 0.5f, 0.5f);
    shape.lineTo (w + 0.5f, h + 4.5f);
    shape.lineTo (o + 0.5f, h + 4.5f);
    shape.closeSubPath();
    path = shape.createPathWithRoundedCorners (4.0f);
}

void DefaultLookAndFeel::fillTabButtonShape (juce::TabBarButton& button, juce::Graphics& g,
                                             const juce::Path& path, bool, bool)
{
    const auto colour = button.getTabBackgroundColour();
    g.setColour (button.isFrontTab() ? colour : colour.withMultipliedAlpha (backTabAlpha));
    g.fillPath (path);
    g.setColour (findColour (tabOutlineColourId).withAlpha (button.isEnabled() ? 1.0f : disabledAlpha));
    g.strokePath (path, juce::PathStrokeType (1.0f));
}

void DefaultLookAndFeel::drawTabButtonText (juce::TabBarButton& button, juce::Graphics& g, bool, bool)
{
    const int o = tabOverlap;
    g.setFont (getTabFont());
    g.setColour (findColour (button.isFrontTab() ? frontTabTextColourId : tabOutlineColourId)
                     .withMultipliedAlpha (button.isEnabled() ? 1.0f : disabledAlpha));
    g.drawText (button.getButtonText(), o + o / 2, 0, button.getWidth() - 2 * o, button.getHeight(),
                juce::Justification::centred, false);
}

void DefaultLookAndFeel::drawTabButton (juce::TabBarButton& button, juce::Graphics& g, bool isMouseOver,
                                        bool isMouseDown)
{
    juce::Path shape;
    createTabButtonShape (button, shape, isMouseOver, isMouseDown);
    fillTabButtonShape (button, g, shape, isMouseOver, isMouseDown);
    drawTabButtonText (button, g, isMouseOver, isMouseDown);
}

void DefaultLookAndFeel::drawTabAreaBehindFrontButton (juce::TabbedButtonBar&, juce::Graphics& g, int w,
                                                       int h)
{
    g.setColour (findColour (tabOutlineColourId));
    g.drawRoundedRectangle (0.0f, (float) h - 1.0f, (float) w, (float) h + 2.0f, 4.0f, 1.0f);
}

juce::Typeface::Ptr DefaultLookAndFeel::getTypefaceForFont (const juce::Font& font)
{
    if (font.getTypefaceName() == juce::Font::getDefaultSansSerifFontName())
        if (auto typeface = font.isBold() ? EmbeddedFonts::getBold() : EmbeddedFonts::getRegular())
            return typeface;
    return LookAndFeel_V2::getTypefaceForFont (font);
}
