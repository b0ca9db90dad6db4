#pragma once

#include "FormatUnderTest.h"

/** The sound a host gets: at every supported rate and with blocks of any size, the same bits as the
    reference processor gives for the same signal and settings; and the latency it reports. */
class AudioChecks
{
public:
    explicit AudioChecks (FormatUnderTest& format);
    void run();

private:
    void checkRate (double sampleRate, int rateIndex);
    void checkLatencyFollowsRate();

    FormatUnderTest& format;
    ValidationReport& report;
};
