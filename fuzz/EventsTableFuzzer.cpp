// The events table reader given a foreign document, then the built-in events added behind it.
#include "FuzzHost.h"

#include "frame/EventsMap.h"

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    FuzzHost::get();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    EventsMap events;
    const auto xml = XmlText::parse (data, size);
    if (xml != nullptr)
        events.loadFromXml (*xml);
    events.addBuiltInEvents();

    // Uids and names stay pairs: each found both ways, never twice.
    if (xml != nullptr && xml->hasTagName ("EventsMap"))
        for (auto* row : xml->getChildWithTagNameIterator ("event"))
        {
            const int uid = row->getIntAttribute ("uid");
            const auto name = events.getEventName (uid);
            if (name.isNotEmpty())
                FuzzHost::expect (events.getEventUid (name) == uid, "an event's name leads to another uid");
            const auto rowName = row->getStringAttribute ("name");
            const int found = events.getEventUid (rowName);
            if (found != -1)
                FuzzHost::expect (events.getEventName (found) == rowName,
                                  "an event's uid leads to another name");
        }
    FuzzHost::expect (events.getNumEvents() >= 1, "the built-in events are missing");
    return 0;
}
