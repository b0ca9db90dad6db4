#pragma once

#include <functional>

/** Lets the message thread run, as a host's event loop does between its calls: hosted plug-ins deliver
    some notifications from their timers and async updates, which only arrive while it runs. */
class MessagePump
{
public:
    /** Runs the message loop until done() holds, in short rounds, giving up after maxRounds. Returns
        whether done() held. A bound, not a timing: done() is checked after every round. */
    static bool runUntil (const std::function<bool()>& done, int maxRounds = defaultRounds);

    /** Runs a few rounds, for deliveries that nothing can be waited on for. */
    static void runBriefly();

    /** Rounds of roundMilliseconds: three seconds, ample for a host's timers of up to a few hertz. */
    static constexpr int defaultRounds = 300;
    static constexpr int roundMilliseconds = 10;
};
