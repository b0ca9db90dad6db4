#include "MidiControl.h"

#include "common/ListenerWalk.h"
#include "common/NumberText.h"
#include "common/XmlText.h"
#include "parameters/Parameter.h"
#include "parameters/ParameterManager.h"

#include <algorithm>
#include <utility>

namespace
{
// 1/127 rounded to a float, so that a controller value of 127 reaches the top of a range.
constexpr float controllerScale = 0.007874016f;

// Status byte, controller number and value.
constexpr int controlChangeSize = 3;

// The highest value that a MIDI data byte can carry.
constexpr int highestDataByte = 127;

// Map files are written like the preset files: UTF-8, no DTD, lines wrapped at 60.
constexpr int mapLineWrap = 60;
} // namespace

MidiControl::MidiControl (ParameterManager& manager)
    : parameterManager (&manager)
{
}

MidiControl::~MidiControl() { cancelPendingUpdate(); }

void MidiControl::handleAsyncUpdate()
{
    bool tellMap = false, tellLearn = false, tellMoved = false;

    {
        // Taken and cleared before telling, so that a change made during the walks triggers another
        // update instead of being lost; the walks run without the lock, leaving the audio thread free.
        const juce::ScopedLock locked (lock);
        tellMap = std::exchange (mapChanged, false);
        tellLearn = std::exchange (learnChanged, false);
        tellMoved = std::exchange (controllerMoved, false);
    }

    if (tellMap)
        callListenersBackwards (listeners, [this] (Listener& l) { l.midiMapChanged (this); });

    if (tellLearn)
        callListenersBackwards (listeners, [this] (Listener& l) { l.midiLearnChanged (this); });

    if (tellMoved)
        callListenersBackwards (listeners, [this] (Listener& l) { l.midiControllerMoved (this); });
}

bool MidiControl::isMapXml (const juce::XmlElement& xml) const
{
    return XmlText::isTag (xml, "MidiControlMap") || XmlText::isTag (xml, "MidiCCMap");
}

bool MidiControl::isValidMap (const juce::XmlElement& xml) const
{
    if (!isMapXml (xml))
        return false;

    const auto name = getApplicationName();

    return name.isEmpty() || name == xml.getStringAttribute ("name")
           || name == xml.getStringAttribute ("application");
}

void MidiControl::loadFromXml (const juce::XmlElement& xml)
{
    const juce::ScopedLock locked (lock);

    setLearnActive (false);
    map.fill (nullptr);
    numAssignments = 0;

    if (isValidMap (xml))
    {
        for (auto* row : xml.getChildIterator())
        {
            if (!XmlText::isTag (*row, "assign"))
                continue;

            auto* parameter = parameterManager->getParameterByName (row->getStringAttribute ("param"));

            if (parameter == nullptr || !parameter->isAutomatable())
                continue;

            int controller = 0;

            if (row->hasAttribute ("CC")
                && !NumberText::readInteger (row->getStringAttribute ("CC"), controller))
                continue;

            if (isController (controller))
                assign (controller, parameter, false);
        }
    }

    mapChanged = true;
    triggerAsyncUpdate();
}

std::unique_ptr<juce::XmlElement> MidiControl::createXml() const
{
    const juce::ScopedLock locked (lock);

    auto xml = std::make_unique<juce::XmlElement> ("MidiControlMap");
    xml->setAttribute ("name", applicationName);

    for (int controller = 0; controller < numControllers; ++controller)
    {
        if (auto* parameter = map[(size_t) controller])
        {
            auto* row = xml->createNewChildElement ("assign");
            row->setAttribute ("CC", controller);
            row->setAttribute ("param", parameter->getName());
        }
    }

    return xml;
}

bool MidiControl::loadFile (const juce::File& file)
{
    const auto xml = XmlText::parse (file);

    if (xml == nullptr)
        return false;

    loadFromXml (*xml);
    return true;
}

bool MidiControl::saveFile (const juce::File& file) const
{
    juce::XmlElement::TextFormat format;
    format.customEncoding = "UTF-8";
    format.lineWrapLength = mapLineWrap;
    return createXml()->writeTo (file, format);
}

void MidiControl::initialise (const juce::String& name)
{
    setApplicationName (name);

    const auto path = getDefaultMapFile();

    if (getUseDefaultMap() && juce::File::isAbsolutePath (path))
        loadFile (juce::File (path));
}

juce::String MidiControl::getApplicationName() const
{
    const juce::ScopedLock locked (lock);
    return applicationName;
}

void MidiControl::setApplicationName (const juce::String& name)
{
    const juce::ScopedLock locked (lock);
    applicationName = name;
}

bool MidiControl::getUseDefaultMap() const
{
    const juce::ScopedLock locked (lock);
    return useDefaultMap;
}

void MidiControl::setUseDefaultMap (bool shouldUse)
{
    const juce::ScopedLock locked (lock);
    useDefaultMap = shouldUse;
}

juce::String MidiControl::getDefaultMapFile() const
{
    const juce::ScopedLock locked (lock);
    return defaultMapFile;
}

void MidiControl::setDefaultMapFile (const juce::String& path)
{
    const juce::ScopedLock locked (lock);
    defaultMapFile = path;
}

