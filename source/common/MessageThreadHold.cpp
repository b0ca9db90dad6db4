#include "common/MessageThreadHold.h"

MessageThreadHold::MessageThreadHold()
{
    auto* messages = juce::MessageManager::getInstanceWithoutCreating();
    if (messages == nullptr || messages->isThisTheMessageThread())
        return;
    // The message waits on its own copy of the state: if it runs only after the bound has passed, it
    // finds the hold released and returns at once.
    auto shared = std::make_shared<State>();
    const bool posted = juce::MessageManager::callAsync (
        [shared]
        {
            shared->taken.signal();
            shared->released.wait (-1);
        });
    if (!posted)
        return;
    if (shared->taken.wait (boundMilliseconds))
        state = shared;
    else
        shared->released.signal();
}

MessageThreadHold::~MessageThreadHold()
{
    if (state != nullptr)
        state->released.signal();
}
