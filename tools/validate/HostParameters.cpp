#include "HostParameters.h"

HostParameters::HostParameters (juce::AudioProcessor& processor)
{
    for (auto* parameter : processor.getParameters())
    {
        const int index = ExpectedPlugin::indexOf (parameter->getName (1024));
        if (index >= 0 && found[(size_t) index] == nullptr)
            found[(size_t) index] = parameter;
    }
}

bool HostParameters::isComplete() const { return getMissing().isEmpty(); }

juce::StringArray HostParameters::getMissing() const
{
    juce::StringArray missing;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        if (found[(size_t) i] == nullptr)
            missing.add (ExpectedPlugin::parameters[(size_t) i].name);
    return missing;
}

bool HostParameters::isInPluginOrder() const
{
    int previous = -1;
    for (const auto* parameter : found)
    {
        if (parameter == nullptr || parameter->getParameterIndex() <= previous)
            return false;
        previous = parameter->getParameterIndex();
    }
    return true;
}

int HostParameters::pluginIndexOf (int hostIndex) const
{
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        if (found[(size_t) i] != nullptr && found[(size_t) i]->getParameterIndex() == hostIndex)
            return i;
    return -1;
}
