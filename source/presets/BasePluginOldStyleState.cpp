#include "presets/BasePluginOldStyle.h"

#include "common/XmlText.h"

#include <limits>

// The host's state and program chunks and the user settings.

void BasePluginOldStyle::readResourcesSettings (const juce::XmlElement& element)
{
    for (auto* child : element.getChildIterator())
    {
        if (XmlText::isTag (*child, "Presets"))
        {
            const auto mode = child->getStringAttribute ("default");
            if (mode == "factoryPresets")
                presetsMode = factoryPresets;
            else if (mode == "clearPresets")
                presetsMode = clearPresets;
            else if (mode == "userDefinedPresets")
            {
                presetsMode = userDefinedPresets;
                presetsFile = child->getStringAttribute ("file");
            }
        }
        else if (XmlText::isTag (*child, "MidiCCMap"))
        {
            const auto mode = child->getStringAttribute ("default");
            if (mode == "noMapping")
                midiControl->setUseDefaultMap (false);
            else if (mode == "userDefinedMidiCCMap")
            {
                midiControl->setUseDefaultMap (true);
                midiControl->setDefaultMapFile (child->getStringAttribute ("file"));
            }
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createResourcesSettingsXml()
{
    auto xml = std::make_unique<juce::XmlElement> ("ResourcesSettings");

    auto* presetsXml = xml->createNewChildElement ("Presets");
    static const char* const modeNames[] = { "factoryPresets", "clearPresets", "userDefinedPresets" };
    presetsXml->setAttribute ("default", modeNames[juce::jlimit (0, 2, presetsMode)]);
    if (presetsMode == userDefinedPresets)
        presetsXml->setAttribute ("file", presetsFile);

    auto* mapXml = xml->createNewChildElement ("MidiCCMap");
    const bool useMap = midiControl->getUseDefaultMap();
    mapXml->setAttribute ("default", useMap ? "userDefinedMidiCCMap" : "noMapping");
    if (useMap)
        mapXml->setAttribute ("file", midiControl->getDefaultMapFile());
    return xml;
}

bool BasePluginOldStyle::hasStoringOption() const { return true; }

bool BasePluginOldStyle::hasChangingOption() const { return true; }

bool BasePluginOldStyle::isNotPresetable (const juce::XmlElement& element) const
{
    return XmlText::isTag (element, "NotPresetableParams") || XmlText::isTag (element, "NotPresetParams");
}

void BasePluginOldStyle::readNotPresetable (const juce::XmlElement& element)
{
    // Only the parameters outside presets belong here: a foreign chunk's rows for others are passed over.
    if (isNotPresetable (element))
        readParametersState (element, numPresetParameters, numPresetParameters + numOtherParameters);
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createNotPresetableXml()
{
    auto xml = std::make_unique<juce::XmlElement> ("NotPresetableParams");
    for (int i = numPresetParameters; i < numPresetParameters + numOtherParameters; ++i)
        if (auto* p = parameters.getParameter (i))
        {
            auto* row = xml->createNewChildElement ("param");
            row->setAttribute ("name", p->getName());
            row->setAttribute ("value", formatStateValue (p->getValue()));
        }
    return xml;
}

void BasePluginOldStyle::readParametersState (const juce::XmlElement& element, int firstIndex, int endIndex)
{
    for (auto* row : XmlText::childrenTagged (element, "param"))
        if (auto* p = parameters.getParameterByName (row->getStringAttribute ("name")))
            if (p->getIndex() >= firstIndex && p->getIndex() < endIndex)
                parameters.setNormalizedValue (p->getIndex(), (float) row->getDoubleAttribute ("value", 0.0));
}

void BasePluginOldStyle::readState (const juce::XmlElement& element)
{
    if (!isStateXml (element))
        return;

    for (auto* child : element.getChildIterator())
    {
        if (XmlText::isTag (*child, "ParametersState"))
        {
            readParametersState (*child, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        }
        else if (XmlText::isTag (*child, "PresetsState"))
        {
            for (auto* bank : child->getChildIterator())
                if (isBank (*bank))
                    readBank (*bank);
            // The live values came with the parameters; the slot is not applied.
            setCurrentPreset (child->getIntAttribute ("currentPreset", 0), true);
        }
        else if (midiControl->isMapXml (*child))
        {
            midiControl->loadFromXml (*child);
        }
        else if (isNotPresetable (*child))
        {
            readNotPresetable (*child);
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createStateXml()
{
    auto xml = BasePlugin::createStateXml();

    auto* state = xml->createNewChildElement ("ParametersState");
    for (int i = 0; i < numParameters; ++i)
        if (auto* p = parameters.getParameter (i))
        {
            auto* row = state->createNewChildElement ("param");
            row->setAttribute ("name", p->getName());
            row->setAttribute ("value", formatStateValue (p->getValue()));
        }

    auto* presetsState = xml->createNewChildElement ("PresetsState");
    presetsState->setAttribute ("currentPreset", currentPreset.load());
    presetsState->addChildElement (createBankXml().release());

    if (auto map = midiControl->createXml())
        xml->addChildElement (map.release());

    if (numOtherParameters > 0)
        xml->addChildElement (createNotPresetableXml().release());
    return xml;
}

void BasePluginOldStyle::readProgramState (const juce::XmlElement& element)
{
    readPresetInto (element, currentPreset.load());
    if (isValidPresetIndex (currentPreset.load()))
        applyCurrentPreset();
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createProgramStateXml()
{
    return createPresetXml (currentPreset.load());
}

void BasePluginOldStyle::readUserSettings (const juce::XmlElement& element)
{
    if (!isUserSettingsXml (element))
        return;

    for (auto* child : element.getChildIterator())
    {
        if (XmlText::isTag (*child, "PluginDirectories"))
        {
            for (auto* recent : XmlText::childrenTagged (*child, "RecentlyUsed"))
                setRecentDirectory (recent->getStringAttribute ("dir"));
        }
        else if (XmlText::isTag (*child, "ResourcesSettings"))
        {
            readResourcesSettings (*child);
        }
        else if (XmlText::isTag (*child, "PresetSettings"))
        {
            if (hasStoringOption())
            {
                const auto storing = child->getStringAttribute ("storing");
                if (storing == "onDemand")
                    storingMode.store (onDemand);
                else if (storing == "automatic")
                    setStoringMode (automatic);
            }
            if (hasChangingOption())
            {
                const auto changing = child->getStringAttribute ("changing");
                if (changing == "normal")
                    changingType.store (normal);
                else if (changing == "silent")
                    changingType.store (silent);
            }
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createUserSettingsXml()
{
    auto xml = std::make_unique<juce::XmlElement> ("UserSettings");
    xml->setAttribute ("application", getName());

    auto* directories = xml->createNewChildElement ("PluginDirectories");
    directories->createNewChildElement ("RecentlyUsed")->setAttribute ("dir", recentDirectory);

    xml->addChildElement (createResourcesSettingsXml().release());

    auto* presetSettings = xml->createNewChildElement ("PresetSettings");
    if (hasStoringOption())
        presetSettings->setAttribute ("storing", storingMode.load() == automatic ? "automatic" : "onDemand");
    if (hasChangingOption())
        presetSettings->setAttribute ("changing", changingType.load() == silent ? "silent" : "normal");
    return xml;
}
