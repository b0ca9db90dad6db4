#include "dsp/ParameterIndex.h"
#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"
#include "parameters/ParameterManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <thread>
#include <vector>

namespace
{
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

void pumpMessages() { juce::MessageManager::getInstance()->runDispatchLoopUntil (20); }

std::unique_ptr<juce::XmlElement> tableOf (const juce::String& rows)
{
    auto xml = juce::XmlDocument::parse ("<PluginParameters>" + rows + "</PluginParameters>");
    EXPECT_NE (xml, nullptr) << rows;
    return xml;
}

/** A parameter as the table loader makes it from one row of number 0. */
std::unique_ptr<Parameter> fromRow (const juce::String& row)
{
    ParameterManager manager;
    manager.loadFromXml (*tableOf (row));
    auto* parameter = manager.getParameter (0);
    return parameter != nullptr ? parameter->clone() : nullptr;
}

// One row of each type.
const char* const floatRow = R"(<param index="0" name="p" type="float" min="0" max="10" value="0"/>)";
const char* const intRow = R"(<param index="0" name="p" type="int" min="0" max="10" value="1"/>)";
const char* const signedIntRow = R"(<param index="0" name="p" type="int" min="-10" max="10" value="1"/>)";
const char* const widestIntRow =
    R"(<param index="0" name="p" type="int" min="-2147483648" max="2147483647" value="0"/>)";
const char* const boolRow = R"(<param index="0" name="p" type="bool" value="false"/>)";
const char* const stateRow = R"(<param index="0" name="p" type="state" value="0"/>)";
const char* const enumRow = R"(<param index="0" name="p" type="enum" enum="a;b;c" value="a"/>)";
const char* const gappedEnumRow = R"(<param index="0" name="p" type="enum" enum="a;;b;" value="a"/>)";
const char* const noteRow = R"(<param index="0" name="p" type="note" value="C-0"/>)";
const char* const stringRow = R"(<param index="0" name="p" type="string" value="x"/>)";

enum class Setter
{
    raw,
    normalised,
    integer,
    boolean,
    text
};

struct InputCase
{
    const char* row;
    Setter setter;
    float number;
    const char* text;
    const char* expected;
};

// What each type makes of each kind of input, read back as its text.
const InputCase inputCases[] = {
    { floatRow, Setter::normalised, 0.5f, "", "5.000000000" },
    { floatRow, Setter::normalised, 1.5f, "", "10.000000000" },
    { floatRow, Setter::normalised, nan, "", "0.000000000" },
    { floatRow, Setter::raw, 12.0f, "", "10.000000000" },
    { floatRow, Setter::boolean, 1, "", "10.000000000" },
    { floatRow, Setter::text, 0, "7.5 units", "7.500000000" },
    { floatRow, Setter::text, 0, "1e300", "10.000000000" },
    { intRow, Setter::normalised, 0.55f, "", "6" },
    { intRow, Setter::normalised, 0.54f, "", "5" },
    { intRow, Setter::normalised, 0.05f, "", "1" },
    { intRow, Setter::normalised, nan, "", "0" },
    { intRow, Setter::raw, 3.9f, "", "3" },
    { intRow, Setter::raw, nan, "", "0" },
    { intRow, Setter::text, 0, "7 steps", "7" },
    { intRow, Setter::text, 0, "6.9", "6" },
    { intRow, Setter::text, 0, "4294967296", "10" },
    { signedIntRow, Setter::raw, -3.9f, "", "-3" },
    { signedIntRow, Setter::text, 0, "-4294967296", "-10" },
    { widestIntRow, Setter::normalised, 1.0f, "", "2147483647" },
    { widestIntRow, Setter::normalised, 0.0f, "", "-2147483648" },
    { boolRow, Setter::normalised, 0.5f, "", "true" },
    { boolRow, Setter::normalised, nan, "", "false" },
    { boolRow, Setter::raw, -1.0f, "", "true" },
    { boolRow, Setter::raw, nan, "", "true" },
    { boolRow, Setter::raw, -0.0f, "", "false" },
    { boolRow, Setter::text, 0, "Yes", "false" },
    { boolRow, Setter::text, 0, "0.5", "true" },
    { boolRow, Setter::text, 0, "0.4", "false" },
    { stateRow, Setter::text, 0, "1", "on" },
    { enumRow, Setter::text, 0, "b", "b" },
    { enumRow, Setter::text, 0, "B", "a" },
    { enumRow, Setter::text, 0, "1", "c" },
    { enumRow, Setter::normalised, 0.5f, "", "b" },
    { gappedEnumRow, Setter::integer, 2, "", "b" },
    { gappedEnumRow, Setter::integer, 1, "", "" },
    { noteRow, Setter::text, 0, "C#3", "C#3" },
    { noteRow, Setter::text, 0, "E#4", "E-4" },
    { noteRow, Setter::text, 0, "B#2", "B-2" },
    { noteRow, Setter::text, 0, "G#X", "G-X" },
    { noteRow, Setter::text, 0, "c-3", "C-0" },
    { noteRow, Setter::text, 0, "0.5", "E-5" },
    { noteRow, Setter::integer, 200, "", "G-X" },
    { stringRow, Setter::raw, 0.25f, "", "0.25" },
    { stringRow, Setter::integer, 7, "", "7" },
    { stringRow, Setter::boolean, 1, "", "true" },
};

class ParameterInput : public ::testing::TestWithParam<InputCase>
{
};

TEST_P (ParameterInput, ReadsBackAsItsText)
{
    const auto& c = GetParam();
    auto parameter = fromRow (c.row);
    ASSERT_NE (parameter, nullptr);
    switch (c.setter)
    {
        case Setter::raw:
            parameter->setValue (c.number, true);
            break;
        case Setter::normalised:
            parameter->setNormalizedValue (c.number, true);
            break;
        case Setter::integer:
            parameter->setIntValue ((int) c.number, true);
            break;
        case Setter::boolean:
            parameter->setBoolValue (c.number != 0.0f, true);
            break;
        case Setter::text:
            parameter->setStringValue (c.text, true);
            break;
    }
    EXPECT_EQ (parameter->getStringValue(), juce::String (c.expected));
}

INSTANTIATE_TEST_SUITE_P (Types, ParameterInput, ::testing::ValuesIn (inputCases));

struct ViewCase
{
    const char* row;
    float value;
    float normalised;
    int integer;
    bool boolean;
};

// Every numeric view of a value that a row starts with.
const ViewCase viewCases[] = {
    { R"(<param index="0" name="p" min="0" max="10" value="5"/>)", 5.0f, 0.5f, 5, true },
    { R"(<param index="0" name="p" min="0" max="10" value="4.9"/>)", 4.9f, 0.49f, 4, false },
    { R"(<param index="0" name="p" min="-3e9" max="3e9" value="3e9"/>)", 3e9f, 1.0f, 2147483647, true },
    { R"(<param index="0" name="p" type="int" min="-10" max="10" value="-3"/>)", -3.0f, 0.35f, -3, true },
    { R"(<param index="0" name="p" type="int" min="5" max="15" value="5"/>)", 5.0f, 0.0f, 5, false },
    { R"(<param index="0" name="p" type="bool" value="true"/>)", 1.0f, 1.0f, 1, true },
    { R"(<param index="0" name="p" type="enum" enum="a;b;c" value="b"/>)", 1.0f, 0.5f, 1, true },
    { R"(<param index="0" name="p" type="note" value="C-5"/>)", 60.0f, 60.0f / 127.0f, 60, true },
    { R"(<param index="0" name="p" type="string" value="12abc"/>)", 12.0f, 1.0f, 12, true },
    { R"(<param index="0" name="p" type="string" value="-0.5"/>)", -0.5f, 0.0f, 0, false },
    { R"(<param index="0" name="p" type="string" value="true"/>)", 0.0f, 0.0f, 0, true },
};

TEST (ParameterViews, EveryTypeAnswersEveryView)
{
    for (const auto& c : viewCases)
    {
        SCOPED_TRACE (c.row);
        const auto parameter = fromRow (c.row);
        ASSERT_NE (parameter, nullptr);
        EXPECT_FLOAT_EQ (parameter->getValue(), c.value);
        EXPECT_FLOAT_EQ (parameter->getNormalizedValue(), c.normalised);
        EXPECT_EQ (parameter->getIntValue(), c.integer);
        EXPECT_EQ (parameter->getBoolValue(), c.boolean);
    }
}

// Every step of the stepped types comes back from its text and from its normalised value.
TEST (ParameterViews, EveryStepSurvivesItsTextAndItsNormalisedValue)
{
    const char* rows[] = {
        R"(<param index="0" name="p" type="int" min="-20" max="107" value="0"/>)",
        noteRow,
        enumRow,
        boolRow,
        stateRow,
    };
    for (const auto* row : rows)
    {
        SCOPED_TRACE (row);
        auto parameter = fromRow (row);
        auto byText = parameter->clone();
        auto byNumber = parameter->clone();
        parameter->setNormalizedValue (0.0f, false);
        const int first = parameter->getIntValue();
        parameter->setNormalizedValue (1.0f, false);
        for (int step = first; step <= parameter->getIntValue(); ++step)
        {
            auto stepped = parameter->clone();
            stepped->setIntValue (step, false);
            byText->setStringValue (stepped->getStringValue(), false);
            byNumber->setNormalizedValue (stepped->getNormalizedValue(), false);
            EXPECT_EQ (byText->getIntValue(), step) << stepped->getStringValue();
            EXPECT_EQ (byNumber->getIntValue(), step);
        }
    }
}

struct TableCase
{
    const char* rows;
    int count;
    const char* expected; // "number=name:text" for each parameter found
};

// The loader takes well-formed rows and skips everything else, keeping the first of two rows that share a
// number or a name.
const TableCase tableCases[] = {
    { R"(<param index="3" name="A" value="0.75"/>)", 1, "3=A:0.750000000" },
    { R"(<param index="3" name="A" min="2" max="4" value="x"/>)", 1, "3=A:2.000000000" },
    { R"(<param index="3" name="A" type="int" value="5"/>)", 1, "3=A:1" },
    { R"(<param index="3" name="A" type="int" min="-5" max="5" value="-3xyz"/>)", 1, "3=A:-3" },
    { R"(<param index="3" name="A" type="state" value="0.2"/>)", 1, "3=A:off" },
    { R"(<param index="3" name="A" type="note" value="0.5"/>)", 1, "3=A:C-0" },
    { R"(<param name="no index"/><param index="-1" name="b"/><param index="abc" name="c"/>
         <param index="1.5" name="d"/><param index="" name="e"/><param index="4"/><param index="4" name=""/>
         <param index="4" name="f" type="double"/><param index="4" name="g" type="Float"/>
         <param index="9" name="last"/>)",
      1, "9=last:0.000000000" },
    { R"(<!-- c --><parameter index="1" name="b"/><group><param index="2" name="c"/></group>
         <param index="3" name="d"/>)",
      1, "3=d:0.000000000" },
    { R"(<param index="0" name="a" value="0.25"/><param index="0" name="b" value="0.5"/>
         <param index="1" name="a" value="0.75"/><param index="2" name="c"/>)",
      2, "0=a:0.250000000 2=c:0.000000000" },
};

