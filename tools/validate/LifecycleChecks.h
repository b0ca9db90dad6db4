#pragma once

#include "FormatUnderTest.h"

/** What a host does over a session: makes and destroys many instances, prepares and releases them at
    changing rates and block sizes, opens and closes the editor; nothing may leak or break. */
class LifecycleChecks
{
public:
    explicit LifecycleChecks (FormatUnderTest& format);
    void run();

private:
    void checkManyInstances();
    void checkChangingSettings();
    void checkEditor();
    void checkLeaks();

    /** One instance's life as a session has it: made, played at a rate, its editor opened and closed,
        released, destroyed. */
    void liveOnce (int round);

    FormatUnderTest& format;
    ValidationReport& report;
};