void MidiControl::setLearnActive (bool shouldBeActive)
{
    const juce::ScopedLock locked (lock);

    if (shouldBeActive == learnActive)
        return;

    learnActive = shouldBeActive;
    learnParameter = nullptr;
    learnController = noController;
    callListenersBackwards (listeners, [this] (Listener& l) { l.midiLearnChanged (this); });
}

bool MidiControl::isLearnActive() const
{
    const juce::ScopedLock locked (lock);
    return learnActive;
}

Parameter* MidiControl::getLearnParameter() const
{
    const juce::ScopedLock locked (lock);
    return learnParameter;
}

int MidiControl::getLearnController() const
{
    const juce::ScopedLock locked (lock);
    return learnController;
}

Parameter* MidiControl::getLastMovedParameter() const
{
    const juce::ScopedLock locked (lock);
    return lastMovedParameter;
}

Parameter* MidiControl::getAssignedParameter (int controller) const
{
    if (!isController (controller))
        return nullptr;

    const juce::ScopedLock locked (lock);
    return map[(size_t) controller];
}

int MidiControl::getNumAssignments() const
{
    const juce::ScopedLock locked (lock);
    return numAssignments;
}

int MidiControl::findController (const Parameter* parameter) const
{
    if (parameter == nullptr)
        return noController;

    const juce::ScopedLock locked (lock);

    for (int controller = 0; controller < numControllers; ++controller)
        if (map[(size_t) controller] == parameter)
            return controller;

    return noController;
}

void MidiControl::setLearnParameter (Parameter* parameter)
{
    const juce::ScopedLock locked (lock);

    if (parameter == learnParameter)
        return;

    // A parameter opens a new step unless a free controller is waiting for one.
    if (learnController == noController || learnParameter != nullptr)
        learnController = findController (parameter);

    learnParameter = parameter;
    commitLearnStep();
}

void MidiControl::setLearnController (int controller)
{
    if (!isController (controller))
        return;

    const juce::ScopedLock locked (lock);

    if (controller == learnController)
        return;

    // A controller opens a new step unless a free parameter is waiting for one.
    if (learnParameter == nullptr || learnController != noController)
        learnParameter = map[(size_t) controller];

    learnController = controller;
    commitLearnStep();
}

void MidiControl::selectLearnAssignment (int controller)
{
    if (!isController (controller))
        return;

    const juce::ScopedLock locked (lock);
    learnController = controller;
    learnParameter = map[(size_t) controller];
    commitLearnStep();
}

void MidiControl::assign (int controller, Parameter* parameter, bool notify)
{
    if (!isController (controller))
        return;

    const juce::ScopedLock locked (lock);
    auto& entry = map[(size_t) controller];

    if (entry == parameter)
        return;

    if (parameter != nullptr)
    {
        const int previous = findController (parameter);

        if (previous != noController)
            map[(size_t) previous] = nullptr;
    }

    entry = parameter;
    countAssignments();

    if (notify)
    {
        mapChanged = true;
        triggerAsyncUpdate();
    }
}

void MidiControl::clearController (int controller)
{
    if (!isController (controller))
        return;

    const juce::ScopedLock locked (lock);
    auto& entry = map[(size_t) controller];

    if (entry != nullptr)
    {
        entry = nullptr;
        --numAssignments;
        mapChanged = true;
        triggerAsyncUpdate();
    }

    if (learnActive)
    {
        learnParameter = nullptr;
        learnController = noController;
        commitLearnStep();
    }
}

void MidiControl::clearAll()
{
    const juce::ScopedLock locked (lock);
    map.fill (nullptr);
    numAssignments = 0;
    mapChanged = true;
    triggerAsyncUpdate();
}

void MidiControl::handleMidiMessage (const juce::MidiMessage& message)
{
    if (!message.isController() || message.getRawDataSize() < controlChangeSize)
        return;

    const auto* data = message.getRawData();
    const int controller = data[1];
    const int value = data[2];

    // A byte with its top bit set is no data byte; such a message is malformed.
    if (controller > highestDataByte || value > highestDataByte)
        return;

    const juce::ScopedLock locked (lock);

    if (learnActive)
        setLearnController (controller);

    auto* parameter = map[(size_t) controller];

    if (parameter == nullptr)
        return;

    parameter->setNormalizedValue ((float) value * controllerScale, true);
    controllerMoved = true;
    lastMovedParameter = parameter;
    triggerAsyncUpdate();
}

void MidiControl::addListener (Listener* listener)
{
    if (listener == nullptr)
        return;

    const juce::ScopedLock locked (lock);
    listeners.addIfNotAlreadyThere (listener);
}

void MidiControl::removeListener (Listener* listener)
{
    const juce::ScopedLock locked (lock);
    listeners.removeFirstMatchingValue (listener);
}

bool MidiControl::isController (int controller) noexcept
{
    return controller >= 0 && controller < numControllers;
}

void MidiControl::commitLearnStep()
{
    if (learnController != noController && learnParameter != nullptr
        && map[(size_t) learnController] == nullptr)
        assign (learnController, learnParameter, true);

    learnChanged = true;
    triggerAsyncUpdate();
}

void MidiControl::countAssignments()
{
    numAssignments =
        (int) std::count_if (map.begin(), map.end(), [] (const Parameter* p) { return p != nullptr; });
}
