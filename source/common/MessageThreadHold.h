#pragma once

#include <juce_events/juce_events.h>

#include <memory>

/** Holds the message thread between two of its messages for as long as it lives. Some wrappers run the
    plug-in's messages on a thread of their own and destroy the plug-in from the host's: held while the
    layers go, no parameter notification or timer can start on a half-destroyed plug-in. Where this
    thread is the message thread, or the message thread doesn't answer within the bound (it isn't
    dispatching, or waits for this thread), it holds nothing, so it can never deadlock. */
class MessageThreadHold
{
public:
    MessageThreadHold();
    ~MessageThreadHold();

    bool isHolding() const noexcept { return state != nullptr; }

    /** How long the message thread has to finish its current message and take the hold. */
    static constexpr int boundMilliseconds = 1000;

private:
    struct State
    {
        juce::WaitableEvent taken, released;
    };
    std::shared_ptr<State> state;

    JUCE_DECLARE_NON_COPYABLE (MessageThreadHold)
};
