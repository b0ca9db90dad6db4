#include "MessagePump.h"

#include <juce_events/juce_events.h>

bool MessagePump::runUntil (const std::function<bool()>& done, int maxRounds)
{
    auto* messageManager = juce::MessageManager::getInstance();
    for (int round = 0; round < maxRounds; ++round)
    {
        if (done())
            return true;
        messageManager->runDispatchLoopUntil (roundMilliseconds);
    }
    return done();
}

void MessagePump::runBriefly()
{
    // Long enough for a 60 Hz timer of a hosted format to fire a few times.
    const int rounds = 10;
    auto* messageManager = juce::MessageManager::getInstance();
    for (int round = 0; round < rounds; ++round)
        messageManager->runDispatchLoopUntil (roundMilliseconds);
}
