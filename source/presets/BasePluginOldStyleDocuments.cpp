#include "presets/BasePluginOldStyle.h"

#include "common/ResourceLoader.h"
#include "common/XmlText.h"

#include <cmath>
#include <cstdio>

// Preset and bank documents: their names, reading and writing them, files and the embedded ones.

namespace
{
juce::String formatG9 (double value)
{
    char text[64];
    std::snprintf (text, sizeof (text), "%.9g", value);
    return text;
}
} // namespace

bool BasePluginOldStyle::holdsPresetOfOurs (const juce::XmlElement& bank) const
{
    if (!isBank (bank))
        return false;
    for (auto* group : bank.getChildIterator())
        if (isGroup (*group))
            for (auto* preset : group->getChildIterator())
                if (isPreset (*preset))
                    return true;
    return false;
}

int BasePluginOldStyle::getNumOlderPresetExtensions() const { return 0; }

juce::String BasePluginOldStyle::getOlderPresetExtension (int) const { return {}; }

int BasePluginOldStyle::getNumOlderBankExtensions() const { return 0; }

juce::String BasePluginOldStyle::getOlderBankExtension (int) const { return {}; }

int BasePluginOldStyle::getNumOlderMapExtensions() const { return 0; }

juce::String BasePluginOldStyle::getOlderMapExtension (int) const { return {}; }

juce::String BasePluginOldStyle::getPresetExtension() const
{
    return "." + getPluginCode().toLowerCase() + "prs";
}

juce::String BasePluginOldStyle::getBankExtension() const
{
    return "." + getPluginCode().toLowerCase() + "prsb";
}

juce::String BasePluginOldStyle::getMapExtension() const
{
    return "." + getPluginCode().toLowerCase() + "ccmap";
}

juce::String BasePluginOldStyle::getPresetWildcards() const
{
    auto text = "*" + getPresetExtension();
    for (int i = 0; i < getNumOlderPresetExtensions(); ++i)
        text << "; *" << getOlderPresetExtension (i);
    return text;
}

juce::String BasePluginOldStyle::getBankWildcards() const
{
    auto text = "*" + getBankExtension();
    for (int i = 0; i < getNumOlderBankExtensions(); ++i)
        text << "; *" << getOlderBankExtension (i);
    return text;
}

juce::String BasePluginOldStyle::getMapWildcards() const
{
    auto text = "*" + getMapExtension();
    for (int i = 0; i < getNumOlderMapExtensions(); ++i)
        text << "; *" << getOlderMapExtension (i);
    return text;
}

juce::String BasePluginOldStyle::formatPresetValue (float value)
{
    // Six decimals at most: scaled in single precision, rounded half to even, scaled back in double.
    const float scaled = value * 1e6f;
    const double rounded = std::nearbyint ((double) scaled);
    return formatG9 (rounded * 1e-6);
}

juce::String BasePluginOldStyle::formatStateValue (float value) { return formatG9 ((double) value); }

bool BasePluginOldStyle::isPreset (const juce::XmlElement& element) const
{
    return XmlText::isTag (element, "Preset") && element.getStringAttribute ("application") == getName();
}

bool BasePluginOldStyle::readPresetInto (const juce::XmlElement& element, int index)
{
    if (auto* preset = getPreset (index))
        return readPreset (element, *preset);
    return false;
}

