#include "EventsMap.h"

#include "common/NumberText.h"
#include "common/ResourceLoader.h"
#include "common/XmlText.h"

namespace
{
// What getEventUid answers for a name that isn't there.
constexpr int unknownUid = -1;

struct BuiltInEvent
{
    int uid;
    const char* name;
};

constexpr BuiltInEvent builtInEvents[] = {
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
} // namespace

EventsMap::EventsMap() = default;

EventsMap::~EventsMap() = default;

bool EventsMap::addEvent (int uid, const juce::String& name)
{
    if (namesByUid.contains (uid) || uidsByName.contains (name))
        return false;

    namesByUid.set (uid, name);
    uidsByName.set (name, uid);
    return true;
}

bool EventsMap::hasEvent (const juce::String& name) const { return uidsByName.contains (name); }

int EventsMap::getEventUid (const juce::String& name) const
{
    return uidsByName.contains (name) ? uidsByName[name] : unknownUid;
}

juce::String EventsMap::getEventName (int uid) const { return namesByUid[uid]; }

juce::String EventsMap::getEventLabel (int uid) const
{
    const auto name = getEventName (uid);
    return name.substring (0, 1).toUpperCase() + name.substring (1).toLowerCase();
}

int EventsMap::getNumEvents() const { return namesByUid.size(); }

void EventsMap::clear()
{
    namesByUid.clear();
    uidsByName.clear();
}

void EventsMap::loadFromResource (const juce::String& key)
{
    const auto text = loadResourceText (key);

    if (text.isEmpty())
        return;

    if (const auto xml = XmlText::parse (text))
        loadFromXml (*xml);
}

void EventsMap::loadFromXml (const juce::XmlElement& xml)
{
    clear();

    if (!XmlText::isTag (xml, "EventsMap"))
        return;

    for (auto* event : xml.getChildIterator())
        if (XmlText::isTag (*event, "event"))
            addEvent (NumberText::leadingInteger (event->getStringAttribute ("uid")),
                      event->getStringAttribute ("name"));
}

void EventsMap::addBuiltInEvents()
{
    for (const auto& event : builtInEvents)
        addEvent (event.uid, event.name);
}
