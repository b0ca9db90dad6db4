#pragma once

#include <juce_core/juce_core.h>

// Calls callback on each listener from the last entry to the first. A listener may remove itself or
// another one during the walk: when the list shrinks, the walk goes on below the listener just called
// if it is still there, else from the new last entry, so that nobody still waiting is skipped.
// JUCE's ListenerList isn't used because its walks register themselves in the list, which would race
// when two threads notify through one parameter.
template <typename ListenerType, typename Callback>
void callListenersBackwards (const juce::Array<ListenerType*>& listeners, Callback&& callback)
{
    for (int i = listeners.size(); --i >= 0;)
    {
        auto* listener = listeners.getUnchecked (i);
        const int sizeBefore = listeners.size();
        callback (*listener);

        if (listeners.size() < sizeBefore)
        {
            const int stayedAt = listeners.indexOf (listener);
            i = stayedAt >= 0 ? stayedAt : juce::jmin (i, listeners.size());
        }
    }
}
