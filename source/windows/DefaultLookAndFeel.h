#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class TextButtonEx;

/** The one look of the dialogs and widgets, apart from the skin that dresses the face: a palette under
    the ids the widgets ask for, fonts from the embedded DejaVu Sans, the drawing of the JUCE widgets the
    windows meet, and the pictures and metrics the family's widgets read by casting the look and feel they
    inherit. Built on JUCE's second look, whose light defaults fill what the palette leaves. The editor
    holds one by value and sets it on itself. */
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

    /** The icons, by the numbers their callers give. */
    enum Icon
    {
        closeIcon = 0,
        copyIcon = 1,
        cutIcon = 2,
        pasteIcon = 3,
        deleteIcon = 4,
        downIcon = 5,
        upIcon = 6,
        leftIcon = 7,
        rightIcon = 8,
        addIcon = 9,
        removeIcon = 10,
        folderIcon = 11,
        binIcon = 12,
        refreshIcon = 13,
        settingsIcon = 14,
        openIcon = 15,
        saveIcon = 16,
        numIcons = 17
    };

    DefaultLookAndFeel();

    // The family's widgets ask for these.
    virtual juce::Image getCheckBoxOffImage();
    virtual juce::Image getCheckBoxOnImage();
    virtual juce::Font getCheckBoxFont();
    virtual int getCheckBoxGap();
    virtual juce::Image getRadioOffImage();
    virtual juce::Image getRadioOnImage();
    virtual juce::Font getRadioTitleFont();
    virtual juce::Font getRadioLabelFont();
    virtual int getRadioTitleInset();
    virtual int getRadioTitlePadding();
    virtual int getRadioButtonInset();
    virtual int getRadioVerticalMargin();
    virtual int getRadioRowHeight();
    virtual float getRadioCornerRadius();
    virtual int getRadioLabelGap();
    virtual juce::Font getTabFont();
    virtual int getTabDepth();
    virtual int getTabIndent();
    virtual juce::Font getStatusBarFont();
    virtual int getStatusBarHeight();
    virtual int getDefaultIconSize();
    virtual int getDefaultTextButtonSize();
    /** A new image button dressed with the icon; null for an icon past the last. The caller owns it. */
    virtual juce::ImageButton* createIconButton (const juce::String& name, int icon, int size);
    virtual juce::ImageButton* createIconButton (const juce::String& name, int icon);
    /** The icon's up and down pictures and their size; nothing for an icon past the last. */
    virtual void setButtonIcon (juce::ImageButton& button, int icon, int size);
    /** A new text button with the frame of the size (2 the large one). The caller owns it. */
    virtual TextButtonEx* createTextButton (const juce::String& text, int size);
    virtual TextButtonEx* createTextButton (const juce::String& text);
    /** The frame's seven pictures; nothing for a negative size or one above 2. */
    virtual void setTextButtonImages (TextButtonEx& button, int size);

    const juce::Font& getNormalFont() const noexcept { return normalFont; }
    const juce::Font& getBoldFont() const noexcept { return boldFont; }

    // JUCE's drawing, as the windows meet it.
    int getDefaultScrollbarWidth() override;
    int getScrollbarButtonSize (juce::ScrollBar&) override;
    void drawScrollbarButton (juce::Graphics&, juce::ScrollBar&, int width, int height, int buttonDirection,
                              bool isScrollbarVertical, bool isMouseOverButton, bool isButtonDown) override;
    void drawScrollbar (juce::Graphics&, juce::ScrollBar&, int x, int y, int width, int height,
                        bool isScrollbarVertical, int thumbStartPosition, int thumbSize, bool isMouseOver,
                        bool isMouseDown) override;
    void drawTreeviewPlusMinusBox (juce::Graphics&, const juce::Rectangle<float>& area,
                                   juce::Colour backgroundColour, bool isOpen, bool isMouseOver) override;
    void drawTextEditorOutline (juce::Graphics&, int width, int height, juce::TextEditor&) override;
    void positionComboBoxText (juce::ComboBox&, juce::Label&) override;
    juce::Rectangle<int> getTooltipBounds (const juce::String& tipText, juce::Point<int> screenPos,
                                           juce::Rectangle<int> parentArea) override;
    void drawTooltip (juce::Graphics&, const juce::String& text, int width, int height) override;
    void drawCornerResizer (juce::Graphics&, int w, int h, bool isMouseOver, bool isMouseDragging) override;
    void drawDocumentWindowTitleBar (juce::DocumentWindow&, juce::Graphics&, int w, int h, int titleSpaceX,
                                     int titleSpaceW, const juce::Image* icon,
                                     bool drawTitleTextOnLeft) override;
    void positionDocumentWindowButtons (juce::DocumentWindow&, int titleBarX, int titleBarY, int titleBarW,
                                        int titleBarH, juce::Button* minimiseButton,
                                        juce::Button* maximiseButton, juce::Button* closeButton,
                                        bool positionTitleBarButtonsOnLeft) override;
    void drawImageButton (juce::Graphics&, juce::Image*, int imageX, int imageY, int imageW, int imageH,
                          const juce::Colour& overlayColour, float imageOpacity, juce::ImageButton&) override;
    int getTabButtonOverlap (int tabDepth) override;
    int getTabButtonBestWidth (juce::TabBarButton&, int tabDepth) override;
    void createTabButtonShape (juce::TabBarButton&, juce::Path&, bool isMouseOver, bool isMouseDown) override;
    void fillTabButtonShape (juce::TabBarButton&, juce::Graphics&, const juce::Path&, bool isMouseOver,
                             bool isMouseDown) override;
    void drawTabButtonText (juce::TabBarButton&, juce::Graphics&, bool isMouseOver,
                            bool isMouseDown) override;
    void drawTabButton (juce::TabBarButton&, juce::Graphics&, bool isMouseOver, bool isMouseDown) override;
    void drawTabAreaBehindFrontButton (juce::TabbedButtonBar&, juce::Graphics&, int w, int h) override;

    /** Text that asks for the default sans-serif face gets the embedded one, regular or bold. */
    juce::Typeface::Ptr getTypefaceForFont (const juce::Font& font) override;

private:
    juce::Path arrowUp, arrowDown, arrowLeft, arrowRight;
    juce::Font normalFont, boldFont;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (DefaultLookAndFeel)
};
