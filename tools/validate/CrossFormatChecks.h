#pragma once

#include "FormatUnderTest.h"

#include <array>

/** A state saved by one format restores in the other two: the wrappers carry the same chunk. */
class CrossFormatChecks
{
public:
    CrossFormatChecks (PluginLoader& loader, const std::array<juce::File, 3>& artefacts,
                       const juce::File& scratchRoot, ValidationReport& report);
    void run();

private:
    void checkPair (FormatUnderTest& from, FormatUnderTest& to, juce::int64 seed);

    ValidationReport& report;
    std::vector<std::unique_ptr<FormatUnderTest>> formats;
};