bool BasePluginOldStyle::readPreset (const juce::XmlElement& element, Preset& preset)
{
    if (!isPreset (element))
        return false;

    {
        const juce::ScopedLock sl (presetsLock);
        preset.name = element.getStringAttribute ("name", "unnamed");
    }

    for (auto* row : XmlText::childrenTagged (element, "param"))
    {
        // The name binds a value to its place, not the order of the rows; values are not clamped here.
        auto* p = parameters.getParameterByName (row->getStringAttribute ("name"));
        if (p != nullptr && p->getIndex() >= 0 && p->getIndex() < preset.numValues)
            preset.setValue (p->getIndex(), (float) row->getDoubleAttribute ("value", 0.0));
    }
    return true;
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createPresetXml (int index)
{
    if (auto* preset = getPreset (index))
        return createPresetXml (*preset);
    return nullptr;
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createPresetXml (const Preset& preset)
{
    auto xml = std::make_unique<juce::XmlElement> ("Preset");
    xml->setAttribute ("application", getName());
    {
        const juce::ScopedLock sl (presetsLock);
        xml->setAttribute ("name", preset.name);
    }
    for (int i = 0; i < preset.numValues; ++i)
    {
        const auto name = parameters.getParameterName (i);
        if (name.isEmpty())
            continue;
        auto* row = xml->createNewChildElement ("param");
        row->setAttribute ("name", name);
        row->setAttribute ("value", formatPresetValue (preset.getValue (i)));
    }
    return xml;
}

bool BasePluginOldStyle::isGroup (const juce::XmlElement& element) const
{
    return XmlText::isTag (element, "PresetGroup");
}

bool BasePluginOldStyle::isBank (const juce::XmlElement& element) const
{
    return XmlText::isTag (element, "PresetBank");
}

bool BasePluginOldStyle::readBank (const juce::XmlElement& element)
{
    if (!isBank (element))
        return false;

    clearBank();
    {
        const juce::ScopedLock sl (groupsLock);
        groups.clear();
    }
    bankName = element.getStringAttribute ("name", "Preset Bank");

    int read = 0;
    for (auto* groupXml : element.getChildIterator())
    {
        if (!isGroup (*groupXml))
            continue;

        PresetGroup* group = nullptr;
        {
            const juce::ScopedLock sl (groupsLock);
            group = groups.add (new PresetGroup (
                groupXml->getStringAttribute ("name", "group " + juce::String (groups.size() + 1)), 0));
        }

        for (auto* presetXml : groupXml->getChildIterator())
        {
            if (read >= numPresetsInBank)
                break;
            if (!isPreset (*presetXml))
                continue;
            readPreset (*presetXml, *getPreset (read));
            ++read;
            const juce::ScopedLock sl (groupsLock);
            ++group->size;
        }
    }

    if (read < numPresetsInBank)
    {
        const juce::ScopedLock sl (groupsLock);
        groups.add (new PresetGroup ("Not used", numPresetsInBank - read));
    }
    return true;
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createBankXml()
{
    auto xml = std::make_unique<juce::XmlElement> ("PresetBank");
    xml->setAttribute ("name", bankName);
    for (int g = 0; g < getNumGroups(); ++g)
    {
        auto* groupXml = xml->createNewChildElement ("PresetGroup");
        groupXml->setAttribute ("name", getGroupName (g));
        const int start = getGroupStart (g);
        for (int j = 0; j < getGroupSize (g); ++j)
            if (auto presetXml = createPresetXml (start + j))
                groupXml->addChildElement (presetXml.release());
    }
    return xml;
}

void BasePluginOldStyle::clearBank()
{
    {
        const juce::ScopedLock sl (presetsLock);
        for (int i = 0; i < presets.size(); ++i)
        {
            presets[i]->name = "Preset " + juce::String (i);
            presets[i]->copyValuesFrom (*defaultPreset);
        }
    }
    const juce::ScopedLock sl (groupsLock);
    groups.clear();
    groups.add (new PresetGroup ("Not used", numPresetsInBank));
}

bool BasePluginOldStyle::writeDocument (const juce::XmlElement& xml, const juce::File& file)
{
    juce::XmlElement::TextFormat format;
    format.lineWrapLength = 60; // the family's document layout
    return xml.writeTo (file, format);
}

bool BasePluginOldStyle::loadPresetFile (const juce::File& file, int index)
{
    // A file that doesn't parse changes nothing, not even the folder the next dialog opens in.
    auto xml = XmlText::parse (file);
    if (xml == nullptr)
        return false;
    setRecentDirectory (file.getParentDirectory().getFullPathName());
    const bool read = readPresetInto (*xml, index);
    if (index == currentPreset.load() && isValidPresetIndex (index))
        applyCurrentPreset();
    return read;
}

bool BasePluginOldStyle::savePresetFile (const juce::File& file, int index)
{
    auto xml = createPresetXml (index);
    if (xml == nullptr)
        return false;
    setRecentDirectory (file.getParentDirectory().getFullPathName());
    return writeDocument (*xml, file);
}

bool BasePluginOldStyle::loadBankFile (const juce::File& file)
{
    setRecentDirectory (file.getParentDirectory().getFullPathName());
    auto xml = XmlText::parse (file);
    return xml != nullptr && applyBank (*xml);
}

bool BasePluginOldStyle::applyBank (const juce::XmlElement& xml)
{
    const bool read = readBank (xml);
    if (isValidPresetIndex (currentPreset.load()))
        applyCurrentPreset();
    return read;
}

bool BasePluginOldStyle::saveBankFile (const juce::File& file)
{
    const bool written = writeDocument (*createBankXml(), file);
    setRecentDirectory (file.getParentDirectory().getFullPathName());
    return written;
}

bool BasePluginOldStyle::loadDefaultPresetResource (const juce::String& key)
{
    auto xml = XmlText::parse (loadResourceText (key));
    if (xml == nullptr)
        return false;
    readPreset (*xml, *defaultPreset);
    return true;
}

bool BasePluginOldStyle::loadBankResource (const juce::String& key)
{
    auto xml = XmlText::parse (loadResourceText (key));
    if (xml == nullptr)
        return false;
    applyBank (*xml);
    return true;
}
