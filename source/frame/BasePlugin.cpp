#include "frame/BasePlugin.h"

#include "common/XmlText.h"
#include "skin/AudioProcessorEditorWrapper.h"
#include "skin/BasePluginEditor.h"

BasePlugin::BasePlugin (int numHostParameters)
    : juce::AudioProcessor (BusesProperties()
                                .withInput ("Input", juce::AudioChannelSet::stereo(), true)
                                .withOutput ("Output", juce::AudioChannelSet::stereo(), true))
{
    for (auto& v : plainValues)
        v.store (0.0f);
    for (auto& g : hostWriteGuard)
        g.store (0);

    midiControl = std::make_unique<MidiControl> (parameters);
    parameters.loadFromResource ("parameters.xml");
    events.loadFromResource ("events.xml");
    events.addBuiltInEvents();

    // Hosts take their parameter list at construction, so the objects exist from here on; until the
    // table is bound they answer from the plain values.
    const int count = juce::jlimit (0, maxHostParameters, numHostParameters);
    for (int i = 0; i < count; ++i)
    {
        auto* object = new HostParameter (*this, i, parameters.getNormalizedValue (i));
        hostParameterObjects.add (object);
        addParameter (object);
    }
}

BasePlugin::~BasePlugin()
{
    stopEditorTick();
    editor.reset();
    cancelPendingUpdate();
    midiControl.reset();
}

void BasePlugin::holdMessagesUntilDestroyed()
{
    if (destructionHold == nullptr)
        destructionHold = std::make_unique<MessageThreadHold>();
}

void BasePlugin::start (const juce::File& pluginFileToUse)
{
    const auto file = pluginFileToUse != juce::File()
                          ? pluginFileToUse
                          : juce::File::getSpecialLocation (juce::File::currentApplicationFile);
    pluginFile = file.getFullPathName();
    pluginFolder = file.getParentDirectory().getFullPathName();

    initialise();
    parameters.notifyAll();
}

void BasePlugin::initialise()
{
    parameters.addImmediateListenerToAll (this);
    loadUserSettings();
    midiControl->initialise (getName());
}

juce::String BasePlugin::getPluginName() const { return "BasePlugin"; }
juce::String BasePlugin::getPluginCode() const { return "XX"; }

bool BasePlugin::isStateXml (const juce::XmlElement& element) const
{
    return XmlText::isTag (element, "PluginState") && element.getStringAttribute ("application") == getName();
}

void BasePlugin::readState (const juce::XmlElement&) {}

std::unique_ptr<juce::XmlElement> BasePlugin::createStateXml()
{
    auto xml = std::make_unique<juce::XmlElement> ("PluginState");
    xml->setAttribute ("application", getName());
    return xml;
}

void BasePlugin::readProgramState (const juce::XmlElement&) {}

std::unique_ptr<juce::XmlElement> BasePlugin::createProgramStateXml() { return nullptr; }

bool BasePlugin::isUserSettingsXml (const juce::XmlElement& element) const
{
    return XmlText::isTag (element, "UserSettings")
           && element.getStringAttribute ("application") == getName();
}

void BasePlugin::readUserSettings (const juce::XmlElement&) {}

std::unique_ptr<juce::XmlElement> BasePlugin::createUserSettingsXml() { return nullptr; }

int BasePlugin::getNumberOfParameters() const { return maxHostParameters; }

juce::String BasePlugin::getParameterTextFor (int id) { return parameters.getStringValue (id); }

bool BasePlugin::isDebugMode() const { return false; }

void BasePlugin::handleEvent (int id)
{
    // The family's event numbers for stepping through presets.
    constexpr int selectNextPresetEvent = 1002, selectPreviousPresetEvent = 1003;
    if (presetCollection == nullptr)
        return;
    if (id == selectNextPresetEvent)
        presetCollection->selectNextPreset();
    else if (id == selectPreviousPresetEvent)
        presetCollection->selectPreviousPreset();
}

PresetCollection* BasePlugin::getPresetCollection() const { return presetCollection; }

juce::String BasePlugin::getParameterTextForValue (int hostIndex, float normalisedValue)
{
    auto* p = getParameterForHostIndex (hostIndex);
    if (p == nullptr)
        return juce::String (normalisedValue, 9);
    auto copy = p->clone();
    copy->setNormalizedValue (normalisedValue, false);
    return copy->getStringValue();
}

float BasePlugin::getParameterValueForText (int hostIndex, const juce::String& text)
{
    auto* p = getParameterForHostIndex (hostIndex);
    if (p == nullptr)
        return juce::jlimit (0.0f, 1.0f, text.getFloatValue());
    auto copy = p->clone();
    copy->setStringValue (text, false);
    return copy->getNormalizedValue();
}

