#include "parameters/IntParameter.h"
#include "parameters/FloatParameter.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace
{
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct SetterCase
{
    const char* label;
    int minimum;
    int maximum;
    std::function<void (IntParameter&)> set;
    int expected;
};

TEST (IntParameter, SettersConvertAndClampIntoTheRange)
{
    const SetterCase cases[] = {
        { "normalised 0.55 rounds up", 0, 10, [] (IntParameter& p) { p.setNormalizedValue (0.55f, true); },
          6 },
        { "normalised 0.54 rounds down", 0, 10, [] (IntParameter& p) { p.setNormalizedValue (0.54f, true); },
          5 },
        { "normalised half step rounds up", 0, 10,
          [] (IntParameter& p) { p.setNormalizedValue (0.05f, true); }, 1 },
        { "normalised above 1", 0, 10, [] (IntParameter& p) { p.setNormalizedValue (1.5f, true); }, 10 },
        { "normalised below 0", 0, 10, [] (IntParameter& p) { p.setNormalizedValue (-1.0f, true); }, 0 },
        { "normalised NaN", 0, 10, [] (IntParameter& p) { p.setNormalizedValue (nan, true); }, 0 },
        { "normalised with an offset", 5, 15, [] (IntParameter& p) { p.setNormalizedValue (0.5f, true); },
          10 },
        { "normalised on the widest range", std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
          [] (IntParameter& p) { p.setNormalizedValue (1.0f, true); }, std::numeric_limits<int>::max() },
        { "raw truncates", 0, 10, [] (IntParameter& p) { p.setValue (3.9f, true); }, 3 },
        { "raw truncates toward zero", -10, 10, [] (IntParameter& p) { p.setValue (-3.9f, true); }, -3 },
        { "raw below", 0, 10, [] (IntParameter& p) { p.setValue (-3.9f, true); }, 0 },
        { "raw huge", 0, 10, [] (IntParameter& p) { p.setValue (1e30f, true); }, 10 },
        { "raw NaN", 2, 10, [] (IntParameter& p) { p.setValue (nan, true); }, 2 },
        { "integer above", 0, 10, [] (IntParameter& p) { p.setIntValue (11, true); }, 10 },
        { "integer below", 0, 10, [] (IntParameter& p) { p.setIntValue (-1, true); }, 0 },
        { "bool true", 0, 10, [] (IntParameter& p) { p.setBoolValue (true, true); }, 10 },
        { "bool false", 3, 10, [] (IntParameter& p) { p.setBoolValue (false, true); }, 3 },
        { "text", 0, 10, [] (IntParameter& p) { p.setStringValue ("7", true); }, 7 },
        { "text with a tail", 0, 10, [] (IntParameter& p) { p.setStringValue ("7 steps", true); }, 7 },
        { "text with blanks", 0, 10, [] (IntParameter& p) { p.setStringValue ("  4", true); }, 4 },
        { "text negative", -10, 10, [] (IntParameter& p) { p.setStringValue ("-5", true); }, -5 },
        { "text no number", 0, 10, [] (IntParameter& p) { p.setStringValue ("many", true); }, 0 },
        { "text decimal", 0, 10, [] (IntParameter& p) { p.setStringValue ("6.9", true); }, 6 },
        { "text huge", 0, 10, [] (IntParameter& p) { p.setStringValue ("99999999999", true); }, 10 },
        { "text that wraps to 0 in 32 bits", 0, 10,
          [] (IntParameter& p) { p.setStringValue ("4294967296", true); }, 10 },
        { "text hugely negative", -10, 10, [] (IntParameter& p) { p.setStringValue ("-4294967296", true); },
          -10 },
        { "from a float parameter", 0, 10,
          [] (IntParameter& p) { p.setFrom (FloatParameter (9, "f", 0, 10, 7.9f), true); }, 7 },
        { "from an int parameter", 0, 10,
          [] (IntParameter& p) { p.setFrom (IntParameter (9, "i", 0, 100, 70), true); }, 10 },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.label);
        IntParameter parameter (0, "p", c.minimum, c.maximum, c.minimum + 1);
        c.set (parameter);
        EXPECT_EQ (parameter.getIntValue(), c.expected);
    }
}

struct ViewCase
{
    int minimum;
    int maximum;
    int value;
    float raw;
    float normalised;
    bool boolean;
    const char* text;
};

TEST (IntParameter, ViewsOfTheValue)
{
    const ViewCase cases[] = {
        { 0, 10, 5, 5.0f, 0.5f, true, "5" },       { 0, 10, 0, 0.0f, 0.0f, false, "0" },
        { 5, 15, 5, 5.0f, 0.0f, false, "5" },      { 5, 15, 15, 15.0f, 1.0f, true, "15" },
        { -10, 10, -3, -3.0f, 0.35f, true, "-3" },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        const IntParameter parameter (0, "p", c.minimum, c.maximum, c.value);
        EXPECT_EQ (parameter.getIntValue(), c.value);
        EXPECT_FLOAT_EQ (parameter.getValue(), c.raw);
        EXPECT_FLOAT_EQ (parameter.getNormalizedValue(), c.normalised);
        EXPECT_EQ (parameter.getBoolValue(), c.boolean);
        EXPECT_EQ (parameter.getStringValue(), juce::String (c.text));
    }
}

TEST (IntParameter, ConstructorClampsTheStartValue)
{
    EXPECT_EQ (IntParameter (0, "p", 0, 127, 200).getIntValue(), 127);
    EXPECT_EQ (IntParameter (0, "p", 0, 127, -5).getIntValue(), 0);
}

TEST (IntParameter, EveryStepSurvivesTheNormalisedRoundTrip)
{
    IntParameter parameter (0, "p", -20, 107, 0);
    IntParameter copy (1, "q", -20, 107, 0);

    for (int step = -20; step <= 107; ++step)
    {
        parameter.setIntValue (step, false);
        copy.setNormalizedValue (parameter.getNormalizedValue(), false);
        EXPECT_EQ (copy.getIntValue(), step);
    }
}
} // namespace
