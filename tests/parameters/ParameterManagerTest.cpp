#include "parameters/ParameterManager.h"
#include "ExpectedPlugin.h"
#include "parameters/BoolParameter.h"
#include "parameters/EnumParameter.h"
#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"
#include "parameters/NoteParameter.h"
#include "parameters/StringParameter.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
constexpr int pumpMilliseconds = 20;

std::unique_ptr<juce::XmlElement> parse (const juce::String& text)
{
    auto xml = juce::XmlDocument::parse (text);
    EXPECT_NE (xml, nullptr) << text;
    return xml;
}

std::unique_ptr<juce::XmlElement> tableOf (const juce::String& rows)
{
    return parse ("<PluginParameters application=\"Vantrice\">" + rows + "</PluginParameters>");
}

struct Recorder : Parameter::Listener
{
    void parameterChanged (Parameter* parameter) override { seen.push_back (parameter->getIndex()); }
    std::vector<int> seen;
};

TEST (ParameterManager, EmbeddedTableHoldsTheEighteenHostParameters)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    ASSERT_EQ (manager.getNumParameters(), ParameterIndex::count);

    for (int index = 0; index < ParameterIndex::count; ++index)
    {
        const auto& row = ExpectedPlugin::parameters[(size_t) index];
        SCOPED_TRACE (row.name);
        auto* parameter = dynamic_cast<FloatParameter*> (manager.getParameter (index));
        ASSERT_NE (parameter, nullptr);
        EXPECT_EQ (parameter->getName(), juce::String (row.name));
        EXPECT_EQ (manager.getParameterByName (row.name), parameter);
        EXPECT_FLOAT_EQ (parameter->getValue(), row.defaultValue);
        EXPECT_FLOAT_EQ (parameter->getMinimum(), 0.0f);
        EXPECT_FLOAT_EQ (parameter->getMaximum(), 1.0f);
        EXPECT_TRUE (parameter->isAutomatable());
    }

    EXPECT_EQ (manager.getParameter (ParameterIndex::count), nullptr);
}

TEST (ParameterManager, ResourceKeyIgnoresCaseAndAMissingResourceKeepsTheTable)
{
    ParameterManager manager;
    manager.loadFromResource ("PARAMETERS.XML");
    EXPECT_EQ (manager.getNumParameters(), ParameterIndex::count);

    manager.loadFromResource ("missing.xml");
    manager.loadFromResource ("parameters");
    manager.loadFromResource ("");
    EXPECT_EQ (manager.getNumParameters(), ParameterIndex::count);
}

TEST (ParameterManager, PresetParametersJoinTheTable)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    EXPECT_TRUE (manager.addParameter (new IntParameter (110000, "Current Preset Number", 0, 127, 0)));
    EXPECT_TRUE (manager.addParameter (new StringParameter (110001, "Current Preset Name", "")));

    EXPECT_EQ (manager.getParameterName (110001), "Current Preset Name");
    EXPECT_EQ (manager.getParameterName (110000), "Current Preset Number");
    EXPECT_FALSE (manager.getParameter (110000)->isAutomatable());
    EXPECT_EQ (manager.getNumParameters(), 20);
}

struct RowCase
{
    const char* label;
    const char* row;
    float value;
    const char* text;
    bool automatable;
};