int BasePlugin::getHostParameterNumSteps (int) const { return 0; }

int BasePlugin::hostCount() const { return juce::jmin (getNumberOfParameters(), maxHostParameters); }

Parameter* BasePlugin::getParameterForHostIndex (int hostIndex) const
{
    const juce::ScopedLock sl (hostParametersLock);
    return hostParameters[hostIndex];
}

int BasePlugin::getHostIndexOf (const Parameter* parameter) const
{
    if (parameter == nullptr)
        return -1;
    const juce::ScopedLock sl (hostIndexLock);
    const int id = parameter->getIndex();
    return hostIndexOf.contains (id) ? hostIndexOf[id] : -1;
}

HostParameter* BasePlugin::getHostParameterObject (int hostIndex) const
{
    return hostParameterObjects[hostIndex];
}

void BasePlugin::bindHostParameters()
{
    const int count = hostCount();
    const juce::ScopedLock sl1 (hostParametersLock);
    const juce::ScopedLock sl2 (hostIndexLock);
    hostParameters.clearQuick();
    hostIndexOf.clear();
    for (int i = 0; i < count; ++i)
    {
        auto* p = parameters.getParameter (i);
        hostParameters.add (p);
        if (p != nullptr)
            hostIndexOf.set (p->getIndex(), i);
    }
}

juce::String BasePlugin::getHostParameterName (int hostIndex) const
{
    if (hostIndex < 0 || hostIndex >= hostCount())
        return {};
    if (auto* p = getParameterForHostIndex (hostIndex))
        return p->getName();
    return "Parameter " + juce::String (hostIndex + 1);
}

float BasePlugin::getHostParameter (int hostIndex) const
{
    if (hostIndex < 0 || hostIndex >= hostCount())
        return 0.0f;
    if (auto* p = getParameterForHostIndex (hostIndex))
        return p->getNormalizedValue();
    return plainValues[(size_t) hostIndex].load();
}

juce::String BasePlugin::getHostParameterText (int hostIndex)
{
    if (hostIndex < 0 || hostIndex >= hostCount())
        return {};
    if (auto* p = getParameterForHostIndex (hostIndex))
        return getParameterTextFor (p->getIndex());
    return juce::String (plainValues[(size_t) hostIndex].load(), 9);
}

void BasePlugin::setHostParameter (int hostIndex, float value)
{
    if (hostIndex < 0 || hostIndex >= hostCount())
        return;

    plainValues[(size_t) hostIndex].store (value);
    if (auto* p = getParameterForHostIndex (hostIndex))
    {
        // The guard keeps the host's own write from being sent back to it.
        hostWriteGuard[(size_t) hostIndex].store (1);
        p->setNormalizedValue (value, true);
        hostWriteGuard[(size_t) hostIndex].store (0);
    }
}

bool BasePlugin::isHostParameterAutomatable (int hostIndex) const
{
    return hostIndex >= 0 && hostIndex < hostCount();
}

void BasePlugin::parameterChanged (Parameter* parameter)
{
    const int hostIndex = getHostIndexOf (parameter);
    if (hostIndex < 0 || hostWriteGuard[(size_t) hostIndex].load() != 0)
        return;
    if (auto* object = getHostParameterObject (hostIndex))
        object->sendValueChangedMessageToListeners (parameter->getNormalizedValue());
}

void BasePlugin::parameterGestureBegan (Parameter* parameter)
{
    if (auto* object = getHostParameterObject (getHostIndexOf (parameter)))
        object->beginChangeGesture();
}

void BasePlugin::parameterGestureEnded (Parameter* parameter)
{
    if (auto* object = getHostParameterObject (getHostIndexOf (parameter)))
        object->endChangeGesture();
}

void BasePlugin::handleAsyncUpdate()
{
    if (stateLoadedFlag.exchange (0) != 0)
        for (int i = stateListeners.size(); --i >= 0;)
            if (auto* l = stateListeners[i])
                l->stateLoaded (this);

    if (stateSavedFlag.exchange (0) != 0)
        for (int i = stateListeners.size(); --i >= 0;)
            if (auto* l = stateListeners[i])
                l->stateSaved (this);
}

void BasePlugin::addStateListener (StateListener* listener)
{
    if (listener != nullptr)
        stateListeners.addIfNotAlreadyThere (listener);
}

void BasePlugin::removeStateListener (StateListener* listener)
{
    stateListeners.removeFirstMatchingValue (listener);
}

