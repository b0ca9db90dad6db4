#include "presets/BasePluginOldStyle.h"

#include "frame/ResourceLoader.h"
#include "frame/XmlText.h"
#include "parameters/IntParameter.h"
#include "parameters/StringParameter.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace
{
// Event numbers of the skin's preset actions.
constexpr int selectNextPresetEvent = 1002;
constexpr int selectPreviousPresetEvent = 1003;
constexpr int copyPresetEvent = 1007;
constexpr int pastePresetEvent = 1008;
constexpr int storePresetEvent = 1009;

juce::String formatG9 (double value)
{
    char text[64];
    std::snprintf (text, sizeof (text), "%.9g", value);
    return text;
}
} // namespace

BasePluginOldStyle::BasePluginOldStyle (int numParametersToUse, int numPresetParametersToUse,
                                        int numOtherParametersToUse)
    : BasePlugin (numParametersToUse)
    , numParameters (numParametersToUse)
    , numPresetParameters (numPresetParametersToUse)
    , numOtherParameters (numOtherParametersToUse)
{
    defaultPreset = std::make_unique<Preset> (numPresetParameters, -1);
    clipboardPreset = std::make_unique<Preset> (numPresetParameters, -1);
    for (int i = 0; i < numPresetsInBank; ++i)
        presets.add (new Preset (numPresetParameters, i));

    for (int i = 0; i < numPresetParameters; ++i)
        defaultPreset->setValue (i, parameters.getNormalizedValue (i));

    parameters.addParameter (
        new IntParameter (currentPresetNumberId, "Current Preset Number", 0, numPresetsInBank - 1, 0));
    parameters.addParameter (new StringParameter (currentPresetNameId, "Current Preset Name", {}));
}

BasePluginOldStyle::~BasePluginOldStyle() = default;

void BasePluginOldStyle::initialise()
{
    bindHostParameters();
    recentDirectory = juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName();

    BasePlugin::initialise();

    loadDefaultPresetResource ("default" + getPresetExtension());
    announceStartValuesAsDefaults();

    if (presetsMode == clearPresets)
        clearBank();
    else if (!loadUserBankAtStart())
        loadBankResource ("default" + getBankExtension());

    if (isValidPresetIndex (currentPreset.load()))
        applyCurrentPreset();

    for (int i = numPresetParameters; i < numPresetParameters + numOtherParameters; ++i)
        parameters.setNormalizedValue (i, parameters.getNormalizedValue (i));
}

bool BasePluginOldStyle::loadUserBankAtStart()
{
    // A user bank that is missing, doesn't parse or holds no preset of ours (a preset file chosen by
    // mistake, another application's document, a truncated file) starts the plug-in as if there were
    // none: the factory bank. The setting and the file stay as they are, so nothing the user chose is
    // lost and the file is tried again at the next start.
    if (presetsMode != userDefinedPresets || presetsFile.isEmpty()
        || !juce::File::isAbsolutePath (presetsFile))
        return false;
    const juce::File file (presetsFile);
    auto xml = file.existsAsFile() ? XmlText::parse (file) : nullptr;
    if (xml == nullptr || !holdsPresetOfOurs (*xml))
        return false;
    setRecentDirectory (file.getParentDirectory().getFullPathName());
    return applyBank (*xml);
}

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

void BasePluginOldStyle::announceStartValuesAsDefaults()
{
    // Hosts are told as defaults the values a new instance starts with, the first preset of the factory
    // bank, so that a host's "reset to default" and what it shows before it hears from the plug-in agree
    // with the sound. The preset is read as the bank reads it: over the default preset's values.
    auto bank = XmlText::parse (loadResourceText ("default" + getBankExtension()));
    if (bank == nullptr || !holdsPresetOfOurs (*bank))
        return;
    Preset first (numPresetParameters, -1);
    first.copyValuesFrom (*defaultPreset);
    for (auto* group : bank->getChildIterator())
        if (isGroup (*group))
            for (auto* preset : group->getChildIterator())
                if (readPreset (*preset, first))
                {
                    for (int i = 0; i < numPresetParameters; ++i)
                        if (auto* object = getHostParameterObject (i))
                            object->setDefaultValue (first.getValue (i));
                    return;
                }
}

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