TEST (ParameterManager, EachTypeMakesItsClassAndStartValue)
{
    const RowCase cases[] = {
        { "no type is float", R"(<param index="3" name="A" value="0.75"/>)", 0.75f, "0.750000000", false },
        { "float above its max", R"(<param index="3" name="A" type="float" min="0" max="10" value="12"/>)",
          10.0f, "10.000000000", false },
        { "float no number", R"(<param index="3" name="A" type="float" min="2" max="4" value="x"/>)", 2.0f,
          "2.000000000", false },
        { "float no value", R"(<param index="3" name="A" min="-1" max="1"/>)", 0.0f, "0.000000000", false },
        { "int without range", R"(<param index="3" name="A" type="int" value="5"/>)", 1.0f, "1", false },
        { "int leading integer", R"(<param index="3" name="A" type="int" min="-5" max="5" value="-3xyz"/>)",
          -3.0f, "-3", false },
        { "string", R"(<param index="3" name="A" type="string" value="hello"/>)", 0.0f, "hello", false },
        { "bool", R"(<param index="3" name="A" type="bool" value="yes"/>)", 1.0f, "true", false },
        { "state", R"(<param index="3" name="A" type="state" value="1"/>)", 1.0f, "on", false },
        { "state off", R"(<param index="3" name="A" type="state" value="0.2"/>)", 0.0f, "off", false },
        { "enum by item", R"(<param index="3" name="A" type="enum" enum="a;b;c" value="b"/>)", 1.0f, "b",
          false },
        { "enum by number", R"(<param index="3" name="A" type="enum" enum="a;b;c" value="1"/>)", 2.0f, "c",
          false },
        { "note", R"(<param index="3" name="A" type="note" value="C#3"/>)", 37.0f, "C#3", false },
        { "note no note text", R"(<param index="3" name="A" type="note" value="0.5"/>)", 0.0f, "C-0", false },
        { "auto true", R"(<param index="3" name="A" value="0" auto="true"/>)", 0.0f, "0.000000000", true },
        { "auto 1", R"(<param index="3" name="A" value="0" auto="1"/>)", 0.0f, "0.000000000", true },
        { "auto yes", R"(<param index="3" name="A" value="0" auto="yes"/>)", 0.0f, "0.000000000", true },
        { "auto T", R"(<param index="3" name="A" value="0" auto="T"/>)", 0.0f, "0.000000000", true },
        { "auto after blanks", R"(<param index="3" name="A" value="0" auto="  y"/>)", 0.0f, "0.000000000",
          true },
        { "auto false", R"(<param index="3" name="A" value="0" auto="false"/>)", 0.0f, "0.000000000", false },
        { "auto 0", R"(<param index="3" name="A" value="0" auto="0"/>)", 0.0f, "0.000000000", false },
        { "auto empty", R"(<param index="3" name="A" value="0" auto=""/>)", 0.0f, "0.000000000", false },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.label);
        ParameterManager manager;
        manager.loadFromXml (*tableOf (c.row));
        ASSERT_EQ (manager.getNumParameters(), 1);
        auto* parameter = manager.getParameter (3);
        ASSERT_NE (parameter, nullptr);
        EXPECT_EQ (parameter->getName(), "A");
        EXPECT_FLOAT_EQ (parameter->getValue(), c.value);
        EXPECT_EQ (parameter->getStringValue(), juce::String (c.text));
        EXPECT_EQ (parameter->isAutomatable(), c.automatable);
        EXPECT_FALSE (parameter->isUpdatePending());
    }
}

