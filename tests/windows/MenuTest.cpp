#include "windows/ComboBoxEx.h"

#include <gtest/gtest.h>

namespace
{
struct Desk final : juce::Component, PseudoModalComponent::Desktop
{
    Desk() { setSize (400, 300); }
};

juce::MouseEvent at (juce::Component& c, juce::Point<int> p)
{
    return juce::MouseEvent (juce::Desktop::getInstance().getMainMouseSource(), p.toFloat(), {}, 0.0f, 0.0f,
                             0.0f, 0.0f, 0.0f, &c, &c, juce::Time::getCurrentTime(), p.toFloat(),
                             juce::Time::getCurrentTime(), 1, false);
}

void pump (int milliseconds) { juce::MessageManager::getInstance()->runDispatchLoopUntil (milliseconds); }

struct Chosen final : ComboBoxEx::Listener
{
    void comboBoxChanged (ComboBoxEx*) override { ++changes; }
    int changes = 0;
};

/** A box on a desk, its menu two submenus and a plain item, opened. */
struct OpenMenu
{
    OpenMenu()
    {
        auto first = std::make_unique<PopupMenuEx> ("first");
        first->addItem (11, "Eleven");
        auto second = std::make_unique<PopupMenuEx> ("second");
        second->addItem (21, "Twenty-one");
        box.getMenu().addSubMenu ("First", std::move (first));
        box.getMenu().addSubMenu ("Second", std::move (second));
        box.getMenu().addItem (3, "Three");
        box.getMenu().addItem (4, "Four", false, false);
        box.setBounds (10, 10, 120, 20);
        desk.addAndMakeVisible (box);
        box.addListener (&chosen);
        box.mouseDown (at (box, {}));
    }

    PopupMenuEx::PopupMenuComponent& component() { return box.getMenu().getComponent(); }
    PopupMenuEx::Window& root() { return *component().getLevel (0); }
    juce::Point<int> row (int index) { return { 10, 6 + 16 * index + 8 }; }

    Desk desk;
    ComboBoxEx box;
    Chosen chosen;
};
} // namespace

TEST (Menus, OpenUnderTheBoxAndOpenSubmenusOnlyWhenTheMouseRests)
{
    OpenMenu m;
    ASSERT_EQ (m.component().getNumOpenLevels(), 1);
    EXPECT_EQ (m.root().getPosition(), juce::Point<int> (10, 30)) << "under the box, at its left edge";

    // Moving on quickly over both submenus opens neither.
    m.root().mouseMove (at (m.root(), m.row (0)));
    m.root().mouseMove (at (m.root(), m.row (1)));
    EXPECT_EQ (m.component().getNumOpenLevels(), 1);
    // Resting opens the one under the mouse.
    pump (300);
    ASSERT_EQ (m.component().getNumOpenLevels(), 2);
    EXPECT_EQ (m.component().getLevel (1)->getMenu().getItemText (21), "Twenty-one");

    // A click on a submenu's item opens it at once; a rested move back to a plain item closes it.
    m.root().mouseDown (at (m.root(), m.row (0)));
    EXPECT_EQ (m.component().getLevel (1)->getMenu().getItemText (11), "Eleven");
    m.root().mouseMove (at (m.root(), m.row (2)));
    pump (300);
    EXPECT_EQ (m.component().getNumOpenLevels(), 1);
}

TEST (Menus, AClickChoosesOnceAndADisabledItemNothing)
{
    OpenMenu m;
    m.root().mouseDown (at (m.root(), m.row (3)));
    EXPECT_TRUE (m.component().isShown()) << "a disabled item neither closes the menu";
    EXPECT_EQ (m.chosen.changes, 0) << "nor tells anybody";

    m.root().mouseDown (at (m.root(), m.row (2)));
    EXPECT_FALSE (m.component().isShown());
    EXPECT_EQ (m.box.getSelectedId(), 3);
    EXPECT_EQ (m.box.getText(), "Three");
    EXPECT_EQ (m.chosen.changes, 1);

    m.box.mouseDown (at (m.box, {}));
    m.root().mouseDown (at (m.root(), m.row (2)));
    EXPECT_EQ (m.chosen.changes, 1) << "the same item again changes nothing";

    m.box.setSelectedId (99);
    EXPECT_EQ (m.box.getText(), "---");
    EXPECT_FALSE (m.box.isSelectedEnabled());
}