TEST (ParameterTable, LoadsTheRowsItCanAndSkipsTheRest)
{
    for (const auto& c : tableCases)
    {
        SCOPED_TRACE (c.rows);
        ParameterManager manager;
        manager.loadFromXml (*tableOf (c.rows));
        EXPECT_EQ (manager.getNumParameters(), c.count);
        juce::StringArray found;
        for (int index = -1; index < 10; ++index)
            if (auto* p = manager.getParameter (index))
            {
                EXPECT_EQ (manager.getParameterByName (p->getName()), p);
                found.add (juce::String (index) + "=" + p->getName() + ":" + p->getStringValue());
            }
        EXPECT_EQ (found.joinIntoString (" "), juce::String (c.expected));
    }
}

TEST (ParameterTable, AutomatableOnlyWhenTheRowSaysSo)
{
    for (const auto* word : { "true", "1", "yes", "T", "  y" })
        EXPECT_TRUE (
            fromRow (juce::String (R"(<param index="0" name="p" auto=")") + word + "\"/>")->isAutomatable())
            << word;
    for (const auto* row : { R"(<param index="0" name="p" auto="false"/>)",
                             R"(<param index="0" name="p" auto=""/>)", R"(<param index="0" name="p"/>)" })
        EXPECT_FALSE (fromRow (row)->isAutomatable()) << row;
}