TEST (ParameterManager, TypeWordsMakeTheirClasses)
{
    ParameterManager manager;
    manager.loadFromXml (*tableOf (R"(<param index="1" name="f" type="float"/>
                                      <param index="2" name="i" type="int"/>
                                      <param index="3" name="s" type="string"/>
                                      <param index="4" name="b" type="bool"/>
                                      <param index="5" name="st" type="state"/>
                                      <param index="6" name="e" type="enum" enum="x;y"/>
                                      <param index="7" name="n" type="note"/>)"));

    EXPECT_NE (dynamic_cast<FloatParameter*> (manager.getParameter (1)), nullptr);
    EXPECT_NE (dynamic_cast<IntParameter*> (manager.getParameter (2)), nullptr);
    EXPECT_NE (dynamic_cast<StringParameter*> (manager.getParameter (3)), nullptr);
    EXPECT_EQ (dynamic_cast<BoolParameter*> (manager.getParameter (4))->getDisplayStyle(), 0);
    EXPECT_EQ (dynamic_cast<BoolParameter*> (manager.getParameter (5))->getDisplayStyle(), 1);
    EXPECT_NE (dynamic_cast<EnumParameter*> (manager.getParameter (6)), nullptr);
    EXPECT_NE (dynamic_cast<NoteParameter*> (manager.getParameter (7)), nullptr);
}

TEST (ParameterManager, MalformedRowsAreSkippedAndTheRestLoads)
{
    const char* badRows[] = {
        R"(<param name="no index" value="0.5"/>)",
        R"(<param index="-1" name="minus one"/>)",
        R"(<param index="abc" name="not a number"/>)",
        R"(<param index="1.5" name="not whole"/>)",
        R"(<param index="" name="empty index"/>)",
        R"(<param index="4"/>)",
        R"(<param index="4" name=""/>)",
        R"(<param index="4" name="unknown type" type="double"/>)",
        R"(<param index="4" name="type case" type="Float"/>)",
        R"(<param index="4" name="empty type" type=""/>)",
    };

    for (const auto* bad : badRows)
    {
        SCOPED_TRACE (bad);
        ParameterManager manager;
        manager.loadFromXml (*tableOf (juce::String (R"(<param index="0" name="first"/>)") + bad
                                       + R"(<param index="9" name="last"/>)"));
        EXPECT_EQ (manager.getNumParameters(), 2);
        EXPECT_EQ (manager.getParameterName (0), "first");
        EXPECT_EQ (manager.getParameterName (9), "last");
    }
}

TEST (ParameterManager, OtherElementsAndCommentsAreSkipped)
{
    ParameterManager manager;
    manager.loadFromXml (*tableOf (R"(<!-- Main --><param index="0" name="a"/><parameter index="1" name="b"/>
                                      <group><param index="2" name="c"/></group><param index="3" name="d"/>)"));
    EXPECT_EQ (manager.getNumParameters(), 2);
    EXPECT_NE (manager.getParameter (0), nullptr);
    EXPECT_NE (manager.getParameter (3), nullptr);
}

TEST (ParameterManager, FirstOfTwoRowsWithOneNumberOrNameWins)
{
    ParameterManager manager;
    manager.loadFromXml (*tableOf (R"(<param index="0" name="a" value="0.25"/>
                                      <param index="0" name="b" value="0.5"/>
                                      <param index="1" name="a" value="0.75"/>
                                      <param index="2" name="c"/>)"));
    EXPECT_EQ (manager.getNumParameters(), 2);
    EXPECT_EQ (manager.getParameterName (0), "a");
    EXPECT_FLOAT_EQ (manager.getValue (0), 0.25f);
    EXPECT_EQ (manager.getParameter (1), nullptr);
    EXPECT_EQ (manager.getParameterByName ("b"), nullptr);
}

TEST (ParameterManager, RefusedParameterIsDeletedNotLeaked)
{
    struct Tracked : FloatParameter
    {
        Tracked (int number, const juce::String& text, int& deletionCount)
            : FloatParameter (number, text, 0, 1, 0)
            , deleted (deletionCount)
        {
        }
        ~Tracked() override { ++deleted; }
        int& deleted;
    };

    int deletions = 0;
    {
        ParameterManager manager;
        EXPECT_TRUE (manager.addParameter (new Tracked (0, "a", deletions)));
        EXPECT_FALSE (manager.addParameter (new Tracked (0, "other name", deletions)));
        EXPECT_EQ (deletions, 1);
        EXPECT_FALSE (manager.addParameter (new Tracked (5, "a", deletions)));
        EXPECT_EQ (deletions, 2);

        auto* kept = manager.getParameter (0);
        EXPECT_FALSE (manager.addParameter (kept));
        EXPECT_EQ (deletions, 2);
        EXPECT_EQ (manager.getParameter (0), kept);
        EXPECT_FALSE (manager.addParameter (nullptr));
        EXPECT_EQ (manager.getNumParameters(), 1);
    }
    EXPECT_EQ (deletions, 3);
}

TEST (ParameterManager, DocumentsWithoutParametersGiveAnEmptyTable)
{
    const char* documents[] = {
        "<PluginParameters/>",
        R"(<PluginParams><param index="0" name="a"/></PluginParams>)",
        R"(<pluginparameters><param index="0" name="a"/></pluginparameters>)",
        R"(<EventsMap><event uid="1" name="x"/></EventsMap>)",
    };

    for (const auto* document : documents)
    {
        SCOPED_TRACE (document);
        ParameterManager manager;
        manager.loadFromResource ("parameters.xml");
        manager.loadFromXml (*parse (document));
        EXPECT_EQ (manager.getNumParameters(), 0);
        EXPECT_EQ (manager.getParameter (0), nullptr);
        EXPECT_EQ (manager.getParameterByName ("Preamp"), nullptr);
    }
}

TEST (ParameterManager, VeryLongNamesAndValuesLoad)
{
    const auto longName = juce::String::repeatedString ("n", 50000);
    const auto longValue = "0.5" + juce::String::repeatedString ("0", 50000);
    auto table = std::make_unique<juce::XmlElement> ("PluginParameters");
    auto* row = table->createNewChildElement ("param");
    row->setAttribute ("index", 7);
    row->setAttribute ("name", longName);
    row->setAttribute ("value", longValue);

    ParameterManager manager;
    manager.loadFromXml (*table);
    EXPECT_FLOAT_EQ (manager.getValue (7), 0.5f);
    EXPECT_EQ (manager.getParameterByName (longName), manager.getParameter (7));
}

TEST (ParameterManager, UnknownNumbersGiveNeutralAnswersAndIgnoreWrites)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    Recorder recorder;

    for (const int index : { -1, (int) ParameterIndex::count, 110000, 2147483647 })
    {
        SCOPED_TRACE (index);
        EXPECT_EQ (manager.getParameter (index), nullptr);
        EXPECT_EQ (manager.getParameterName (index), "");
        EXPECT_FLOAT_EQ (manager.getValue (index), 0.0f);
        EXPECT_FLOAT_EQ (manager.getNormalizedValue (index), 0.0f);
        EXPECT_FALSE (manager.getBoolValue (index));
        EXPECT_EQ (manager.getStringValue (index), "");
        manager.setNormalizedValue (index, 1.0f);
        manager.setIntValue (index, 1);
        manager.setStringValue (index, "1");
        manager.addImmediateListener (index, &recorder);
        manager.addDeferredListener (index, &recorder);
        manager.removeDeferredListener (index, &recorder);
    }

    EXPECT_EQ (manager.getParameterByName ("Nothing"), nullptr);
    EXPECT_EQ (manager.getParameterByName (""), nullptr);
    EXPECT_EQ (manager.getParameterByName ("preamp"), nullptr);
    EXPECT_TRUE (recorder.seen.empty());
}

TEST (ParameterManager, ValueAccessByNumberNotifies)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    Recorder recorder;
    manager.addImmediateListener (15, &recorder);

    manager.setNormalizedValue (15, 0.25f);
    EXPECT_FLOAT_EQ (manager.getNormalizedValue (15), 0.25f);
    manager.setStringValue (15, "0.75");
    EXPECT_EQ (manager.getStringValue (15), "0.750000000");
    EXPECT_TRUE (manager.getBoolValue (15));
    manager.setIntValue (15, 0);
    EXPECT_FLOAT_EQ (manager.getValue (15), 0.0f);
    manager.setIntValue (15, 0);

    EXPECT_EQ (recorder.seen, (std::vector<int>{ 15, 15, 15 }));
    juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds);
}