juce::File BasePlugin::getUserSettingsFile() const
{
    const auto fileName = getName() + ".ini";
    const juce::File folder (pluginFolder);
    if (juce::File::isAbsolutePath (pluginFolder) && folder.isDirectory() && folder.hasWriteAccess())
        return folder.getChildFile (fileName);

    auto configHome = juce::SystemStats::getEnvironmentVariable ("XDG_CONFIG_HOME", {});
    if (!juce::File::isAbsolutePath (configHome))
        configHome = juce::File::getSpecialLocation (juce::File::userHomeDirectory)
                         .getChildFile (".config")
                         .getFullPathName();
    return juce::File (configHome).getChildFile (getName()).getChildFile (fileName);
}

void BasePlugin::loadUserSettings()
{
    const auto file = getUserSettingsFile();
    if (!file.existsAsFile())
        return;
    if (auto xml = XmlText::parse (file))
        readUserSettings (*xml);
}

void BasePlugin::saveUserSettings()
{
    auto xml = createUserSettingsXml();
    if (xml == nullptr)
        return;

    const auto file = getUserSettingsFile();
    file.getParentDirectory().createDirectory();
    juce::XmlElement::TextFormat format;
    format.lineWrapLength = 60; // the family's document layout
    xml->writeTo (file, format);
}

const juce::String BasePlugin::getName() const { return getPluginName(); }
bool BasePlugin::acceptsMidi() const { return true; }
bool BasePlugin::producesMidi() const { return false; }
bool BasePlugin::isMidiEffect() const { return false; }
double BasePlugin::getTailLengthSeconds() const { return 0.0; }
void BasePlugin::reset() {}
bool BasePlugin::hasEditor() const { return true; }

BasePluginEditor* BasePlugin::createEditorComponent() { return new BasePluginEditor (*this); }

void BasePlugin::makeEditor()
{
    editor.reset (createEditorComponent());
    if (editor == nullptr)
        return;
    editor->createDefaultControls();
    if (isDebugMode())
        editor->createDebugPanel();
    editor->sendLookAndFeelChange();
    editor->startTimer (BasePluginEditor::tickMilliseconds);
    // Start ran through every parameter already; a second round would tell the host all values again as
    // the window opens. The controls hear the values through their deferred lists alone.
    parameters.triggerDeferredUpdates();
}

juce::AudioProcessorEditor* BasePlugin::createEditor()
{
    if (editor == nullptr)
        makeEditor();
    if (editor == nullptr)
        return nullptr;
    return new AudioProcessorEditorWrapper (*this, *editor);
}

void BasePlugin::stopEditorTick()
{
    if (editor != nullptr)
        editor->stopTimer();
}

bool BasePlugin::isBusesLayoutSupported (const BusesLayout& layouts) const
{
    // Mono and stereo on either side; the family layer runs mono whenever either side has one channel.
    const auto in = layouts.getMainInputChannelSet();
    const auto out = layouts.getMainOutputChannelSet();
    auto monoOrStereo = [] (const juce::AudioChannelSet& set)
    { return set == juce::AudioChannelSet::mono() || set == juce::AudioChannelSet::stereo(); };
    return monoOrStereo (in) && monoOrStereo (out);
}

int BasePlugin::getNumPrograms() { return 0; }
int BasePlugin::getCurrentProgram() { return 0; }
void BasePlugin::setCurrentProgram (int) {}
const juce::String BasePlugin::getProgramName (int) { return {}; }
void BasePlugin::changeProgramName (int, const juce::String&) {}

void BasePlugin::getStateInformation (juce::MemoryBlock& destData)
{
    if (auto xml = createStateXml())
        copyXmlToBinary (*xml, destData);
    stateSavedFlag.store (1);
    triggerAsyncUpdate();
}

void BasePlugin::setStateInformation (const void* data, int sizeInBytes)
{
    if (data != nullptr && sizeInBytes > 0)
        if (auto xml = XmlText::fromBinary (data, sizeInBytes))
            readState (*xml);
    stateLoadedFlag.store (1);
    triggerAsyncUpdate();
}

void BasePlugin::getCurrentProgramStateInformation (juce::MemoryBlock& destData)
{
    if (auto xml = createProgramStateXml())
        copyXmlToBinary (*xml, destData);
}

void BasePlugin::setCurrentProgramStateInformation (const void* data, int sizeInBytes)
{
    if (data != nullptr && sizeInBytes > 0)
        if (auto xml = XmlText::fromBinary (data, sizeInBytes))
            readProgramState (*xml);
}
