#include "ParameterSet.h"

#include "HostParameters.h"

#include <limits>

ParameterSet::ParameterSet()
{
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        values[(size_t) i] = ExpectedPlugin::parameters[(size_t) i].defaultValue;
}

ParameterSet ParameterSet::random (juce::int64 seed)
{
    juce::Random random (seed);
    ParameterSet set;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
    {
        const int steps = ExpectedPlugin::parameters[(size_t) i].numSteps;
        set[i] = steps > 1 ? (float) random.nextInt (steps) / (float) (steps - 1) : random.nextFloat();
    }
    // Loud enough to hear everything, never silent.
    set[ParameterIndex::outputVolume] = 0.3f + 0.4f * random.nextFloat();
    set[ParameterIndex::fx] = 0.5f + 0.5f * random.nextFloat();
    return set;
}

ParameterSet ParameterSet::readFrom (juce::AudioProcessor& processor)
{
    ParameterSet set;
    const HostParameters parameters (processor);
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        set[i] =
            parameters[i] != nullptr ? parameters[i]->getValue() : std::numeric_limits<float>::quiet_NaN();
    return set;
}

juce::String ParameterSet::describe() const
{
    juce::StringArray items;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        items.add (juce::String (ExpectedPlugin::parameters[(size_t) i].name) + "="
                   + juce::String (values[(size_t) i], 6));
    return items.joinIntoString (", ");
}
