#include "frame/EventsMap.h"
#include "parameters/FloatParameter.h"
#include "parameters/ParameterManager.h"
#include "skin/ModWheel.h"
#include "skin/MusicKeyboard.h"
#include "skin/NoteDisplay.h"
#include "skin/NumericDisplay.h"
#include "skin/PatternNumberDisplay.h"
#include "skin/PitchBender.h"
#include "support/MouseEvents.h"

#include <gtest/gtest.h>

namespace
{
struct Skin
{
    template <typename Control>
    void load (Control& control, const char* xml)
    {
        auto element = juce::parseXML (xml);
        ASSERT_NE (element, nullptr);
        control.loadFromXml (*element, parameters, events, nullptr);
    }

    ParameterManager parameters;
    EventsMap events;
};

juce::String digitsOf (NumericDisplay& display)
{
    juce::String shown;
    for (int i = 0; i < display.getNumDigits(); ++i)
        shown << (display.getDigit (i)->isBlank() ? juce::String ("_")
                                                  : juce::String (display.getDigit (i)->getDigit()));
    return shown;
}

struct NumericCase
{
    const char* name;
    const char* skin;
    double value;
    const char* shown; // a blank digit as "_"
};

void PrintTo (const NumericCase& c, std::ostream* out) { *out << c.name; }

const NumericCase numericCases[] = {
    { "UnitsDigitFirstShowsTheFractionWithoutAPoint",
      R"(<NumericDisplay digitsNum="3" firstDigitOrder="1" maxValue="10"><size width="30" height="14"/>
         <digits resource="KitDigit.png"/></NumericDisplay>)",
      0.5, "050" },
    { "LeadingZerosStayDark",
      R"(<NumericDisplay digitsNum="4" firstDigitOrder="100" maxValue="999"><size width="40" height="14"/></NumericDisplay>)",
      42.0, "_420" },
    { "AnOrderThatIsNoPowerOfTenBecomesThatOfTheFirstDigit",
      R"(<NumericDisplay digitsNum="3" firstDigitOrder="7" maxValue="999"><size width="30" height="14"/></NumericDisplay>)",
      7.0, "__7" },
    { "NoDigitsShowsNothingAndDividesByNothing",
      R"(<NumericDisplay digitsNum="0" maxValue="9"><size width="30" height="14"/></NumericDisplay>)", 3.0,
      "" },
    { "ValuesAreHeldToTheRangeAndShowTheirSign",
      R"(<NumericDisplay digitsNum="2" firstDigitOrder="10" minValue="-50" maxValue="50"><size width="30" height="14"/>
         <sign><gfx resource="KitSign.png"/></sign></NumericDisplay>)",
      -75.0, "50" },
};

class NumericDigits : public ::testing::TestWithParam<NumericCase>
{
};
} // namespace

TEST_P (NumericDigits, ShowTheValueDigitByDigit)
{
    Skin skin;
    NumericDisplay display;
    skin.load (display, GetParam().skin);
    display.setValue (GetParam().value, false);
    EXPECT_EQ (digitsOf (display), GetParam().shown);
    if (auto* sign = display.getSign())
    {
        EXPECT_TRUE (sign->isNegative());
    }
}

