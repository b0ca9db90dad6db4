#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace
{
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

struct SetterCase
{
    const char* label;
    float minimum;
    float maximum;
    float start;
    std::function<void (FloatParameter&)> set;
    float expected;
};

TEST (FloatParameter, SettersConvertAndClampIntoTheRange)
{
    const SetterCase cases[] = {
        { "normalised above 1", 0, 1, 0.5f, [] (FloatParameter& p) { p.setNormalizedValue (1.5f, true); },
          1.0f },
        { "normalised below 0", 0, 1, 0.5f, [] (FloatParameter& p) { p.setNormalizedValue (-0.5f, true); },
          0.0f },
        { "normalised NaN", 0, 1, 0.5f, [] (FloatParameter& p) { p.setNormalizedValue (nan, true); }, 0.0f },
        { "normalised on a wide range", -10, 10, 0,
          [] (FloatParameter& p) { p.setNormalizedValue (0.75f, true); }, 5.0f },
        { "raw above", 0, 1, 0.5f, [] (FloatParameter& p) { p.setValue (2.0f, true); }, 1.0f },
        { "raw below", 0, 1, 0.5f, [] (FloatParameter& p) { p.setValue (-1.0f, true); }, 0.0f },
        { "raw NaN", 2, 4, 3, [] (FloatParameter& p) { p.setValue (nan, true); }, 2.0f },
        { "raw infinity", 2, 4, 3, [] (FloatParameter& p) { p.setValue (infinity, true); }, 4.0f },
        { "raw minus infinity", 2, 4, 3, [] (FloatParameter& p) { p.setValue (-infinity, true); }, 2.0f },
        { "raw inside", -10, 10, 0, [] (FloatParameter& p) { p.setValue (-2.5f, true); }, -2.5f },
        { "integer above", 0, 1, 0.5f, [] (FloatParameter& p) { p.setIntValue (5, true); }, 1.0f },
        { "integer inside", -10, 10, 0, [] (FloatParameter& p) { p.setIntValue (-3, true); }, -3.0f },
        { "bool true", 2, 4, 3, [] (FloatParameter& p) { p.setBoolValue (true, true); }, 4.0f },
        { "bool false", 2, 4, 3, [] (FloatParameter& p) { p.setBoolValue (false, true); }, 2.0f },
        { "text", 0, 1, 0, [] (FloatParameter& p) { p.setStringValue ("0.75", true); }, 0.75f },
        { "text with a tail", 0, 1, 0, [] (FloatParameter& p) { p.setStringValue ("0.5 dB", true); }, 0.5f },
        { "text no number", 2, 4, 3, [] (FloatParameter& p) { p.setStringValue ("loud", true); }, 2.0f },
        { "text beyond float", 2, 4, 3, [] (FloatParameter& p) { p.setStringValue ("1e300", true); }, 4.0f },
        { "text below float", 2, 4, 3, [] (FloatParameter& p) { p.setStringValue ("-1e300", true); }, 2.0f },
        { "from an int parameter", 0, 1, 0,
          [] (FloatParameter& p) { p.setFrom (IntParameter (9, "i", 0, 10, 7), true); }, 1.0f },
        { "from a float parameter", -10, 10, 0,
          [] (FloatParameter& p) { p.setFrom (FloatParameter (9, "f", -100, 100, -4.5f), true); }, -4.5f },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.label);
        FloatParameter parameter (0, "p", c.minimum, c.maximum, c.start);
        c.set (parameter);
        EXPECT_FLOAT_EQ (parameter.getValue(), c.expected);
    }
}

struct ViewCase
{
    float minimum;
    float maximum;
    float value;
    float normalised;
    int integer;
    bool boolean;
    const char* text;
};

TEST (FloatParameter, ViewsOfTheValue)
{
    const ViewCase cases[] = {
        { 0, 1, 0.5f, 0.5f, 0, true, "0.500000000" },
        { 0, 1, 0.25f, 0.25f, 0, false, "0.250000000" },
        { 0, 1, 0.4999f, 0.4999f, 0, false, "0.499900013" },
        { 0, 1, 1.0f, 1.0f, 1, true, "1.000000000" },
        { 2, 4, 3.0f, 0.5f, 3, true, "3.000000000" },
        { 2, 4, 2.9f, 0.45f, 2, false, "2.900000095" },
        { 0, 10, 7.9f, 0.79f, 7, true, "7.900000095" },
        { -10, 10, -7.9f, 0.105f, -7, false, "-7.900000095" },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        const FloatParameter parameter (0, "p", c.minimum, c.maximum, c.value);
        EXPECT_FLOAT_EQ (parameter.getNormalizedValue(), c.normalised);
        EXPECT_EQ (parameter.getIntValue(), c.integer);
        EXPECT_EQ (parameter.getBoolValue(), c.boolean);
        EXPECT_EQ (parameter.getStringValue(), juce::String (c.text));
    }
}

TEST (FloatParameter, IntegerViewSaturatesBeyondTheIntRange)
{
    EXPECT_EQ (FloatParameter (0, "p", -1e30f, 1e30f, 1e30f).getIntValue(), std::numeric_limits<int>::max());
    EXPECT_EQ (FloatParameter (0, "p", -1e30f, 1e30f, -1e30f).getIntValue(), std::numeric_limits<int>::min());
}

TEST (FloatParameter, ConstructorClampsTheStartValue)
{
    EXPECT_FLOAT_EQ (FloatParameter (0, "p", 0, 1, 5).getValue(), 1.0f);
    EXPECT_FLOAT_EQ (FloatParameter (0, "p", 0, 1, -5).getValue(), 0.0f);
    EXPECT_FLOAT_EQ (FloatParameter (0, "p", 2, 4, nan).getValue(), 2.0f);
}

TEST (FloatParameter, NormalisedSetterIsNotClampedAgain)
{
    // A reversed range maps the unit interval backwards instead of pinning it to one end.
    FloatParameter parameter (0, "p", 1, 0, 1);
    parameter.setNormalizedValue (0.25f, false);
    EXPECT_FLOAT_EQ (parameter.getValue(), 0.75f);
}
} // namespace
