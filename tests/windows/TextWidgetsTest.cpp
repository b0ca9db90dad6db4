#include "skin/TextFieldLift.h"
#include "windows/ComponentRow.h"
#include "windows/LabelWithModalTextEditor.h"
#include "windows/StatusBar.h"

#include <gtest/gtest.h>

namespace
{
// Long enough for the messages a text editor posts to itself to come round.
constexpr int pumpMilliseconds = 20;

struct Heard final : ModalTextEditor::ModalListener
{
    void textCommitted (ModalTextEditor*) override { events.add ("committed"); }
    void editCancelled (ModalTextEditor*) override { events.add ("cancelled"); }
    void editFinished (ModalTextEditor*) override { events.add ("finished"); }
    juce::StringArray events;
};

struct EditCase
{
    const char* name;
    const char* typed;                 // appended to "Bass"
    int endKey;                        // Return, Escape, or 0 for a click elsewhere
    const char* label;                 // what the label shows afterwards
    std::vector<const char*> expected; // what the listener hears
};

void PrintTo (const EditCase& c, std::ostream* out) { *out << c.name; }

const EditCase editCases[] = {
    { "ReturnCommitsAndCloses", "Line", juce::KeyPress::returnKey, "BassLine", { "committed", "finished" } },
    { "ReturnWithoutAChangeOnlyCloses", "", juce::KeyPress::returnKey, "Bass", { "finished" } },
    { "EscapeRevertsAndCloses", "Line", juce::KeyPress::escapeKey, "Bass", { "finished", "cancelled" } },
    { "LosingTheFocusCommits", "Drum", 0, "BassDrum", { "committed", "finished" } },
};

class ModalEditing : public ::testing::TestWithParam<EditCase>
{
};
} // namespace

TEST_P (ModalEditing, FollowsTheKeysAndGoesBackIntoItsParent)
{
    TextFieldLift::setEnabled (false);
    juce::Component parent;
    parent.setSize (200, 40);
    LabelWithModalTextEditor label ("name");
    label.setBounds (10, 10, 120, 20);
    parent.addAndMakeVisible (label);
    label.setText ("Bass");
    Heard heard;
    label.addListener (&heard);

    label.showEditor();
    auto* editor = label.getEditor();
    ASSERT_NE (editor, nullptr);
    editor->focusGained (juce::Component::focusChangedByMouseClick);
    editor->moveCaretToEnd();
    editor->insertTextAtCaret (GetParam().typed);
    if (GetParam().endKey != 0)
        editor->keyPressed (juce::KeyPress (GetParam().endKey));
    else
        editor->focusLost (juce::Component::focusChangedByMouseClick);
    // The text editor tells of changes and keys from the message loop, as it does in a window.
    juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds);

    EXPECT_EQ (heard.events,
               juce::StringArray (GetParam().expected.data(), (int) GetParam().expected.size()));
    EXPECT_EQ (label.getText(), GetParam().label);
    EXPECT_FALSE (editor->isVisible()) << "hidden between edits";
    EXPECT_EQ (editor->getParentComponent(), &label);

    label.showEditor();
    EXPECT_EQ (label.getEditor(), editor) << "the same editor again";
    EXPECT_EQ (editor->getText(), label.getText());
}

INSTANTIATE_TEST_SUITE_P (Keys, ModalEditing, ::testing::ValuesIn (editCases),
                          [] (const ::testing::TestParamInfo<EditCase>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST (StatusBarMessages, StandByPriorityAndEndWithTheirTime)
{
    StatusBar bar;
    bar.showMessage ("knob", 6, 3000);
    bar.showMessage ("controller", 5, 3000);
    EXPECT_EQ (bar.getText(), "knob") << "a lower priority is dropped";
    bar.timerCallback();
    EXPECT_EQ (bar.getText(), "") << "and doesn't come back when the time is up";
    bar.showMessage ("learn", 7, 0);
    bar.showMessage ("knob", 6, 3000);
    EXPECT_EQ (bar.getText(), "learn");
    bar.showMessage ("note", 7, 3000);
    EXPECT_EQ (bar.getText(), "note") << "an equal priority replaces";
    bar.clearMessage();
    EXPECT_EQ (bar.getPriority(), 0);
}

TEST (ComponentRows, LayOutTheirChildrenAndTakeTheirSize)
{
    ComponentRow row;
    juce::Component a, b, c;
    a.setSize (10, 20);
    b.setSize (30, 10);
    c.setSize (20, 16);
    row.setGap (2);
    for (auto* child : { &a, &b, &c })
        row.addAndMakeVisible (child);
    EXPECT_EQ (row.getBounds().getWidth(), 64);
    EXPECT_EQ (row.getBounds().getHeight(), 20);
    EXPECT_EQ (b.getBounds(), juce::Rectangle<int> (12, 0, 30, 10));

    row.setAlignment (ComponentRow::end);
    EXPECT_EQ (b.getY(), 10);
    row.setAlignment (ComponentRow::centre);
    EXPECT_EQ (c.getY(), 2);

    row.setVertical (true);
    EXPECT_EQ (row.getBounds().getWidth(), 30);
    EXPECT_EQ (row.getBounds().getHeight(), 50);
    EXPECT_EQ (c.getBounds(), juce::Rectangle<int> (5, 34, 20, 16));
}
