#pragma once

#include <juce_events/juce_events.h>

// The shared value cell between the host, the controls, the MIDI map, the presets and the core. It keeps
// its value itself, converts between the raw, normalised, integer, boolean and text views, and tells
// immediate listeners at once on the setting thread and deferred listeners later on the message thread.
class Parameter : public juce::AsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void parameterChanged (Parameter* parameter) = 0;
        virtual void parameterGestureBegan (Parameter*) {}
        virtual void parameterGestureEnded (Parameter*) {}
    };

    Parameter (int index, const juce::String& name);
    ~Parameter() override;

    void handleAsyncUpdate() override;

    // A new independent copy with the same identity, range, style, items and value, and no listeners.
    virtual std::unique_ptr<Parameter> clone() const = 0;

    virtual float getValue() const = 0;
    virtual float getNormalizedValue() const = 0;
    virtual int getIntValue() const = 0;
    virtual bool getBoolValue() const = 0;
    virtual juce::String getStringValue() const = 0;

    virtual void setValue (float value, bool notify) = 0;
    virtual void setNormalizedValue (float value, bool notify) = 0;
    virtual void setIntValue (int value, bool notify) = 0;
    virtual void setBoolValue (bool value, bool notify) = 0;
    virtual void setStringValue (const juce::String& value, bool notify) = 0;
    virtual void setFrom (const Parameter& other, bool notify) = 0;

    int getIndex() const noexcept { return index; }
    const juce::String& getName() const noexcept { return name; }
    bool isAutomatable() const noexcept { return automatable.load(); }
    void setAutomatable (bool shouldBeAutomatable) noexcept { automatable.store (shouldBeAutomatable); }

    // Immediate lists are filled during start-up, before any setter runs on another thread.
    void addImmediateListener (Listener* listener);
    void removeImmediateListener (Listener* listener);
    // Deferred lists change and are walked on the message thread only.
    void addDeferredListener (Listener* listener);
    void removeDeferredListener (Listener* listener);

    // Controls walk this list themselves to pass on the start and end of a drag.
    const juce::Array<Listener*>& getImmediateListeners() const noexcept { return immediateListeners; }

    // Calls the immediate listeners and triggers the deferred ones whether or not the value changed.
    void sendChangeNotification();

protected:
    // The tail of every setter once the new value is stored.
    void valueChanged (bool notify);

    void callListeners (const juce::Array<Listener*>& listeners);

private:
    const int index;
    const juce::String name;
    std::atomic<bool> automatable{ false };
    juce::Array<Listener*> immediateListeners;
    juce::Array<Listener*> deferredListeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Parameter)
};
