#include "parameters/StringParameter.h"
#include "parameters/BoolParameter.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{
struct SetterCase
{
    const char* label;
    std::function<void (StringParameter&)> set;
    const char* expected;
};

TEST (StringParameter, SettersWriteText)
{
    const SetterCase cases[] = {
        { "raw half", [] (StringParameter& p) { p.setValue (0.5f, true); }, "0.5" },
        { "raw third", [] (StringParameter& p) { p.setValue (1.0f / 3.0f, true); }, "0.333333343" },
        { "raw large", [] (StringParameter& p) { p.setValue (1e10f, true); }, "1e+10" },
        { "raw negative", [] (StringParameter& p) { p.setValue (-2.0f, true); }, "-2" },
        { "normalised is the same as raw", [] (StringParameter& p) { p.setNormalizedValue (1.5f, true); },
          "1.5" },
        { "integer", [] (StringParameter& p) { p.setIntValue (-42, true); }, "-42" },
        { "bool true", [] (StringParameter& p) { p.setBoolValue (true, true); }, "true" },
        { "bool false", [] (StringParameter& p) { p.setBoolValue (false, true); }, "false" },
        { "text", [] (StringParameter& p) { p.setStringValue ("Init", true); }, "Init" },
        { "from a bool", [] (StringParameter& p) { p.setFrom (BoolParameter (1, "b", 1), true); }, "off" },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.label);
        StringParameter parameter (0, "s", "start");
        c.set (parameter);
        EXPECT_EQ (parameter.getStringValue(), juce::String (c.expected));
    }
}

struct ViewCase
{
    const char* text;
    float raw;
    float normalised;
    int integer;
};

TEST (StringParameter, NumericViewsParseTheText)
{
    const ViewCase cases[] = {
        { "0.25", 0.25f, 0.25f, 0 },
        { "2", 2.0f, 1.0f, 2 },
        { "-1", -1.0f, 0.0f, -1 },
        { "abc", 0.0f, 0.0f, 0 },
        { "12abc", 12.0f, 1.0f, 12 },
        { "", 0.0f, 0.0f, 0 },
        { "1e300", std::numeric_limits<float>::infinity(), 1.0f, 1 },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        const StringParameter parameter (0, "s", c.text);
        EXPECT_FLOAT_EQ (parameter.getValue(), c.raw);
        EXPECT_FLOAT_EQ (parameter.getNormalizedValue(), c.normalised);
        EXPECT_EQ (parameter.getIntValue(), c.integer);
    }
}

TEST (StringParameter, ImmediateListenerReadsTheNewTextInsideTheSetter)
{
    struct Reader : Parameter::Listener
    {
        void parameterChanged (Parameter* p) override { seen = p->getStringValue(); }
        juce::String seen;
    };

    StringParameter parameter (110001, "Current Preset Name", "");
    Reader reader;
    parameter.addImmediateListener (&reader);
    parameter.setStringValue ("Lo-Fi Drums", true);
    EXPECT_EQ (reader.seen, "Lo-Fi Drums");
}

TEST (StringParameter, VeryLongTextIsKeptWhole)
{
    const auto text = juce::String::repeatedString ("x", 100000);
    StringParameter parameter (0, "s", "");
    parameter.setStringValue (text, true);
    EXPECT_EQ (parameter.getStringValue(), text);
    EXPECT_EQ (parameter.clone()->getStringValue(), text);
}
} // namespace
