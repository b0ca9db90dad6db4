#pragma once

#include <juce_core/juce_core.h>

/** Who the plug-in is, as the about window reads it. */
class SoftwareDesignation
{
public:
    virtual ~SoftwareDesignation() = default;

    virtual juce::String getSoftwareName() const = 0;
    virtual juce::String getSoftwareDescription() const = 0;
    virtual juce::String getSoftwareVersion() const = 0;
    virtual juce::String getSoftwareHomePage() const = 0;
    virtual juce::String getSoftwareYear() const = 0;
    virtual juce::String getSoftwarePath() const = 0;
    virtual juce::String getSoftwareReleaseDate() const = 0;
    virtual juce::String getSoftwareReserved() const = 0; // empty here; nothing reads it
    virtual juce::String getSoftwareBuild() const = 0;
    virtual juce::String getSoftwareFormat() const = 0;
    virtual juce::String getSoftwareArchitecture() const = 0;
    virtual juce::String getSoftwareReservedNumber() const = 0; // "0" here; nothing reads it
};
