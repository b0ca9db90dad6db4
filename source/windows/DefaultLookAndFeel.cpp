#include "windows/DefaultLookAndFeel.h"

#include "common/EmbeddedFonts.h"

namespace
{
// The family's text size and status bar.
constexpr float textHeight = 13.0f;
constexpr int statusBarHeight = 16;

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
}

juce::Font DefaultLookAndFeel::getStatusBarFont() { return normalFont; }

int DefaultLookAndFeel::getStatusBarHeight() { return statusBarHeight; }

juce::Typeface::Ptr DefaultLookAndFeel::getTypefaceForFont (const juce::Font& font)
{
    if (font.getTypefaceName() == juce::Font::getDefaultSansSerifFontName())
        if (auto typeface = font.isBold() ? EmbeddedFonts::getBold() : EmbeddedFonts::getRegular())
            return typeface;
    return LookAndFeel_V2::getTypefaceForFont (font);
}
