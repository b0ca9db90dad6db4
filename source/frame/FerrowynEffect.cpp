#include "frame/FerrowynEffect.h"

#include "common/XmlText.h"

#include <cmath>

const char* const FerrowynEffect::qualityNames[FerrowynEffect::numQualityLevels] = { "low", "medium", "high",
                                                                                     "highest" };

namespace
{
// Room for the MIDI of a busy block, reserved off the audio thread.
constexpr int midiQueueBytes = 8192;

// A level as the "Quality" parameter carries it: level / 3, in single precision.
constexpr float qualityStep = 0.33333334f;

int qualityLevelFromName (const juce::String& name)
{
    for (int i = 0; i < FerrowynEffect::numQualityLevels; ++i)
        if (name == FerrowynEffect::qualityNames[i])
            return i;
    return -1;
}
} // namespace

FerrowynEffect::FerrowynEffect (int numParametersToUse)
    : BasePluginOldStyle (numParametersToUse, numParametersToUse, 0)
{
    midiQueue.prepare (midiQueueBytes);
}

FerrowynEffect::~FerrowynEffect()
{
    // The editor's tick reads the core: it stops before the core goes.
    stopEditorTick();
    clocks.clear();
    setPresetChanger (nullptr);
    removePresetManagerListener (core.get());
    core.reset();
}

std::unique_ptr<juce::XmlElement> FerrowynEffect::createUniqueDataXml()
{
    auto xml = std::make_unique<juce::XmlElement> ("UniqueData");
    if (hasQualitySettings() && qualityParameter != nullptr)
        xml->setAttribute ("quality", qualityNames[qualityLevelOf (qualityParameter->getNormalizedValue())]);
    return xml;
}

void FerrowynEffect::readUniqueData (const juce::XmlElement& element)
{
    if (!hasQualitySettings() || qualityParameter == nullptr)
        return;
    const int level = qualityLevelFromName (element.getStringAttribute ("quality"));
    if (level >= 0)
        qualityParameter->setNormalizedValue ((float) level * qualityStep, true);
}

int FerrowynEffect::getNumberOfClocks() const { return 0; }
bool FerrowynEffect::hasQualitySettings() const { return false; }
bool FerrowynEffect::qualityNeedsRestart() const { return true; }

int FerrowynEffect::qualityLevelOf (float value) noexcept
{
    return juce::jlimit (0, numQualityLevels - 1, (int) std::floor (value * 3.0f + 0.5f));
}

void FerrowynEffect::initialise()
{
    if (hasQualitySettings())
        qualityParameter = parameters.getParameterByName ("Quality");

    for (int i = 0; i < getNumberOfClocks(); ++i)
        clocks.add (new Clock());

    removePresetManagerListener (core.get());
    core.reset (createCore());
    if (core != nullptr)
    {
        setPresetChanger (core.get());
        core->owner = this;
        addPresetManagerListener (core.get());
    }

    BasePluginOldStyle::initialise();

    if (hasQualitySettings() && qualityParameter != nullptr)
        qualityParameter->setNormalizedValue ((float) defaultQuality * qualityStep, true);
}

void FerrowynEffect::parameterChanged (Parameter* parameter)
{
    if (core != nullptr)
    {
        const juce::ScopedLock sl (familyLock);
        if (hasQualitySettings() && !qualityNeedsRestart() && parameter == qualityParameter)
            core->setQuality (qualityLevelOf (parameter->getNormalizedValue()));
        else
            core->setParameter (parameter->getIndex(), parameter->getNormalizedValue());
    }
    BasePluginOldStyle::parameterChanged (parameter);
}

std::unique_ptr<juce::XmlElement> FerrowynEffect::createStateXml()
{
    auto xml = BasePluginOldStyle::createStateXml();
    xml->insertChildElement (createUniqueDataXml().release(), 0);
    return xml;
}

void FerrowynEffect::readState (const juce::XmlElement& element)
{
    BasePluginOldStyle::readState (element);
    if (isStateXml (element))
        for (auto* child : XmlText::childrenTagged (element, "UniqueData"))
            readUniqueData (*child);
}

void FerrowynEffect::readUserSettings (const juce::XmlElement& element)
{
    BasePluginOldStyle::readUserSettings (element);
    if (!hasQualitySettings() || !isUserSettingsXml (element))
        return;
    for (auto* child : XmlText::childrenTagged (element, "QualitySettings"))
    {
        const int level = qualityLevelFromName (child->getStringAttribute ("default"));
        if (level >= 0)
            defaultQuality = level;
    }
}

std::unique_ptr<juce::XmlElement> FerrowynEffect::createUserSettingsXml()
{
    auto xml = BasePluginOldStyle::createUserSettingsXml();
    if (hasQualitySettings())
        xml->createNewChildElement ("QualitySettings")
            ->setAttribute ("default", qualityNames[defaultQuality]);
    return xml;
}

