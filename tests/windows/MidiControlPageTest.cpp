#include "parameters/Parameter.h"
#include "support/FakeFileDialog.h"
#include "support/MouseEvents.h"
#include "support/PluginHarness.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/MidiControlComponent.h"

#include <gtest/gtest.h>

namespace
{
void pump() { juce::MessageManager::getInstance()->runDispatchLoopUntil (20); }

void click (juce::Button& button)
{
    button.triggerClick();
    pump();
}

/** The MIDI page of a started crusher, at the size it has in the docked panel, on an editor that
    carries the covers of its questions. */
struct MidiPage : ::testing::Test, juce::Component, PseudoModalComponent::Desktop
{
    MidiPage()
        : page (h->getMidiControl(), h->getMapExtension(), h->getMapWildcards())
    {
        setLookAndFeel (&look);
        setSize (633, 479);
        page.setBounds (14, 253, 605, 196); // where the docked panel puts its pages
        addAndMakeVisible (page);
        sendLookAndFeelChange();
    }
    ~MidiPage() override
    {
        removeAllChildren();
        setLookAndFeel (nullptr);
    }

    MidiControl& map() { return h->getMidiControl(); }
    Parameter* parameter (int index) { return h->getParameterManager().getParameter (index); }
    MidiControlComponent::ListComponent& list() { return page.getList(); }
    juce::Array<int> controllers()
    {
        juce::Array<int> shown;
        for (int i = 0; i < list().getNumEntries(); ++i)
            shown.add (list().getEntry (i).controller);
        return shown;
    }
    void clickCell (int index)
    {
        const auto at = list().getCellCentre (index).toFloat();
        list().mouseDown (MouseEvents::at (list(), at, at, juce::ModifierKeys::leftButtonModifier));
    }

    PluginHarness h;
    DefaultLookAndFeel look;
    MidiControlComponent page;
};
} // namespace

TEST_F (MidiPage, ListsTheAssignmentsByControllerAndEnablesWhatCanBeDone)
{
    EXPECT_EQ (list().getNumEntries(), 0);
    EXPECT_EQ (list().getNumColumns(), 3) << "three empty columns, headers only";
    EXPECT_FALSE (list().getScrollBar().isVisible());
    EXPECT_FALSE (page.getClearButton().isEnabled());
    EXPECT_FALSE (page.getDeleteButton().isEnabled());

    map().assign (64, parameter (5), true);
    map().assign (7, parameter (2), true);
    map().assign (1, parameter (9), true);
    pump();
    EXPECT_EQ (controllers(), juce::Array<int> (1, 7, 64));
    EXPECT_EQ (list().getEntry (1).name, parameter (2)->getName());
    EXPECT_TRUE (page.getClearButton().isEnabled());
    EXPECT_FALSE (page.getDeleteButton().isEnabled()) << "nothing selected";

    clickCell (1);
    EXPECT_EQ (list().getSelectedIndex(), 1);
    EXPECT_TRUE (page.getDeleteButton().isEnabled());
    click (page.getDeleteButton());
    EXPECT_EQ (controllers(), juce::Array<int> (1, 64));
    EXPECT_EQ (map().getAssignedParameter (7), nullptr);
    EXPECT_EQ (list().getSelectedIndex(), -1) << "a change of the map clears the selection";
    EXPECT_FALSE (page.getDeleteButton().isEnabled());

    clickCell (list().getNumRows() + 2); // an empty cell of the second column
    EXPECT_EQ (list().getSelectedIndex(), list().getNumRows() + 2);
    EXPECT_FALSE (page.getDeleteButton().isEnabled());
    const auto header = list().getCellCentre (0) - juce::Point<int> (0, 20);
    list().mouseDown (
        MouseEvents::at (list(), header.toFloat(), header.toFloat(), juce::ModifierKeys::leftButtonModifier));
    EXPECT_EQ (list().getSelectedIndex(), list().getNumRows() + 2) << "a click on the header does nothing";
}

TEST_F (MidiPage, ClearsAllOnlyWhenTheQuestionIsAnsweredYes)
{
    map().assign (3, parameter (0), true);
    map().assign (4, parameter (1), true);
    pump();

    click (page.getClearButton());
    juce::Component::SafePointer<Zelkora::AlertWindow> first (page.getClearAlert());
    ASSERT_NE (first.getComponent(), nullptr);
    EXPECT_TRUE (first->isShown());
    EXPECT_EQ (first->getCover().getParentComponent(), this) << "over the whole editor";
    EXPECT_EQ (first->getMessageLabel().getText(), "Do you really want to clear all assignations?");
    EXPECT_EQ (first->getTitle(), "Vantrice");
    EXPECT_EQ (first->getMessageLabel().getFont(), look.getNormalFont()) << "dressed like every dialog";
    click (*first->getButton (1)); // "No"
    EXPECT_EQ (map().getNumAssignments(), 2);
    EXPECT_FALSE (first->isShown());

    click (page.getClearButton());
    EXPECT_EQ (first.getComponent(), nullptr) << "the answered question was replaced";
    ASSERT_NE (page.getClearAlert(), nullptr);
    click (*page.getClearAlert()->getButton (0)); // "Yes"
    EXPECT_EQ (map().getNumAssignments(), 0);
    EXPECT_EQ (list().getNumEntries(), 0);
    EXPECT_FALSE (page.getClearButton().isEnabled());
}

