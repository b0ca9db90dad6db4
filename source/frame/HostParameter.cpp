#include "frame/HostParameter.h"

#include "frame/BasePlugin.h"

HostParameter::HostParameter (BasePlugin& ownerToUse, int index, float defaultValueToUse)
    : juce::AudioProcessorParameterWithID (juce::ParameterID (idForIndex (index), 1),
                                           ownerToUse.getHostParameterName (index))
    , owner (ownerToUse)
    , hostIndex (index)
    , defaultValue (defaultValueToUse)
{
}

float HostParameter::getValue() const { return owner.getHostParameter (hostIndex); }

void HostParameter::setValue (float newValue) { owner.setHostParameter (hostIndex, newValue); }

float HostParameter::getDefaultValue() const { return defaultValue; }

juce::String HostParameter::getName (int maximumStringLength) const
{
    return owner.getHostParameterName (hostIndex).substring (0, maximumStringLength);
}

juce::String HostParameter::getLabel() const { return {}; }

juce::String HostParameter::getText (float normalisedValue, int maximumStringLength) const
{
    return owner.getParameterTextForValue (hostIndex, normalisedValue).substring (0, maximumStringLength);
}

float HostParameter::getValueForText (const juce::String& text) const
{
    return owner.getParameterValueForText (hostIndex, text);
}

int HostParameter::getNumSteps() const
{
    const int steps = owner.getHostParameterNumSteps (hostIndex);
    return steps > 1 ? steps : AudioProcessorParameter::getNumSteps();
}

bool HostParameter::isDiscrete() const { return owner.getHostParameterNumSteps (hostIndex) > 1; }

bool HostParameter::isBoolean() const { return owner.getHostParameterNumSteps (hostIndex) == 2; }

bool HostParameter::isAutomatable() const { return owner.isHostParameterAutomatable (hostIndex); }

bool HostParameter::isMetaParameter() const { return false; }

juce::String HostParameter::idForIndex (int index) { return "p" + juce::String (index).paddedLeft ('0', 2); }

juce::String HostParameter::getCurrentValueAsText() const
{
    // What the parameter shows now, which may depend on other parameters ("linked"); `getText` names
    // what a value means on its own, for the value lists and previews hosts build from it.
    return owner.getHostParameterText (hostIndex);
}
