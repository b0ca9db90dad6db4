#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The one look of the dialogs and widgets, apart from the skin that dresses the face: a palette under
    the ids the widgets ask for, fonts from the embedded DejaVu Sans, and the metrics the widgets read by
    casting the look and feel they inherit. Built on JUCE's second look, whose light defaults fill what
    the palette leaves. The editor holds one by value and sets it on itself. */
class DefaultLookAndFeel : public juce::LookAndFeel_V2
{
public:
    /** Colour ids of the family's own widgets. */
    enum ColourIds
    {
        aboutBodyColourId = 0,
        aboutBorderColourId = 1,
        aboutTextColourId = 2,
        aboutLinkColourId = 3,

        panelColourId = 0xf000000,
        windowBodyColourId = 0xf001000,
        windowBorderColourId = 0xf001001,
        titleBarColourId = 0xf001002,
        titleTextColourId = 0xf001003,
        titleButtonColourId = 0xf001004,
        listBackgroundColourId = 0xf001100,
        listRowColourId = 0xf001101,
        listLineColourId = 0xf001102,
        listAlternateRowColourId = 0xf001103,
        listTextColourId = 0xf001104,
        listSelectedRowColourId = 0xf001105,
        listSelectedTextColourId = 0xf001106,
        listOutlineColourId = 0xf001107,
        listHighlightColourId = 0xf001108,
        keyboardOutlineColourId = 0xf002100,
        keyboardWhiteKeyColourId = 0xf002101,
        keyboardBlackKeyColourId = 0xf002102,
        keyboardKeyOverColourId = 0xf002103,
        keyboardKeyDownColourId = 0xf002104,
        pathFieldColourId = 0xf002200,
        pathTextColourId = 0xf002201,
        pathOutlineColourId = 0xf002202,
        tabPageColourId = 0xf003000,
        frontTabTextColourId = 0xf003001,
        tabOutlineColourId = 0xf003002,
        browserBackgroundColourId = 0xf003100,
        browserListColourId = 0xf003101,
        browserLineColourId = 0xf003102,
        browserAlternateRowColourId = 0xf003103,
        browserTextColourId = 0xf003104,
        browserSelectedRowColourId = 0xf003105,
        browserSelectedTextColourId = 0xf003106,
        browserOutlineColourId = 0xf003107,
        browserHighlightColourId = 0xf003108,
        statusBarBackgroundColourId = 0xf004001,
        statusBarTextColourId = 0xf004002
    };

    DefaultLookAndFeel();

    virtual juce::Font getStatusBarFont();
    virtual int getStatusBarHeight();

    const juce::Font& getNormalFont() const noexcept { return normalFont; }
    const juce::Font& getBoldFont() const noexcept { return boldFont; }

    /** Text that asks for the default sans-serif face gets the embedded one, regular or bold. */
    juce::Typeface::Ptr getTypefaceForFont (const juce::Font& font) override;

private:
    juce::Font normalFont, boldFont;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (DefaultLookAndFeel)
};
