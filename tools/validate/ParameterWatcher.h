#pragma once

#include "HostParameters.h"

#include <array>
#include <atomic>

/** Hears what a hosted plug-in tells its host about its parameters: each change the plug-in reports, on
    whichever thread it comes, by the plug-in's own parameter index. */
class ParameterWatcher : private juce::AudioProcessorParameter::Listener
{
public:
    explicit ParameterWatcher (juce::AudioProcessor& processorToWatch);
    ~ParameterWatcher() override;

    int getNumChanges (int index) const;
    float getLastValue (int index) const;

private:
    void parameterValueChanged (int parameterIndex, float newValue) override;
    void parameterGestureChanged (int, bool) override {}

    HostParameters parameters;
    std::array<std::atomic<int>, ExpectedPlugin::numParameters> counts{};
    std::array<std::atomic<float>, ExpectedPlugin::numParameters> values{};

    JUCE_DECLARE_NON_COPYABLE (ParameterWatcher)
};
