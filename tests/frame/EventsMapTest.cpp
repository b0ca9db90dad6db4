#include "frame/EventsMap.h"

#include <gtest/gtest.h>

namespace
{
std::unique_ptr<juce::XmlElement> parse (const juce::String& text)
{
    auto xml = juce::XmlDocument::parse (text);
    EXPECT_NE (xml, nullptr) << text;
    return xml;
}

struct BuiltIn
{
    int uid;
    const char* name;
};

const BuiltIn builtIns[] = {
    { 1000, "Options" },
    { 1001, "About" },
    { 1002, "Select next preset" },
    { 1003, "Select previous preset" },
    { 1004, "Browse presets" },
    { 1005, "Save preset" },
    { 1006, "Save preset as" },
    { 1007, "Copy current preset" },
    { 1008, "Paste copied preset" },
    { 1009, "Store current preset" },
    { 1010, "Toggle Midi Learn" },
};

TEST (EventsMap, PairsAreUniqueBothWays)
{
    EventsMap events;
    EXPECT_TRUE (events.addEvent (1, "One"));
    EXPECT_FALSE (events.addEvent (1, "Other"));
    EXPECT_FALSE (events.addEvent (2, "One"));
    EXPECT_TRUE (events.addEvent (2, "one"));
    EXPECT_TRUE (events.addEvent (0, ""));
    EXPECT_FALSE (events.addEvent (3, ""));

    EXPECT_EQ (events.getNumEvents(), 3);
    EXPECT_EQ (events.getEventName (1), "One");
    EXPECT_EQ (events.getEventUid ("One"), 1);
    EXPECT_EQ (events.getEventUid ("one"), 2);
    EXPECT_TRUE (events.hasEvent ("One"));
    EXPECT_FALSE (events.hasEvent ("Other"));
    EXPECT_EQ (events.getEventUid ("Other"), -1);
    EXPECT_EQ (events.getEventName (99), "");
}

struct LabelCase
{
    const char* name;
    const char* label;
};

TEST (EventsMap, LabelCapitalisesOnlyTheFirstCharacter)
{
    const LabelCase cases[] = {
        { "Toggle Midi Learn", "Toggle midi learn" },
        { "save preset AS", "Save preset as" },
        { "a", "A" },
        { "", "" },
        { "1 Two", "1 two" },
        { "  Leading blank", "  leading blank" },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        EventsMap events;
        events.addEvent (7, c.name);
        EXPECT_EQ (events.getEventLabel (7), juce::String (c.label));
    }

    EXPECT_EQ (EventsMap().getEventLabel (7), "");
}

TEST (EventsMap, BuiltInEvents)
{
    EventsMap events;
    events.addBuiltInEvents();
    EXPECT_EQ (events.getNumEvents(), 11);

    for (const auto& event : builtIns)
    {
        SCOPED_TRACE (event.name);
        EXPECT_EQ (events.getEventName (event.uid), event.name);
        EXPECT_EQ (events.getEventUid (event.name), event.uid);
    }

    EXPECT_EQ (events.getEventLabel (1010), "Toggle midi learn");
}

TEST (EventsMap, DocumentEntriesWinOverBuiltInsOfTheSameUidOrName)
{
    EventsMap events;
    events.loadFromXml (*parse (R"(<EventsMap><event uid="1000" name="Open options"/>
                                              <event uid="5" name="About"/>
                                              <event uid="2000" name="Extra"/></EventsMap>)"));
    events.addBuiltInEvents();

    EXPECT_EQ (events.getEventName (1000), "Open options");
    EXPECT_FALSE (events.hasEvent ("Options"));
    EXPECT_EQ (events.getEventUid ("About"), 5);
    EXPECT_EQ (events.getEventName (1001), "");
    EXPECT_EQ (events.getEventName (2000), "Extra");
    EXPECT_EQ (events.getEventName (1010), "Toggle Midi Learn");
    EXPECT_EQ (events.getNumEvents(), 12);
}

TEST (EventsMap, DocumentRowsInOrderWithDefaultsAndRepeatsDropped)
{
    EventsMap events;
    events.loadFromXml (*parse (R"(<EventsMap>
                                     <event uid="1" name="First"/>
                                     <event uid="1" name="Same uid"/>
                                     <event uid="2" name="First"/>
                                     <event name="No uid"/>
                                     <event uid="3"/>
                                     <event uid="abc" name="Text uid"/>
                                     <event uid="99999999999" name="Huge uid"/>
                                     <other uid="4" name="Other tag"/>
                                   </EventsMap>)"));

    EXPECT_EQ (events.getNumEvents(), 4);
    EXPECT_EQ (events.getEventName (1), "First");
    EXPECT_EQ (events.getEventName (0), "No uid");
    EXPECT_EQ (events.getEventName (3), "");
    EXPECT_TRUE (events.hasEvent (""));
    EXPECT_FALSE (events.hasEvent ("Text uid"));
    EXPECT_EQ (events.getEventUid ("Huge uid"), 2147483647);
    EXPECT_FALSE (events.hasEvent ("Other tag"));
}

TEST (EventsMap, LoadingReplacesTheTableAndAnotherRootLeavesItEmpty)
{
    for (const auto* document : { "<Events><event uid=\"1\" name=\"x\"/></Events>", "<EventsMap/>",
                                  "<eventsmap><event uid=\"1\" name=\"x\"/></eventsmap>" })
    {
        SCOPED_TRACE (document);
        EventsMap events;
        events.addBuiltInEvents();
        events.loadFromXml (*parse (document));
        EXPECT_EQ (events.getNumEvents(), 0);
    }
}

TEST (EventsMap, MissingResourceChangesNothing)
{
    EventsMap events;
    events.addBuiltInEvents();
    events.loadFromResource ("events.xml");
    events.loadFromResource ("");
    EXPECT_EQ (events.getNumEvents(), 11);
}

TEST (EventsMap, ResourceWithAnotherRootEmptiesTheTable)
{
    EventsMap events;
    events.addBuiltInEvents();
    events.loadFromResource ("parameters.xml");
    EXPECT_EQ (events.getNumEvents(), 0);
}

TEST (EventsMap, ClearEmptiesBothWays)
{
    EventsMap events;
    events.addBuiltInEvents();
    events.clear();
    EXPECT_EQ (events.getNumEvents(), 0);
    EXPECT_FALSE (events.hasEvent ("Options"));
    EXPECT_EQ (events.getEventName (1000), "");
    EXPECT_TRUE (events.addEvent (1000, "Options"));
}
} // namespace
