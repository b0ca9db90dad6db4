#include "presets/BasePluginOldStyle.h"

#include "common/ResourceLoader.h"
#include "common/XmlText.h"
#include "parameters/IntParameter.h"
#include "parameters/StringParameter.h"

// Start-up, the selection of presets, storing, copying and pasting, and the editor's preset events.

namespace
{
// Event numbers of the skin's preset actions.
constexpr int selectNextPresetEvent = 1002;
constexpr int selectPreviousPresetEvent = 1003;
constexpr int copyPresetEvent = 1007;
constexpr int pastePresetEvent = 1008;
constexpr int storePresetEvent = 1009;
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