TEST_F (MidiPage, ScrollsSidewaysOnlyPastThreeColumns)
{
    const int cells = 3 * list().getNumRows();
    for (int i = 0; i <= cells; ++i)
        map().assign (i, parameter (i), true);
    pump();
    ASSERT_EQ (list().getNumEntries(), cells + 1);
    EXPECT_EQ (list().getNumColumns(), 4);
    EXPECT_TRUE (list().getScrollBar().isVisible());
    EXPECT_EQ (list().getScrollOffset(), 0);

    list().selectCell (cells);
    EXPECT_LT (list().getScrollOffset(), 0) << "the fourth column came into view";
    const auto centre = list().getCellCentre (cells);
    EXPECT_TRUE (list().getLocalBounds().contains (centre));
    list().selectCell (-1);
    clickCell (cells);
    EXPECT_EQ (list().getSelectedIndex(), cells) << "a click lands on the cell that shows there";

    map().clearController (cells);
    pump();
    EXPECT_EQ (list().getNumColumns(), 3);
    EXPECT_FALSE (list().getScrollBar().isVisible());
    EXPECT_EQ (list().getScrollOffset(), 0);
}

TEST_F (MidiPage, LearnModeFollowsTheBoxAndARowClickOffersItsPair)
{
    map().assign (20, parameter (3), true);
    map().assign (30, parameter (6), true);
    pump();

    clickCell (1);
    EXPECT_EQ (map().getLearnController(), MidiControl::noController) << "learn is off: only selected";

    click (page.getLearnBox().getButton());
    EXPECT_TRUE (map().isLearnActive());
    clickCell (0);
    pump();
    EXPECT_EQ (map().getLearnController(), 20);
    EXPECT_EQ (map().getLearnParameter(), parameter (3));
    EXPECT_EQ (list().getSelectedIndex(), 0);

    map().setLearnController (30); // the hardware moves the other controller
    pump();
    EXPECT_EQ (list().getSelectedIndex(), 1);
    map().setLearnController (99); // a free one
    pump();
    EXPECT_EQ (list().getSelectedIndex(), -1);

    map().setLearnActive (false);
    pump();
    EXPECT_FALSE (page.getLearnBox().getToggleState());
    EXPECT_FALSE (map().isLearnActive());
}

namespace
{
struct MapFile
{
    const char* name;
    const char* text; // null: no file at all
    int assignmentsAfter;
};

void PrintTo (const MapFile& f, std::ostream* out) { *out << f.name; }

const MapFile mapFiles[] = {
    { "OfThisApplication",
      "<MidiControlMap name=\"Vantrice\"><assign CC=\"5\" param=\"Left Bits\"/></MidiControlMap>", 1 },
    { "OfAnotherApplicationEmptiesTheMap",
      "<MidiControlMap name=\"Other\"><assign CC=\"5\" param=\"Left Bits\"/></MidiControlMap>", 0 },
    { "UnreadableChangesNothing", "not a map at all <", 2 },
    { "CancelledChangesNothing", nullptr, 2 },
};

class MapLoading : public MidiPage, public ::testing::WithParamInterface<MapFile>
{
};
} // namespace

TEST_P (MapLoading, LoadsWhatTheDialogChoseByTheRulesOfTheMap)
{
    FakeFileDialog dialog;
    map().assign (40, parameter (0), true);
    map().assign (41, parameter (2), true);
    pump();
    if (GetParam().text != nullptr)
    {
        dialog.answer = h.folder.getChildFile ("chosen.vtccmap");
        dialog.answer.replaceWithText (GetParam().text);
    }
    click (page.getLoadButton());
    ASSERT_EQ (dialog.asked.size(), 1u);
    EXPECT_EQ (dialog.asked[0].patterns, h->getMapWildcards());
    EXPECT_EQ (map().getNumAssignments(), GetParam().assignmentsAfter);
    EXPECT_EQ (list().getNumEntries(), GetParam().assignmentsAfter) << "the table follows the map";
}

INSTANTIATE_TEST_SUITE_P (Files, MapLoading, ::testing::ValuesIn (mapFiles),
                          [] (const ::testing::TestParamInfo<MapFile>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST_F (MidiPage, SavesUnderTheMapsOwnExtension)
{
    FakeFileDialog dialog;
    map().assign (12, parameter (1), true);
    dialog.answer = h.folder.getChildFile ("map.txt");
    click (page.getSaveButton());
    ASSERT_EQ (dialog.asked.size(), 1u);
    EXPECT_EQ (dialog.asked[0].mode, FileDialog::Mode::save);
    EXPECT_EQ (dialog.asked[0].patterns, "*.vtccmap");
    EXPECT_TRUE (dialog.asked[0].warnAboutOverwriting);
    EXPECT_FALSE (h.folder.getChildFile ("map.txt").exists());
    const auto saved = juce::parseXML (h.folder.getChildFile ("map.vtccmap"));
    ASSERT_NE (saved, nullptr);
    EXPECT_EQ (saved->getChildByName ("assign")->getStringAttribute ("param"), "Left Bits");
}