TEST (ParameterManager, ListenersOnEveryParameterAndNotifyAll)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    Recorder immediate, deferred;

    manager.addImmediateListenerToAll (&immediate);
    manager.addImmediateListenerToAll (&immediate);
    manager.addImmediateListenerToAll (nullptr);
    manager.addDeferredListenerToAll (&deferred);

    manager.notifyAll();

    std::vector<int> inTableOrder;

    for (int i = 0; i < ParameterIndex::count; ++i)
        inTableOrder.push_back (i);

    EXPECT_EQ (immediate.seen, inTableOrder);
    juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds);
    EXPECT_EQ (deferred.seen.size(), (size_t) ParameterIndex::count);

    manager.removeDeferredListenerFromAll (&deferred);
    deferred.seen.clear();
    manager.notifyAll();
    juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds);
    EXPECT_TRUE (deferred.seen.empty());
}

TEST (ParameterManager, ClearEmptiesBothLookups)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    manager.clear();
    EXPECT_EQ (manager.getNumParameters(), 0);
    EXPECT_EQ (manager.getParameter (0), nullptr);
    EXPECT_EQ (manager.getParameterByName ("Preamp"), nullptr);

    EXPECT_TRUE (manager.addParameter (new FloatParameter (0, "Preamp", 0, 1, 0)));
}
} // namespace