INSTANTIATE_TEST_SUITE_P (Displays, NumericDigits, ::testing::ValuesIn (numericCases),
                          [] (const ::testing::TestParamInfo<NumericCase>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST (NumericDisplayDrag, FinerDigitsStepFinerAndNeedFewerPixelsButNeverNone)
{
    Skin skin;
    auto& parameter = *new FloatParameter (0, "n", 0.0f, 1000000.0f, 0.0f);
    skin.parameters.addParameter (&parameter);
    NumericDisplay display;
    skin.load (display, R"(<NumericDisplay digitsNum="6" firstDigitOrder="100000" maxValue="999999">
                           <links><link as="connectedTo" param="n"/></links><size width="60" height="14"/></NumericDisplay>)");
    const double steps[] = { 100000, 10000, 1000, 100, 10, 1 };
    const int pixels[] = { 25, 20, 15, 10, 5, 5 };
    for (int digit = 0; digit < 6; ++digit)
    {
        display.setValue (0.0, false);
        MouseEvents::drag (display, { digit * 10.0f + 5.0f, 50.0f },
                           { digit * 10.0f + 5.0f, 50.0f - 2.5f * pixels[digit] });
        EXPECT_EQ (display.getDragStep(), steps[digit]) << digit;
        EXPECT_EQ (display.getPixelsPerStep(), pixels[digit]) << digit;
        EXPECT_EQ (display.getValue(), 2.0 * steps[digit]) << "two steps, the half toward 0 dropped";
        EXPECT_EQ (parameter.getValue(), (float) display.getValue()) << "the parameter hears it";
    }
}

TEST (PatternNumberDisplayNotes, ShowLetterSharpAndOctaveAndNoFrameAStripLacks)
{
    Skin skin;
    PatternNumberDisplay display;
    skin.load (display,
               R"(<PatternNumberDisplay notePatternMin="0" notePatternMax="127"><size width="40" height="14"/>
                           <gfx firstDigit="KitPatternFirst.png" secondDigit="KitPatternSecond.png"
                           thirdDigit="KitPatternThird.png" fourthDigit="KitPatternFourth.png"/></PatternNumberDisplay>)");
    struct Row
    {
        int value, frames[4];
    };
    // Before a first value the digits are dark; then C#1, F#2, B5, B9, C0 and G10, whose octave would be
    // one frame past the strip.
    EXPECT_EQ (display.getDigitFrame (0), 0);
    const Row rows[] = {
        { 13, { 11, 11, 11, 2 } },   { 30, { 11, 14, 11, 3 } }, { 71, { 11, 17, 12, 6 } },
        { 119, { 11, 17, 12, 10 } }, { 0, { 11, 11, 12, 1 } },  { 127, { 11, 15, 12, 10 } }
    };
    for (const auto& row : rows)
    {
        display.setPatternValue (row.value);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ (display.getDigitFrame (i), row.frames[i]) << row.value << " digit " << i;
    }
    display.setPatternValue (500);
    EXPECT_EQ (display.getPatternValue(), 127) << "held to the note range";
    display.setEnabled (false);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ (display.getDigitFrame (i), 0);
}

TEST (MusicKeyboardKeys, AnOctaveLaysOutLikeAPiano)
{
    Skin skin;
    MusicKeyboard keyboard;
    skin.load (
        keyboard,
        R"(<MusicKeyboard firstKey="60" lastKey="71"><size width="120" height="50"/></MusicKeyboard>)");
    // A unit of 10 pixels a note: white keys wider and shifted left, black ones a unit wide and shorter.
    const juce::Rectangle<int> expected[] = { { 0, -2, 18, 52 },  { 10, -2, 11, 34 },  { 17, -2, 18, 52 },
                                              { 30, -2, 11, 34 }, { 33, -2, 18, 52 },  { 50, -2, 19, 52 },
                                              { 60, -2, 11, 34 }, { 68, -2, 19, 52 },  { 80, -2, 11, 34 },
                                              { 85, -2, 20, 52 }, { 100, -2, 11, 34 }, { 103, -2, 19, 52 } };
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ (keyboard.getKey (60 + i)->getBounds(), expected[i]) << 60 + i;
    EXPECT_FALSE (keyboard.getKey (59)->isVisible());
    EXPECT_FALSE (keyboard.getKey (72)->isVisible());

    MusicKeyboard backwards;
    skin.load (
        backwards,
        R"(<MusicKeyboard firstKey="70" lastKey="60"><size width="120" height="50"/></MusicKeyboard>)");
    EXPECT_FALSE (backwards.getKey (65)->isVisible()) << "a range that holds no note shows no keys";
}

TEST (MusicKeyboardKeys, AStripShowsItsNeighboursPressesAndADragPlaysInOrder)
{
    Skin skin;
    MusicKeyboard keyboard;
    skin.load (keyboard, R"(<MusicKeyboard firstKey="60" lastKey="64"><size width="50" height="40"/><Keys>
                            <Key left="1" right="1"><gfx resource="KitKeyWhite.png" framesNum="8"/><size width="12" height="40"/></Key>
                            <Key><gfx resource="KitKeyBlack.png" framesNum="2"/><size width="8" height="26"/></Key>
                            <Key left="1" right="1"><gfx resource="KitKeyWhite.png" framesNum="8"/><size width="12" height="40"/></Key>
                            </Keys></MusicKeyboard>)");
    struct Ear final : MusicKeyboard::Listener
    {
        void noteOn (MusicKeyboard*, int note) override { heard.add ("on " + juce::String (note)); }
        void noteOff (MusicKeyboard*, int note) override { heard.add ("off " + juce::String (note)); }
        juce::StringArray heard;
    } ear;
    keyboard.addKeyboardListener (&ear);

    auto* d = keyboard.getKey (62);
    EXPECT_EQ (d->getFrame(), 0);
    keyboard.mouseDown (
        MouseEvents::at (keyboard, { 15.0f, 5.0f }, { 15.0f, 5.0f }, juce::ModifierKeys::leftButtonModifier));
    EXPECT_EQ (d->getFrame(), 1) << "the black key below, the lowest bit";
    keyboard.mouseDrag (
        MouseEvents::at (keyboard, { 35.0f, 5.0f }, { 15.0f, 5.0f }, juce::ModifierKeys::leftButtonModifier));
    EXPECT_EQ (d->getFrame(), 2) << "the black key above, the higher bit";
    keyboard.mouseDrag (MouseEvents::at (keyboard, { 23.0f, 38.0f }, { 15.0f, 5.0f },
                                         juce::ModifierKeys::leftButtonModifier));
    EXPECT_EQ (d->getFrame(), 4) << "pressed itself: the second half of the strip";
    keyboard.mouseUp (MouseEvents::at (keyboard, { 23.0f, 38.0f }, { 15.0f, 5.0f }, {}));
    EXPECT_EQ (ear.heard, juce::StringArray ("on 61", "off 61", "on 63", "off 63", "on 62", "off 62"));
}

TEST (SpringingKnobs, GoBackToRestWhenTheMouseLetsGoAndTellTheParameter)
{
    Skin skin;
    auto* bend = new FloatParameter (0, "bend", -1.0f, 1.0f, 0.0f);
    auto* wheel = new FloatParameter (1, "wheel", 0.0f, 1.0f, 0.0f);
    skin.parameters.addParameter (bend);
    skin.parameters.addParameter (wheel);

    PitchBender bender;
    bender.connectTo (bend);
    bender.setBounds (0, 0, 30, 30);
    MouseEvents::drag (bender, { 15.0f, 100.0f }, { 15.0f, 40.0f }, 5);
    EXPECT_EQ (bender.getValue(), 0.0);
    EXPECT_EQ (bend->getNormalizedValue(), 0.5f) << "the middle of -1 to 1";

    ModWheel modWheel;
    modWheel.connectTo (wheel);
    modWheel.setBounds (0, 0, 30, 30);
    wheel->setNormalizedValue (0.3f, false);
    MouseEvents::drag (modWheel, { 15.0f, 100.0f }, { 15.0f, 40.0f }, 5);
    EXPECT_EQ (wheel->getNormalizedValue(), 0.0f);
    MouseEvents::wheel (modWheel, 1.0f);
    EXPECT_EQ (modWheel.getValue(), 0.0) << "no wheel on a control that springs back";
}

TEST (NoteDisplayCells, ShowLetterToneAndOctaveAndFollowADrag)
{
    Skin skin;
    NoteDisplay display;
    skin.load (display, R"(<NoteDisplay><size width="30" height="16"/><gfx><notes resource="KitNotes.png"/>
                           <tones resource="KitTones.png"/><octaves resource="KitOctaves.png"/></gfx></NoteDisplay>)");
    EXPECT_EQ (display.getWidth(), 30);
    EXPECT_EQ (display.getHeight(), 48) << "the cells' heights add up";
    struct Row
    {
        int note, letter, tone, octave;
    };
    const Row rows[] = {
        { 0, 1, 2, 1 }, { 1, 1, 1, 1 }, { 61, 1, 1, 6 }, { 71, 7, 2, 6 }, { 127, 5, 2, 11 }
    };
    auto* parameter = new FloatParameter (0, "note", 0.0f, 127.0f, 0.0f);
    skin.parameters.addParameter (parameter);
    display.connectTo (parameter);
    for (const auto& row : rows)
    {
        parameter->setValue ((float) row.note, false);
        display.updateFromParameter (parameter);
        int letter = 0, tone = 0, octave = 0;
        display.getFrames (letter, tone, octave);
        EXPECT_EQ (letter, row.letter) << row.note;
        EXPECT_EQ (tone, row.tone) << row.note;
        EXPECT_EQ (octave, row.octave) << row.note;
    }
    parameter->setValue (60.0f, false);
    display.updateFromParameter (parameter);
    MouseEvents::drag (display, { 5.0f, 100.0f }, { 5.0f, 100.0f - 45.0f });
    EXPECT_EQ (display.getNote(), 62) << "20 pixels a semitone";
    EXPECT_EQ (parameter->getValue(), 62.0f);
}