struct Recorder : Parameter::Listener
{
    void parameterChanged (Parameter* parameter) override
    {
        values.push_back (parameter->getValue());
        if (onChange)
            onChange (parameter);
    }
    std::vector<float> values;
    std::function<void (Parameter*)> onChange;
};

// A change is told at once to the immediate listeners and once, later, to the deferred ones; a value
// that doesn't change, or a change made without notifying, tells nobody. A clone has no listeners.
TEST (ParameterNotification, ChangesAreToldOnceAndOnlyWhenAsked)
{
    for (const auto* row : { floatRow, intRow, enumRow, noteRow, stateRow, stringRow })
    {
        SCOPED_TRACE (row);
        auto parameter = fromRow (row);
        Recorder immediate, deferred;
        parameter->addImmediateListener (&immediate);
        parameter->addImmediateListener (&immediate);
        parameter->addDeferredListener (&deferred);
        auto flip = [&parameter] (bool notify)
        { parameter->setNormalizedValue (parameter->getNormalizedValue() > 0.5f ? 0.0f : 1.0f, notify); };

        parameter->setStringValue (parameter->getStringValue(), true);
        parameter->setFrom (*parameter->clone(), true);
        flip (false);
        EXPECT_FALSE (parameter->isUpdatePending());
        auto copy = parameter->clone();
        copy->setFrom (*fromRow (row), true);
        pumpMessages();
        EXPECT_TRUE (immediate.values.empty());
        EXPECT_TRUE (deferred.values.empty());

        flip (true);
        flip (true);
        EXPECT_EQ (immediate.values.size(), 2u);
        EXPECT_TRUE (deferred.values.empty());
        pumpMessages();
        EXPECT_EQ (deferred.values, std::vector<float>{ parameter->getValue() });

        parameter->removeDeferredListener (&deferred);
        flip (true);
        pumpMessages();
        EXPECT_EQ (deferred.values.size(), 1u);
    }
}

