#pragma once

#include "FormatUnderTest.h"

/** Who the plug-in says it is in a format: name, maker, version, unique id, channels and MIDI. */
class IdentityChecks
{
public:
    explicit IdentityChecks (FormatUnderTest& format);
    void run();

private:
    void checkUniqueId (juce::AudioPluginInstance& instance);
    void checkVersion();

    FormatUnderTest& format;
    ValidationReport& report;
};
