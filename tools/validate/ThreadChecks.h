#pragma once

#include "FormatUnderTest.h"

/** A host's threads at once on one instance: one processes audio with program changes and controllers in
    its MIDI, one automates parameters, and the message thread saves and restores the state, for a bounded
    number of rounds each. Nothing may crash or hang, and the sound must stay numbers. */
class ThreadChecks
{
public:
    explicit ThreadChecks (FormatUnderTest& format);
    void run();

private:
    FormatUnderTest& format;
    ValidationReport& report;
};