void FerrowynEffect::prepareToPlay (double sampleRate, int maximumExpectedSamplesPerBlock)
{
    preparedFlag.store (1);
    {
        const juce::ScopedLock family (familyLock);
        playedSincePrepare = false;
        preparedRate = sampleRate;
    }

    // An LV2 host starts its controls at the bundle's defaults and learns other values only from the
    // changes a plug-in sends; a new instance holds its first preset, so it says so once.
    if (wrapperType == wrapperType_LV2 && !startValuesAnnounced)
    {
        startValuesAnnounced = true;
        for (int i = 0; i < getNumberOfParameters(); ++i)
            if (auto* object = getHostParameterObject (i))
                object->sendValueChangedMessageToListeners (object->getValue());
    }

    for (auto* clock : clocks)
        clock->setSampleRate (sampleRate);

    if (core != nullptr)
    {
        core->prepare (maximumExpectedSamplesPerBlock);
        core->setSampleRate ((float) sampleRate);
        core->releaseReplacedRate();
        if (hasQualitySettings() && qualityNeedsRestart() && qualityParameter != nullptr)
            core->setQuality (qualityLevelOf (qualityParameter->getNormalizedValue()));

        // The host hears of a new latency through the processor's own report.
        const int latency = core->getLatency();
        if (latency != getLatencySamples())
            setLatencySamples (latency);
    }

    midiQueue.clear();
}

void FerrowynEffect::releaseResources() { preparedFlag.store (0); }

void FerrowynEffect::setStateInformation (const void* data, int sizeInBytes)
{
    BasePluginOldStyle::setStateInformation (data, sizeInBytes);

    // Most hosts restore a project before they prepare, and preparing settles the smoothing on the
    // restored values. JUCE's LV2 wrapper prepares as the instance is made, before the restore; nothing
    // has sounded since, so the restored settings are settled here the same way instead of gliding in.
    // The converters for the rate are built before the locks are taken, and the ones they replace are
    // freed after: an audio thread that arrives meanwhile waits only for the swap.
    if (core == nullptr)
        return;
    double rate = 0.0;
    {
        const juce::ScopedLock family (familyLock);
        if (preparedFlag.load() == 0 || playedSincePrepare)
            return;
        rate = preparedRate;
    }
    core->prepareSampleRate ((float) rate);
    {
        const juce::ScopedLock family (familyLock);
        if (preparedFlag.load() != 0 && !playedSincePrepare && preparedRate == rate)
        {
            const juce::ScopedLock coreSection (core->getCoreLock());
            core->setSampleRate ((float) rate);
        }
    }
    core->releaseReplacedRate();
}

void FerrowynEffect::feedClocks()
{
    auto* head = getPlayHead();
    if (head == nullptr)
        return;
    const auto position = head->getPosition();
    if (!position.hasValue())
        return;

    const double bpm = position->getBpm().orFallback (0.0);
    const double ppq = position->getPpqPosition().orFallback (0.0);
    if (core != nullptr)
        core->setTempo (bpm);

    for (auto* clock : clocks)
    {
        clock->setBpm (bpm);
        clock->setPosition (ppq);
        if (position->getIsPlaying())
        {
            if (!clock->isRunning())
                clock->start (ppq);
        }
        else if (clock->isRunning())
        {
            clock->stop();
        }
    }
}

void FerrowynEffect::processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midiMessages)
{
    // Hosts differ on flushing subnormals; the sound must not.
    juce::ScopedNoDenormals noDenormals;

    const int n = buffer.getNumSamples();
    if (!clocks.isEmpty())
        feedClocks();

    const int numIn = getTotalNumInputChannels();
    const int numOut = getTotalNumOutputChannels();
    stereoRun = numIn == 2 && numOut == 2 && buffer.getNumChannels() >= 2;

    for (int channel = numIn; channel < numOut && channel < buffer.getNumChannels(); ++channel)
        buffer.clear (channel, 0, n);

    leftRun = buffer.getNumChannels() > 0 ? buffer.getWritePointer (0) : nullptr;
    rightRun = stereoRun ? buffer.getWritePointer (1) : nullptr;

    midiQueue.addEvents (midiMessages);

    pendingSamples = 0;
    juce::MidiMessageMetadata event;
    for (int p = 0; p < n;)
    {
        while (midiQueue.nextEventDue (p, event))
        {
            runPendingSamples();
            handleMidiEvent (event.getMessage());
        }

        if (clocks.isEmpty())
        {
            // Nothing happens between events: jump to the next one.
            const int next = midiQueue.getNextEventPosition();
            const int until = next > p && next < n ? next : n;
            pendingSamples += until - p;
            p = until;
            continue;
        }

        for (int i = 0; i < clocks.size(); ++i)
        {
            auto* clock = clocks.getUnchecked (i);
            if (clock->tick())
            {
                runPendingSamples();
                if (core != nullptr && clock->isGateOn())
                {
                    const juce::ScopedLock sl (familyLock);
                    core->clockTick (i, clock);
                }
            }
        }
        ++pendingSamples;
        ++p;
    }
    runPendingSamples();

    midiQueue.advance (n);
}

void FerrowynEffect::runPendingSamples()
{
    if (pendingSamples <= 0)
        return;

    if (core != nullptr && leftRun != nullptr)
    {
        const juce::ScopedLock family (familyLock);
        const juce::ScopedLock coreSection (core->getCoreLock());
        playedSincePrepare = true;
        if (stereoRun)
            core->processStereo (&leftRun, &rightRun, pendingSamples);
        else
            core->processMono (&leftRun, pendingSamples);
    }

    if (leftRun != nullptr)
        leftRun += pendingSamples;
    if (stereoRun)
        rightRun += pendingSamples;
    pendingSamples = 0;
}

void FerrowynEffect::handleMidiEvent (const juce::MidiMessage& message)
{
    if (message.isController())
        midiControl->handleMidiMessage (message);
    else if (message.isProgramChange())
        programChange (message.getProgramChangeNumber());
}