// Four listeners, walked 3, 2, 1, 0. Whoever stays in the list is called exactly once; one removed before
// its turn isn't called.
TEST (ParameterNotification, ListenerRemovedDuringTheWalkSkipsNobody)
{
    const std::pair<int, int> cases[] = { { 3, 3 }, { 2, 2 }, { 0, 0 }, { 3, 0 }, { 3, 1 },
                                          { 2, 0 }, { 1, 3 }, { 0, 3 }, { 2, 3 } };
    for (const bool deferred : { false, true })
    {
        for (const auto& [remover, removed] : cases)
        {
            SCOPED_TRACE (juce::String (deferred ? "deferred, " : "immediate, ") + juce::String (remover)
                          + " removes " + juce::String (removed));
            FloatParameter parameter (0, "p", 0, 1, 0);
            Recorder listeners[4];
            std::vector<int> order;
            for (int i = 0; i < 4; ++i)
            {
                listeners[i].onChange = [&order, i] (Parameter*) { order.push_back (i); };
                if (deferred)
                    parameter.addDeferredListener (&listeners[i]);
                else
                    parameter.addImmediateListener (&listeners[i]);
            }
            listeners[remover].onChange = [&, r = remover, d = removed] (Parameter* p)
            {
                order.push_back (r);
                if (deferred)
                    p->removeDeferredListener (&listeners[d]);
                else
                    p->removeImmediateListener (&listeners[d]);
            };
            parameter.setValue (1.0f, true);
            pumpMessages();
            std::vector<int> expected;
            for (int i = 3; i >= 0; --i)
                if (!(i == removed && i < remover))
                    expected.push_back (i);
            EXPECT_EQ (order, expected);
        }
    }
}

TEST (ParameterNotification, BurstFromAnotherThreadReachesTheMessageThreadOnce)
{
    FloatParameter parameter (0, "p", 0, 1000, 0);
    Recorder deferred;
    parameter.addDeferredListener (&deferred);
    const auto messageThread = std::this_thread::get_id();
    std::thread::id seenOn;
    deferred.onChange = [&] (Parameter*) { seenOn = std::this_thread::get_id(); };

    std::thread writer (
        [&parameter]
        {
            for (int i = 1; i <= 500; ++i)
                parameter.setValue ((float) i, true);
        });
    writer.join();
    pumpMessages();

    EXPECT_EQ (deferred.values, (std::vector<float>{ 500.0f }));
    EXPECT_EQ (seenOn, messageThread);
}
} // namespace