int BasePluginOldStyle::getNumPresets() const { return numPresetsInBank; }

int BasePluginOldStyle::getNumGroups() const
{
    const juce::ScopedLock sl (groupsLock);
    return groups.size();
}

Preset* BasePluginOldStyle::getPreset (int index) const
{
    const juce::ScopedLock sl (presetsLock);
    return isValidPresetIndex (index) ? presets[index] : nullptr;
}

juce::String BasePluginOldStyle::getPresetName (int index) const
{
    const juce::ScopedLock sl (presetsLock);
    return isValidPresetIndex (index) ? presets[index]->name : juce::String();
}

void BasePluginOldStyle::setPresetName (int index, const juce::String& name)
{
    if (!isValidPresetIndex (index))
        return;
    {
        const juce::ScopedLock sl (presetsLock);
        presets[index]->name = name;
    }
    if (index == currentPreset.load())
        parameters.setStringValue (currentPresetNameId, name);
}

juce::String BasePluginOldStyle::getPresetNameInGroup (int group, int position) const
{
    return getPresetName (getPresetIndex (group, position));
}

int BasePluginOldStyle::getGroupOfPreset (int index) const
{
    const juce::ScopedLock sl (groupsLock);
    int start = 0;
    for (int g = 0; g < groups.size(); ++g)
    {
        const int size = groups[g]->size;
        if (index >= start && index < start + size)
            return g;
        start += size;
    }
    return -1;
}

juce::String BasePluginOldStyle::getGroupName (int group) const
{
    const juce::ScopedLock sl (groupsLock);
    auto* g = groups[group];
    return g != nullptr ? g->name : juce::String();
}

void BasePluginOldStyle::setGroupName (int group, const juce::String& name)
{
    const juce::ScopedLock sl (groupsLock);
    if (auto* g = groups[group])
        g->name = name;
}

int BasePluginOldStyle::getGroupSize (int group) const
{
    const juce::ScopedLock sl (groupsLock);
    auto* g = groups[group];
    return g != nullptr ? g->size : 0;
}

int BasePluginOldStyle::getGroupStart (int group) const
{
    const juce::ScopedLock sl (groupsLock);
    if (group < 0 || group >= groups.size())
        return -1;
    int start = 0;
    for (int g = 0; g < group; ++g)
        start += groups[g]->size;
    return start;
}

int BasePluginOldStyle::getGroupEnd (int group) const
{
    const int start = getGroupStart (group);
    if (start < 0)
        return -1;
    return start + getGroupSize (group) - 1;
}

int BasePluginOldStyle::getPresetIndex (int group, int position) const
{
    const int start = getGroupStart (group);
    if (start < 0 || position < 0 || position >= getGroupSize (group))
        return -1;
    return start + position;
}

juce::String BasePluginOldStyle::getBankName() const { return bankName; }

void BasePluginOldStyle::restoreSelection (const Preset* selected)
{
    int position = -1;
    {
        const juce::ScopedLock sl (presetsLock);
        position = presets.indexOf (selected);
    }
    setCurrentPreset (position, false);
}

void BasePluginOldStyle::movePreset (int from, int to, int fromGroup, int toGroup)
{
    const int numGroups = getNumGroups();
    if (from == to || !isValidPresetIndex (from) || !isValidPresetIndex (to) || fromGroup < 0
        || fromGroup >= numGroups || toGroup < 0 || toGroup >= numGroups)
        return;

    const auto* selected = getPreset (currentPreset.load());
    if (fromGroup != toGroup)
    {
        const juce::ScopedLock sl (groupsLock);
        groups[fromGroup]->size -= 1;
        groups[toGroup]->size += 1;
    }
    {
        const juce::ScopedLock sl (presetsLock);
        presets.move (from, to);
    }
    restoreSelection (selected);
}

