#include "frame/FerrowynOldCompatible.h"

#include "common/XmlText.h"

FerrowynOldCompatible::FerrowynOldCompatible (int numParametersToUse)
    : FerrowynEffect (numParametersToUse)
{
}

bool FerrowynOldCompatible::isStateXml (const juce::XmlElement& element) const
{
    return FerrowynEffect::isStateXml (element) || XmlText::isTag (element, oldTag ("PluginState"));
}

bool FerrowynOldCompatible::isPreset (const juce::XmlElement& element) const
{
    return FerrowynEffect::isPreset (element) || XmlText::isTag (element, oldTag ("Preset"));
}

bool FerrowynOldCompatible::isGroup (const juce::XmlElement& element) const
{
    return FerrowynEffect::isGroup (element) || XmlText::isTag (element, oldTag ("PresetGroup"));
}

bool FerrowynOldCompatible::isBank (const juce::XmlElement& element) const
{
    return FerrowynEffect::isBank (element) || XmlText::isTag (element, oldTag ("PresetBank"));
}

void FerrowynOldCompatible::readState (const juce::XmlElement& element)
{
    if (!XmlText::isTag (element, oldTag ("PluginState")))
    {
        FerrowynEffect::readState (element);
        return;
    }

    // An old state has no live parameters: they come from applying its selected preset.
    for (auto* child : element.getChildIterator())
    {
        if (XmlText::isTag (*child, "UniqueData"))
            readUniqueData (*child);
        else if (isBank (*child))
            readBank (*child);
        else if (midiControl->isMapXml (*child))
            midiControl->loadFromXml (*child);
    }

    setCurrentPreset (element.getIntAttribute ("currentPreset", 0), true);
    if (isValidPresetIndex (getCurrentPreset()))
        applyCurrentPreset();
}

int FerrowynOldCompatible::getNumOlderPresetExtensions() const { return 1; }
juce::String FerrowynOldCompatible::getOlderPresetExtension (int index) const
{
    return index == 0 ? olderExtension ("p") : juce::String();
}

int FerrowynOldCompatible::getNumOlderBankExtensions() const { return 1; }
juce::String FerrowynOldCompatible::getOlderBankExtension (int index) const
{
    return index == 0 ? olderExtension ("b") : juce::String();
}

int FerrowynOldCompatible::getNumOlderMapExtensions() const { return 1; }
juce::String FerrowynOldCompatible::getOlderMapExtension (int index) const
{
    return index == 0 ? olderExtension ("c") : juce::String();
}
