#include "StateDocument.h"

#include <limits>

namespace
{
juce::XmlElement* findParam (const juce::XmlElement& state, const juce::String& name)
{
    if (auto* parameters = state.getChildByName ("ParametersState"))
        for (auto* param : parameters->getChildWithTagNameIterator ("param"))
            if (param->getStringAttribute ("name") == name)
                return param;
    return nullptr;
}
} // namespace

float StateDocument::getParameter (const juce::XmlElement& state, const juce::String& name)
{
    if (auto* param = findParam (state, name))
        return (float) param->getDoubleAttribute ("value");
    return std::numeric_limits<float>::quiet_NaN();
}

void StateDocument::setParameter (juce::XmlElement& state, const juce::String& name, float value)
{
    if (auto* param = findParam (state, name))
        param->setAttribute ("value", juce::String::formatted ("%.9g", (double) value));
}

int StateDocument::getCurrentPreset (const juce::XmlElement& state)
{
    if (auto* presets = state.getChildByName ("PresetsState"))
        return presets->getIntAttribute ("currentPreset", -1);
    return -1;
}

void StateDocument::setCurrentPreset (juce::XmlElement& state, int index)
{
    if (auto* presets = state.getChildByName ("PresetsState"))
        presets->setAttribute ("currentPreset", index);
}

juce::XmlElement* StateDocument::getBank (const juce::XmlElement& state)
{
    if (auto* presets = state.getChildByName ("PresetsState"))
        return presets->getChildByName ("PresetBank");
    return nullptr;
}

juce::XmlElement* StateDocument::getPreset (const juce::XmlElement& state, int index)
{
    auto* bank = getBank (state);
    if (bank == nullptr)
        return nullptr;
    int position = 0;
    for (auto* group : bank->getChildWithTagNameIterator ("PresetGroup"))
        for (auto* preset : group->getChildWithTagNameIterator ("Preset"))
            if (position++ == index)
                return preset;
    return nullptr;
}

juce::XmlElement* StateDocument::getGroup (const juce::XmlElement& state, int index)
{
    if (auto* bank = getBank (state))
    {
        int position = 0;
        for (auto* group : bank->getChildWithTagNameIterator ("PresetGroup"))
            if (position++ == index)
                return group;
    }
    return nullptr;
}

void StateDocument::setPresetParameter (juce::XmlElement& state, int presetIndex, const juce::String& name,
                                        float value)
{
    if (auto* preset = getPreset (state, presetIndex))
        for (auto* param : preset->getChildWithTagNameIterator ("param"))
            if (param->getStringAttribute ("name") == name)
                param->setAttribute ("value", juce::String::formatted ("%.9g", (double) value));
}

void StateDocument::setMap (juce::XmlElement& state, int controller, const juce::String& parameterName)
{
    while (auto* old = state.getChildByName ("MidiControlMap"))
        state.removeChildElement (old, true);
    auto* map = state.createNewChildElement ("MidiControlMap");
    map->setAttribute ("name", state.getStringAttribute ("application"));
    auto* assign = map->createNewChildElement ("assign");
    assign->setAttribute ("CC", controller);
    assign->setAttribute ("param", parameterName);
}

juce::String StateDocument::getMappedParameter (const juce::XmlElement& state, int controller)
{
    if (auto* map = state.getChildByName ("MidiControlMap"))
        for (auto* assign : map->getChildWithTagNameIterator ("assign"))
            if (assign->getIntAttribute ("CC") == controller)
                return assign->getStringAttribute ("param");
    return {};
}
