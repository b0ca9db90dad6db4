#pragma once

#include "Parameter.h"

// Owns every parameter of the plug-in and finds them by number or by name from any thread. Every lookup
// and value access holds the read side of the lock for the whole call, listeners included; only loading
// takes the write side, so once the table is loaded no reader ever waits.
class ParameterManager final
{
public:
    ParameterManager();
    virtual ~ParameterManager();

    // Parses the embedded resource under key; a missing resource or a parse failure keeps the table.
    void loadFromResource (const juce::String& key);
    // Rebuilds the table from a "PluginParameters" document; bad rows are skipped.
    void loadFromXml (const juce::XmlElement& xml);
    void clear();

    // Takes ownership. A null parameter, or one whose number or name is taken, is refused and deleted
    // (the very object already in the table is only refused).
    bool addParameter (Parameter* parameter);

    int getNumParameters() const;
    Parameter* getParameter (int index) const;
    Parameter* getParameterByName (const juce::String& name) const;
    juce::String getParameterName (int index) const;

    float getValue (int index) const;
    float getNormalizedValue (int index) const;
    bool getBoolValue (int index) const;
    juce::String getStringValue (int index) const;

    void setNormalizedValue (int index, float value);
    void setIntValue (int index, int value);
    void setStringValue (int index, const juce::String& text);

    void addImmediateListener (int index, Parameter::Listener* listener);
    void addDeferredListener (int index, Parameter::Listener* listener);
    void removeDeferredListener (int index, Parameter::Listener* listener);
    void addImmediateListenerToAll (Parameter::Listener* listener);
    void addDeferredListenerToAll (Parameter::Listener* listener);
    void removeDeferredListenerFromAll (Parameter::Listener* listener);

    // Every parameter in table order tells its listeners, changed or not.
    void notifyAll();
    /** Brings every value to the deferred listeners alone, later on the message thread. */
    void triggerDeferredUpdates();

    // Builds one parameter from a "param" row, or null for a row that makes none.
    static std::unique_ptr<Parameter> createParameter (const juce::XmlElement& row);

private:
    juce::OwnedArray<Parameter> parameters;
    juce::HashMap<int, Parameter*> byIndex;
    juce::HashMap<juce::String, Parameter*> byName;
    juce::ReadWriteLock lock;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ParameterManager)
};
