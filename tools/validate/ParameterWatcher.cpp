#include "ParameterWatcher.h"

ParameterWatcher::ParameterWatcher (juce::AudioProcessor& processorToWatch)
    : parameters (processorToWatch)
{
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        if (auto* parameter = parameters[i])
            parameter->addListener (this);
}

ParameterWatcher::~ParameterWatcher()
{
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        if (auto* parameter = parameters[i])
            parameter->removeListener (this);
}

int ParameterWatcher::getNumChanges (int index) const { return counts[(size_t) index].load(); }

float ParameterWatcher::getLastValue (int index) const { return values[(size_t) index].load(); }

void ParameterWatcher::parameterValueChanged (int parameterIndex, float newValue)
{
    const int index = parameters.pluginIndexOf (parameterIndex);
    if (index < 0)
        return;
    values[(size_t) index].store (newValue);
    counts[(size_t) index].fetch_add (1);
}
