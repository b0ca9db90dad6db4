#include "support/GoldenImage.h"
#include "windows/AlertWindow.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/TextButtonEx.h"

#include <gtest/gtest.h>

namespace
{
juce::Image render (juce::Component& c) { return c.createComponentSnapshot (c.getLocalBounds()); }

int grey (juce::Colour c) { return (int) c.getRed(); }

struct White final : juce::Component, PseudoModalComponent::Desktop
{
    White() { setSize (300, 200); }
    void paint (juce::Graphics& g) override { g.fillAll (juce::Colours::white); }
};
} // namespace

TEST (LookAndFeel, HoldsThePaletteUnderItsIds)
{
    DefaultLookAndFeel look;
    const std::pair<int, juce::uint32> palette[] = {
        { juce::Slider::rotarySliderFillColourId, 0xff808080 },
        { juce::ScrollBar::thumbColourId, 0xff6e6e6e },
        { juce::ScrollBar::trackColourId, 0xffcccccc },
        { juce::TooltipWindow::outlineColourId, 0xff444444 },
        { 0xf000000, 0xffe3e3e3 },
        { 0xf001000, 0xffc5c5c5 },
        { 0xf001001, 0xff444444 },
        { 0xf001105, 0xffadadad },
        { 0xf002103, 0xffb2b2b2 },
        { 0xf002104, 0xff7f7f7f },
        { 0xf002202, 0xffffffff },
        { 0xf003002, 0xff5b5b5b },
        { 0xf003105, 0xffadadad },
        { 0xf004001, 0xff444444 },
        { 0xf004002, 0xffffffff },
        { 0, 0xff000000 },
        { 3, 0xffffff00 },
    };
    for (const auto& [id, argb] : palette)
        EXPECT_EQ (look.findColour (id).getARGB(), argb) << std::hex << id;
    EXPECT_EQ (look.getStatusBarHeight(), 16);
    EXPECT_EQ (look.getRadioRowHeight(), 20);
    EXPECT_EQ (look.getTabDepth(), 23);
    EXPECT_EQ (look.getNormalFont().getHeight(), 13.0f);
}

TEST (LookAndFeel, GivesPicturesOnlyForWhatItHas)
{
    DefaultLookAndFeel look;
    juce::ImageButton button;
    look.setButtonIcon (button, 16, 1);
    EXPECT_EQ (button.getBounds().getWidth(), 27);
    look.setButtonIcon (button, 2, 2);
    EXPECT_EQ (button.getBounds().getWidth(), 43);
    look.setButtonIcon (button, 17, 1);
    EXPECT_EQ (button.getBounds().getWidth(), 43) << "icon 17 changes nothing";
    EXPECT_EQ (std::unique_ptr<juce::ImageButton> (look.createIconButton ("x", 17)), nullptr);

    std::unique_ptr<TextButtonEx> large (look.createTextButton ("Load Bank", 2));
    EXPECT_EQ (large->getHeight(), 32);
    look.setTextButtonImages (*large, 3);
    EXPECT_EQ (large->getHeight(), 32) << "size 3 changes nothing";
    for (const auto& image : { look.getCheckBoxOffImage(), look.getCheckBoxOnImage(), look.getRadioOffImage(),
                               look.getRadioOnImage() })
        EXPECT_EQ (image.getBounds(), juce::Rectangle<int> (15, 14));
}

TEST (LookAndFeel, DressesButtonsChecksAndRadiosAsItsGoldenPictures)
{
    DefaultLookAndFeel look;
    juce::Component sheet;
    sheet.setLookAndFeel (&look);
    sheet.setSize (320, 60);
    TextButtonEx normal ("Add Group"), large ("Save Bank", 2), disabled ("Remove");
    disabled.setEnabled (false);
    int x = 4;
    for (auto* b : { &normal, &large, &disabled })
    {
        sheet.addAndMakeVisible (b);
        b->sendLookAndFeelChange();
        b->setTopLeftPosition (x, 4);
        x += b->getWidth() + 4;
    }
    juce::ImageComponent boxes[4];
    const juce::Image pictures[] = { look.getCheckBoxOffImage(), look.getCheckBoxOnImage(),
                                     look.getRadioOffImage(), look.getRadioOnImage() };
    for (int i = 0; i < 4; ++i)
    {
        boxes[i].setImage (pictures[i]);
        boxes[i].setBounds (4 + i * 20, 42, 15, 14);
        sheet.addAndMakeVisible (boxes[i]);
    }
    EXPECT_EQ (normal.getHeight(), 28);
    EXPECT_EQ (GoldenImage::check (render (sheet), "windows/buttons-checks-radios"), "");
    sheet.setLookAndFeel (nullptr);
}

TEST (LookAndFeel, DimsDisablesAndLeavesBackTabsPaler)
{
    DefaultLookAndFeel look;
    {
        // Black at a third over white.
        White desk;
        desk.setLookAndFeel (&look);
        auto alert = Zelkora::AlertWindow::createYesNo ("Q", "?", nullptr);
        desk.addChildComponent (*alert);
        alert->showCentred();
        EXPECT_NEAR (grey (render (desk).getPixelAt (2, 2)), 0xab, 1);
        desk.setLookAndFeel (nullptr);
    }
    {
        // A disabled scroll bar takes no notice of the mouse: its thumb at half strength over its track.
        juce::ScrollBar bar (true);
        bar.setLookAndFeel (&look);
        bar.setEnabled (false);
        juce::Image canvas (juce::Image::RGB, 13, 100, true);
        juce::Graphics g (canvas);
        g.fillAll (juce::Colours::white);
        look.drawScrollbar (g, bar, 0, 0, 13, 100, true, 20, 40, true, false);
        const int track = (255 + 0xcc) / 2;
        EXPECT_NEAR (grey (canvas.getPixelAt (6, 40)), (track + 0x6e) / 2, 2);
        bar.setLookAndFeel (nullptr);
    }
    {
        // A tab behind the front one shows its colour at 0.66.
        juce::TabbedButtonBar bar (juce::TabbedButtonBar::TabsAtTop);
        bar.setLookAndFeel (&look);
        bar.addTab ("Front", juce::Colour (0xffc5c5c5), -1);
        bar.addTab ("Back", juce::Colour (0xffc5c5c5), -1);
        bar.setCurrentTabIndex (0);
        auto* back = bar.getTabButton (1);
        back->setSize (80, 23);
        juce::Image canvas (juce::Image::RGB, 90, 30, true);
        juce::Graphics g (canvas);
        g.fillAll (juce::Colours::white);
        juce::Path shape;
        look.createTabButtonShape (*back, shape, false, false);
        look.fillTabButtonShape (*back, g, shape, false, false);
        EXPECT_NEAR (grey (canvas.getPixelAt (40, 12)), 255 - (int) (0.66f * (255 - 0xc5)), 2);
        bar.setLookAndFeel (nullptr);
    }
}
