#include "frame/EventsMap.h"
#include "parameters/ParameterManager.h"
#include "skin/GFXDisplay.h"
#include "skin/TextFieldLift.h"

#include <gtest/gtest.h>

namespace
{
struct Key
{
    int code;
    juce::juce_wchar character;
    int modifiers = 0;
};

Key typed (char c) { return { (int) c, (juce::juce_wchar) c }; }
const Key returnKey{ juce::KeyPress::returnKey, 0 }, escapeKey{ juce::KeyPress::escapeKey, 0 };
const Key backspace{ juce::KeyPress::backspaceKey, 0 }, deleteKey{ juce::KeyPress::deleteKey, 0 };
const Key home{ juce::KeyPress::homeKey, 0 }, end{ juce::KeyPress::endKey, 0 };
const Key leftKey{ juce::KeyPress::leftKey, 0 }, rightKey{ juce::KeyPress::rightKey, 0 };

struct KeyCase
{
    const char* name;
    const char* start;
    std::vector<Key> keys;
    const char* result;
    int notifications;
};

void PrintTo (const KeyCase& c, std::ostream* out) { *out << c.name; }

const KeyCase keyCases[] = {
    { "TypingAndReturnCommit", "Bass", { typed ('!'), returnKey }, "Bass!", 1 },
    { "ReturnWithoutAChangeSendsNothing", "Bass", { returnKey }, "Bass", 0 },
    { "EscapeRestoresTheText", "Bass", { typed ('x'), backspace, backspace, escapeKey }, "Bass", 0 },
    // X11 gives Ctrl and a letter the letter's code and a control character.
    { "CtrlAndALetterInsertNothing",
      "Bass",
      { { 'A', 1, juce::ModifierKeys::ctrlModifier }, returnKey },
      "Bass",
      0 },
    { "ShiftTypesTheCapital",
      "Bass",
      { { 'A', 'A', juce::ModifierKeys::shiftModifier }, returnKey },
      "BassA",
      1 },
    { "KeysOutsideTheFontDoNothing", "Bass", { { 0xe9, 0xe9 }, { 'q', 0x263a }, returnKey }, "Bass", 0 },
    { "BackspaceAtTheStartAndDeleteAtTheEndDoNothing",
      "Bass",
      { home, backspace, end, deleteKey, returnKey },
      "Bass",
      0 },
    { "EditsWhereTheCaretStands",
      "Bass",
      { leftKey, leftKey, backspace, typed ('X'), rightKey, deleteKey, returnKey },
      "BXs",
      1 },
};

class DisplayKeys : public ::testing::TestWithParam<KeyCase>, private GFXDisplayListener
{
protected:
    DisplayKeys()
    {
        TextFieldLift::setEnabled (false);
        display.loadFromXml (
            *juce::parseXML (
                R"(<Display name="d"><gfx resource="Fonts.png" fontHeight="9"/><size width="153" height="13"/></Display>)"),
            parameters, events, nullptr);
        display.addDisplayListener (this);
    }

    void displayTextChanged (GFXDisplay*) override { ++notifications; }

    ParameterManager parameters;
    EventsMap events;
    GFXDisplay display;
    int notifications = 0;
};
} // namespace

TEST_P (DisplayKeys, EditTheTextAsAUserExpects)
{
    const auto& c = GetParam();
    display.setText (c.start);
    display.focusGained (juce::Component::focusChangedByMouseClick);
    ASSERT_TRUE (display.isEditing());
    for (const auto& key : c.keys)
        display.keyPressed (juce::KeyPress (key.code, juce::ModifierKeys (key.modifiers), key.character));
    EXPECT_FALSE (display.isEditing());
    EXPECT_EQ (display.getText(), c.result);
    EXPECT_EQ (notifications, c.notifications);
}

INSTANTIATE_TEST_SUITE_P (Sequences, DisplayKeys, ::testing::ValuesIn (keyCases),
                          [] (const ::testing::TestParamInfo<KeyCase>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST (DisplayScroll, ATextAsWideAsTheFieldScrollsByOneToShowTheCaret)
{
    TextFieldLift::setEnabled (false);
    ParameterManager parameters;
    EventsMap events;
    GFXDisplay display;
    display.loadFromXml (
        *juce::parseXML (
            R"(<Display name="d"><gfx resource="Fonts.png" fontHeight="9"/><size width="153" height="13"/></Display>)"),
        parameters, events, nullptr);
    ASSERT_EQ (display.getNumColumns(), 21);
    display.setText ("abcdefghijklmnopqrstu");
    display.focusGained (juce::Component::focusChangedByMouseClick);
    EXPECT_EQ (display.getCaretPosition(), 21);
    EXPECT_EQ (display.getScrollOffset(), 1);
    display.keyPressed (juce::KeyPress (juce::KeyPress::homeKey));
    EXPECT_EQ (display.getScrollOffset(), 0);
}