void BasePluginOldStyle::movePresetsToGroup (int toGroup, int fromGroup,
                                             const juce::SparseSet<int>& selection)
{
    const int numGroups = getNumGroups();
    if (toGroup == fromGroup || toGroup < 0 || toGroup >= numGroups || fromGroup < 0 || fromGroup >= numGroups
        || selection.isEmpty())
        return;

    // A selection reaching outside its group would tear the groups apart: refuse it whole.
    const int fromSize = getGroupSize (fromGroup);
    if (selection[0] < 0 || selection[selection.size() - 1] >= fromSize)
        return;

    const auto* selected = getPreset (currentPreset.load());
    const int total = selection.size();
    const int source = getGroupStart (fromGroup);
    int destination = getGroupStart (toGroup) + getGroupSize (toGroup);

    {
        const juce::ScopedLock sl (presetsLock);
        if (fromGroup < toGroup)
        {
            for (int r = selection.getNumRanges(); --r >= 0;)
            {
                const auto range = selection.getRange (r);
                for (int position = range.getEnd(); --position >= range.getStart();)
                {
                    --destination;
                    presets.move (source + position, destination);
                }
            }
        }
        else
        {
            for (int r = 0; r < selection.getNumRanges(); ++r)
            {
                const auto range = selection.getRange (r);
                for (int position = range.getStart(); position < range.getEnd(); ++position)
                {
                    presets.move (source + position, destination);
                    ++destination;
                }
            }
        }
    }
    {
        const juce::ScopedLock sl (groupsLock);
        groups[fromGroup]->size -= total;
        groups[toGroup]->size += total;
    }
    restoreSelection (selected);
}

void BasePluginOldStyle::moveGroup (int from, int to)
{
    const int numGroups = getNumGroups();
    if (from == to || from < 0 || from >= numGroups || to < 0 || to >= numGroups)
        return;

    const auto* selected = getPreset (currentPreset.load());
    const int start = getGroupStart (from);
    const int count = getGroupSize (from);
    int destination = getGroupStart (to);
    if (from < to)
        destination += getGroupSize (to) - count;

    {
        const juce::ScopedLock sl (presetsLock);
        juce::Array<Preset*> taken;
        for (int i = 0; i < count; ++i)
            taken.add (presets.removeAndReturn (start));
        for (int i = 0; i < count; ++i)
            presets.insert (destination + i, taken[i]);
    }
    {
        const juce::ScopedLock sl (groupsLock);
        groups.move (from, to);
    }
    restoreSelection (selected);
}

void BasePluginOldStyle::insertGroup (int position)
{
    const juce::ScopedLock sl (groupsLock);
    if (position >= 0 && position < groups.size())
        groups.insert (position, new PresetGroup ("New Group", 0));
}

void BasePluginOldStyle::removeEmptyGroup (int group)
{
    const juce::ScopedLock sl (groupsLock);
    if (auto* g = groups[group])
        if (g->size == 0)
            groups.remove (group);
}

void BasePluginOldStyle::selectPreset (int index)
{
    if (index == currentPreset.load() || !isValidPresetIndex (index))
        return;
    programChange (index);
}

void BasePluginOldStyle::programChange (int index)
{
    if (!isValidPresetIndex (index))
        return;
    currentPreset.store (index);
    if (changingType.load() == silent && presetChanger != nullptr)
    {
        presetChanger->beginPresetChange();
        return;
    }
    applyCurrentPreset();
}

void BasePluginOldStyle::selectNextPreset() { selectPreset (currentPreset.load() + 1); }
void BasePluginOldStyle::selectPreviousPreset() { selectPreset (currentPreset.load() - 1); }

