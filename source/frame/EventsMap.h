#pragma once

#include <juce_core/juce_core.h>

// The named actions that a skin can trigger: pairs of a unique uid and a unique name, searchable both
// ways.
class EventsMap final
{
public:
    EventsMap();
    virtual ~EventsMap();

    // Adds the pair; false, changing nothing, if the uid or the name is there already.
    bool addEvent (int uid, const juce::String& name);
    bool hasEvent (const juce::String& name) const;
    // The uid of a name that is there; -1 for any other name.
    int getEventUid (const juce::String& name) const;
    // The name of a uid, or the empty text.
    juce::String getEventName (int uid) const;
    // The name with its first character in upper case and all others in lower case.
    juce::String getEventLabel (int uid) const;
    int getNumEvents() const;
    void clear();

    // Loads and parses the embedded resource under key; a missing or unparsable one changes nothing.
    void loadFromResource (const juce::String& key);
    // Replaces the table by the "event" rows of an "EventsMap" document; another root leaves it empty.
    void loadFromXml (const juce::XmlElement& xml);

    // Adds the actions that every plug-in of the family offers. Run after loading "events.xml", so that
    // an entry there wins over a built-in of the same uid or name.
    void addBuiltInEvents();

private:
    juce::HashMap<int, juce::String> namesByUid;
    juce::HashMap<juce::String, int> uidsByName;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (EventsMap)
};
