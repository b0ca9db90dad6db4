#include "Parameter.h"

#include "common/ListenerWalk.h"

Parameter::Parameter (int parameterIndex, const juce::String& parameterName)
    : index (parameterIndex)
    , name (parameterName)
{
}

Parameter::~Parameter() { cancelPendingUpdate(); }

void Parameter::handleAsyncUpdate() { callListeners (deferredListeners); }

void Parameter::addImmediateListener (Listener* listener)
{
    if (listener != nullptr)
        immediateListeners.addIfNotAlreadyThere (listener);
}

void Parameter::removeImmediateListener (Listener* listener)
{
    immediateListeners.removeFirstMatchingValue (listener);
}

void Parameter::addDeferredListener (Listener* listener)
{
    if (listener != nullptr)
        deferredListeners.addIfNotAlreadyThere (listener);
}

void Parameter::removeDeferredListener (Listener* listener)
{
    deferredListeners.removeFirstMatchingValue (listener);
}

void Parameter::sendChangeNotification()
{
    callListeners (immediateListeners);
    triggerAsyncUpdate();
}

void Parameter::valueChanged (bool notify)
{
    if (notify)
        sendChangeNotification();
}

void Parameter::callListeners (const juce::Array<Listener*>& listeners)
{
    callListenersBackwards (listeners, [this] (Listener& listener) { listener.parameterChanged (this); });
}