void BasePluginOldStyle::setCurrentPreset (int index, bool notify)
{
    if (!isValidPresetIndex (index))
        return;
    currentPreset.store (index);
    if (auto* number = parameters.getParameter (currentPresetNumberId))
        number->setIntValue (index, notify);
    if (auto* name = parameters.getParameter (currentPresetNameId))
        name->setStringValue (getPresetName (index), notify);
}

void BasePluginOldStyle::applyCurrentPreset()
{
    const int index = currentPreset.load();
    const auto* preset = getPreset (index);
    for (int i = 0; i < numPresetParameters; ++i)
        parameters.setNormalizedValue (i, preset != nullptr ? preset->getValue (i) : 0.0f);

    parameters.setIntValue (currentPresetNumberId, index);
    parameters.setStringValue (currentPresetNameId, getPresetName (index));

    for (int i = presetManagerListeners.size(); --i >= 0;)
        if (auto* l = presetManagerListeners[i])
            l->presetChanged();
}

void BasePluginOldStyle::storePreset (int index)
{
    if (auto* preset = getPreset (index))
        for (int i = 0; i < numPresetParameters; ++i)
            preset->setValue (i, parameters.getNormalizedValue (i));
}

void BasePluginOldStyle::copyCurrentPreset()
{
    {
        const juce::ScopedLock sl (presetsLock);
        clipboardPreset->name = getPresetName (currentPreset.load()) + "_copy";
    }
    for (int i = 0; i < numPresetParameters; ++i)
        clipboardPreset->setValue (i, parameters.getNormalizedValue (i));
    clipboardFilled = true;
}

void BasePluginOldStyle::pasteCopiedPreset()
{
    if (!clipboardFilled)
        return;

    for (int i = 0; i < clipboardPreset->numValues; ++i)
        parameters.setNormalizedValue (i, clipboardPreset->getValue (i));

    const int index = currentPreset.load();
    if (auto* preset = getPreset (index))
    {
        const juce::ScopedLock sl (presetsLock);
        preset->name = clipboardPreset->name;
    }
    storePreset (index);
    if (isValidPresetIndex (index))
        applyCurrentPreset();
}

void BasePluginOldStyle::setStoringMode (int mode)
{
    storingMode.store (mode);
    if (mode == automatic)
        storePreset (currentPreset.load());
}

void BasePluginOldStyle::setRecentDirectory (const juce::String& directory)
{
    if (juce::File::isAbsolutePath (directory) && juce::File (directory).isDirectory())
        recentDirectory = directory;
}

juce::String BasePluginOldStyle::getRecentDirectory() const { return recentDirectory; }

void BasePluginOldStyle::addPresetManagerListener (PresetManagerListener* listener)
{
    if (listener != nullptr)
        presetManagerListeners.addIfNotAlreadyThere (listener);
}

void BasePluginOldStyle::removePresetManagerListener (PresetManagerListener* listener)
{
    presetManagerListeners.removeFirstMatchingValue (listener);
}

void BasePluginOldStyle::handleEvent (int uid)
{
    switch (uid)
    {
        case selectNextPresetEvent:
            selectNextPreset();
            break;
        case selectPreviousPresetEvent:
            selectPreviousPreset();
            break;
        case copyPresetEvent:
            copyCurrentPreset();
            break;
        case pastePresetEvent:
            pasteCopiedPreset();
            break;
        case storePresetEvent:
            storePreset (currentPreset.load());
            break;
        default:
            break;
    }
}

void BasePluginOldStyle::parameterChanged (Parameter* parameter)
{
    if (parameter->getIndex() == currentPresetNameId)
    {
        // A rename in the name display reaches the slot in either storing mode; the host sees none of it.
        setPresetName (currentPreset.load(), parameter->getStringValue());
        return;
    }

    if (storingMode.load() == automatic && parameter->getIndex() >= 0
        && parameter->getIndex() < numPresetParameters)
        if (auto* preset = getPreset (currentPreset.load()))
            preset->setValue (parameter->getIndex(), parameter->getNormalizedValue());

    BasePlugin::parameterChanged (parameter);
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
