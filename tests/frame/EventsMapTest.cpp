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

// Names and numbers are unique both ways, so a document's row wins over a built-in event of the same
// number or name; rows are read in order with defaults for what they lack.
TEST (EventsMap, DocumentRowsComeFirstAndEachNumberAndNameOnce)
{
    EventsMap events;
    events.loadFromXml (*parse (R"(<EventsMap>
                                     <event uid="1000" name="Open options"/>
                                     <event uid="5" name="About"/>
                                     <event uid="5" name="Same uid"/>
                                     <event uid="6" name="About"/>
                                     <event name="No uid"/>
                                     <event uid="3"/>
                                     <event uid="abc" name="Text uid"/>
                                     <event uid="99999999999" name="Huge uid"/>
                                     <other uid="4" name="Other tag"/>
                                   </EventsMap>)"));
    events.addBuiltInEvents();

    EXPECT_EQ (events.getEventName (1000), "Open options");
    EXPECT_FALSE (events.hasEvent ("Options"));
    EXPECT_EQ (events.getEventUid ("About"), 5);
    EXPECT_EQ (events.getEventName (1001), "");
    EXPECT_EQ (events.getEventName (0), "No uid");
    EXPECT_EQ (events.getEventName (3), "");
    EXPECT_FALSE (events.hasEvent ("Text uid"));
    EXPECT_EQ (events.getEventUid ("Huge uid"), 2147483647);
    EXPECT_FALSE (events.hasEvent ("Other tag"));
    EXPECT_EQ (events.getEventUid ("Nothing"), -1);
    EXPECT_EQ (events.getEventUid ("Select next preset"), 1002);
    EXPECT_EQ (events.getEventLabel (1010), "Toggle midi learn");
    EXPECT_EQ (events.getNumEvents(), 14);
}

} // namespace
