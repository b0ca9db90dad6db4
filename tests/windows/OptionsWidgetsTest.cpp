#include "support/FakeFileDialog.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/DefaultResourceCheckBox.h"
#include "windows/DefaultResourcesRadioButtons.h"
#include "windows/RadioButtons.h"

#include <gtest/gtest.h>

namespace
{
void pump() { juce::MessageManager::getInstance()->runDispatchLoopUntil (20); }

void click (juce::Button& button)
{
    button.triggerClick();
    pump();
}

/** A page of the dialogs' colour, in their look, to put widgets on. */
struct Page final : juce::Component
{
    Page()
    {
        setLookAndFeel (&look);
        setSize (400, 200);
    }
    ~Page() override
    {
        deleteAllChildren();
        setLookAndFeel (nullptr);
    }
    template <typename Widget>
    Widget& dress (Widget* widget)
    {
        addAndMakeVisible (widget);
        sendLookAndFeelChange();
        return *widget;
    }
    void paint (juce::Graphics& g) override { g.fillAll (juce::Colour (0xffc5c5c5)); }
    DefaultLookAndFeel look;
};

struct Heard final : RadioButtons::Listener, DefaultResourceCheckBox::Listener
{
    void radioButtonsChanged (RadioButtons*) override { ++radio; }
    void defaultResourceChanged (DefaultResourceCheckBox*) override { ++resource; }
    int radio = 0, resource = 0;
};

juce::StringArray rows (int n)
{
    juce::StringArray labels;
    for (int i = 0; i < n; ++i)
        labels.add ("Row " + juce::String (i));
    return labels;
}
} // namespace

TEST (RadioButtonsLayout, DressedGroupsTakeTheHeightOfTheirRows)
{
    Page page;
    EXPECT_EQ (page.dress (new RadioButtons ("Two", rows (2))).getHeight(), 57);
    EXPECT_EQ (page.dress (new RadioButtons ("Three", rows (3))).getHeight(), 77);

    // A path in the last row stands out of it by half its excess on each side, and the group grows.
    auto& defaults = page.dress (new DefaultResourcesRadioButtons ("Default", rows (3)));
    defaults.setBounds (0, 0, 300, defaults.getHeight());
    auto& path = defaults.getPath();
    EXPECT_EQ (path.getHeight(), 28) << "the height of its button";
    EXPECT_EQ (defaults.getHeight(), 77 + 4);
    EXPECT_EQ (path.getBounds().getCentreY(), defaults.getListTop() + 2 * 20 + 20 / 2);
    EXPECT_EQ (path.getRight(), defaults.getWidth() - 6);
}

TEST (RadioButtonsLayout, UndressedGroupsKeepTheDefaultFontAndNoMetrics)
{
    RadioButtons plain ("Plain", rows (3));
    juce::LookAndFeel_V4 other;
    juce::Component elsewhere;
    elsewhere.setLookAndFeel (&other);
    RadioButtons underOther ("Other", rows (3));
    elsewhere.addAndMakeVisible (underOther);
    elsewhere.sendLookAndFeelChange();
    for (auto* group : { &plain, &underOther })
    {
        EXPECT_EQ (group->getTitleFont().getHeight(), 14.0f);
        EXPECT_EQ (group->getRowHeight(), 0);
        EXPECT_EQ (group->getHeight(), 14) << "rows of no height under a heading";
        EXPECT_EQ (group->getButton (0)->getWidth(), 0) << "no pictures";
    }
    elsewhere.removeAllChildren();
    elsewhere.setLookAndFeel (nullptr);
}

TEST (RadioButtonsSelection, SelectsOneRowOrNoneAndTellsWhenAsked)
{
    Page page;
    auto& group = page.dress (new RadioButtons ("Four", rows (4)));
    Heard heard;
    group.addListener (&heard);
    group.addListener (&heard);
    auto states = [&group]
    {
        juce::String s;
        for (int i = 0; i < group.getNumRows(); ++i)
            s << (group.getButton (i)->getToggleState() ? "1" : "0");
        return s;
    };

    group.setSelectedIndex (2, false);
    EXPECT_EQ (states(), "0010");
    EXPECT_EQ (heard.radio, 0);
    group.setSelectedIndex (4, true);
    EXPECT_EQ (group.getSelectedIndex(), -1) << "4 is no row of four";
    EXPECT_EQ (states(), "0000");
    EXPECT_EQ (heard.radio, 1) << "once, however often the listener was added";

    click (*group.getButton (1));
    EXPECT_EQ (states(), "0100");
    click (*group.getButton (1));
    EXPECT_EQ (states(), "0100") << "a click on the chosen row leaves it chosen";
    EXPECT_EQ (group.getSelectedIndex(), 1);
    EXPECT_EQ (heard.radio, 3) << "and tells again";
}

TEST (PathField, ShowsAtHalfStrengthWhileItsRowIsNotChosen)
{
    Page page;
    auto& defaults = page.dress (new DefaultResourcesRadioButtons ("Default", rows (3)));
    defaults.setBounds (0, 0, 400, defaults.getHeight());
    auto& path = defaults.getPath();
    path.setPath ("/banks/Mine.vtprsb", false);
    // A point of the field that no text covers.
    const auto probe = path.getBounds().getPosition() + path.getFieldArea().getCentre().withX (200);
    auto fieldAt = [&page, probe]
    { return page.createComponentSnapshot (page.getLocalBounds()).getPixelAt (probe.x, probe.y); };

    defaults.setSelectedIndex (0, false);
    EXPECT_FALSE (path.getBrowseButton().isEnabled());
    EXPECT_NEAR (fieldAt().getRed(), (0xe3 + 0xc5) / 2, 1) << "field colour at half over the page";
    defaults.setSelectedIndex (2, false);
    EXPECT_TRUE (path.getBrowseButton().isEnabled());
    EXPECT_EQ (fieldAt().getRed(), 0xe3);
    EXPECT_EQ (path.getPath(), "/banks/Mine.vtprsb") << "the path stays through it all";
}

TEST (DefaultResourceBox, ChecksItselfByThePathAndTellsOnlyOfChanges)
{
    FakeFileDialog dialog;
    Page page;
    auto& box = page.dress (new DefaultResourceCheckBox());
    Heard heard;
    box.addListener (&heard);
    box.setPath ("");
    EXPECT_FALSE (box.isChecked());
    EXPECT_FALSE (box.getPathComponent().isEnabled());
    box.setPath ("/maps/Mine.vtccmap");
    EXPECT_TRUE (box.isChecked());
    EXPECT_TRUE (box.getPathComponent().isEnabled());
    EXPECT_EQ (box.getHeight(), 28) << "as high as the path's button";

    auto& browse = box.getPathComponent().getBrowseButton();
    click (browse); // cancelled
    dialog.answer = juce::File ("/maps/Mine.vtccmap");
    click (browse); // the file already there
    EXPECT_EQ (dialog.asked.size(), 2u);
    EXPECT_EQ (heard.resource, 0) << "neither setPath nor the same file tells anybody";
    dialog.answer = juce::File ("/maps/Other.vtccmap");
    click (browse);
    EXPECT_EQ (heard.resource, 1);

    click (box.getCheck().getButton());
    EXPECT_FALSE (box.isChecked());
    EXPECT_FALSE (box.getPathComponent().isEnabled());
    EXPECT_EQ (box.getPath(), "/maps/Other.vtccmap") << "kept for when the box is checked again";
    EXPECT_EQ (heard.resource, 2);
}
