#include "parameters/BoolParameter.h"
#include "parameters/FloatParameter.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace
{
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct StyleCase
{
    int style;
    const char* whenTrue;
    const char* whenFalse;
};

TEST (BoolParameter, DisplayStylesGiveTheirWordPairs)
{
    const StyleCase cases[] = {
        { 0, "true", "false" }, { 1, "on", "off" },     { 2, "1", "0" },
        { 3, "yes", "no" },     { 4, "true", "false" }, { -1, "true", "false" },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.style);
        BoolParameter parameter (0, "b", c.style);
        EXPECT_EQ (parameter.getStringValue(), juce::String (c.whenFalse));
        parameter.setBoolValue (true, false);
        EXPECT_EQ (parameter.getStringValue(), juce::String (c.whenTrue));
    }
}

struct SetterCase
{
    const char* label;
    std::function<void (BoolParameter&)> set;
    bool expected;
};

TEST (BoolParameter, SettersDecideBetweenTrueAndFalse)
{
    const SetterCase cases[] = {
        { "raw 0.1", [] (BoolParameter& p) { p.setValue (0.1f, true); }, true },
        { "raw 0", [] (BoolParameter& p) { p.setValue (0.0f, true); }, false },
        { "raw minus 0", [] (BoolParameter& p) { p.setValue (-0.0f, true); }, false },
        { "raw negative", [] (BoolParameter& p) { p.setValue (-1.0f, true); }, true },
        { "raw NaN", [] (BoolParameter& p) { p.setValue (nan, true); }, true },
        { "normalised 0.1", [] (BoolParameter& p) { p.setNormalizedValue (0.1f, true); }, false },
        { "normalised 0.5", [] (BoolParameter& p) { p.setNormalizedValue (0.5f, true); }, true },
        { "normalised 2", [] (BoolParameter& p) { p.setNormalizedValue (2.0f, true); }, true },
        { "normalised NaN", [] (BoolParameter& p) { p.setNormalizedValue (nan, true); }, false },
        { "integer 2", [] (BoolParameter& p) { p.setIntValue (2, true); }, true },
        { "integer -1", [] (BoolParameter& p) { p.setIntValue (-1, true); }, true },
        { "integer 0", [] (BoolParameter& p) { p.setIntValue (0, true); }, false },
        { "from a float in its upper half",
          [] (BoolParameter& p) { p.setFrom (FloatParameter (1, "f", 0, 1, 0.5f), true); }, true },
        { "from a float in its lower half",
          [] (BoolParameter& p) { p.setFrom (FloatParameter (1, "f", 0, 1, 0.4f), true); }, false },
    };

    for (const auto& c : cases)
    {
        for (const bool start : { false, true })
        {
            SCOPED_TRACE (juce::String (c.label) + (start ? ", from true" : ", from false"));
            BoolParameter parameter (0, "b", 0);
            parameter.setBoolValue (start, false);
            c.set (parameter);
            EXPECT_EQ (parameter.getBoolValue(), c.expected);
        }
    }
}

struct TextCase
{
    const char* text;
    bool expected;
};

TEST (BoolParameter, TextWordsAndNumbers)
{
    const TextCase cases[] = {
        { "true", true },   { "1", true },    { "on", true },   { "yes", true },
        { "false", false }, { "0", false },   { "off", false }, { "no", false },
        { "2", true },      { "0.4", false }, { "0.5", true },  { "TRUE", false },
        { "Yes", false },   { "ON", false },  { "", false },    { "maybe", false },
    };

    for (const auto& c : cases)
    {
        for (const bool start : { false, true })
        {
            SCOPED_TRACE (juce::String (c.text) + (start ? ", from true" : ", from false"));
            BoolParameter parameter (0, "b", 0);
            parameter.setBoolValue (start, false);
            parameter.setStringValue (c.text, true);
            EXPECT_EQ (parameter.getBoolValue(), c.expected);
        }
    }
}

TEST (BoolParameter, NumericViews)
{
    BoolParameter parameter (0, "b", 1);
    EXPECT_FLOAT_EQ (parameter.getValue(), 0.0f);
    EXPECT_FLOAT_EQ (parameter.getNormalizedValue(), 0.0f);
    EXPECT_EQ (parameter.getIntValue(), 0);

    parameter.setBoolValue (true, false);
    EXPECT_FLOAT_EQ (parameter.getValue(), 1.0f);
    EXPECT_FLOAT_EQ (parameter.getNormalizedValue(), 1.0f);
    EXPECT_EQ (parameter.getIntValue(), 1);
}
} // namespace
