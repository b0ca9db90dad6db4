#include "ParameterManager.h"

#include "BoolParameter.h"
#include "EnumParameter.h"
#include "FloatParameter.h"
#include "IntParameter.h"
#include "NoteParameter.h"
#include "StringParameter.h"
#include "common/NumberText.h"

#include "common/ResourceLoader.h"
#include "common/XmlText.h"

namespace
{
// Room for every parameter number in use without the buckets growing long.
constexpr int hashSlots = 10000;

// The index that a row uses to say it stands for no parameter.
constexpr int noIndex = -1;

// The display styles of the two boolean row types.
constexpr int trueFalseStyle = 0;
constexpr int onOffStyle = 1;
} // namespace

ParameterManager::ParameterManager()
{
    byIndex.remapTable (hashSlots);
    byName.remapTable (hashSlots);
}

ParameterManager::~ParameterManager() = default;

void ParameterManager::loadFromResource (const juce::String& key)
{
    const auto text = loadResourceText (key);

    if (text.isEmpty())
        return;

    if (const auto xml = XmlText::parse (text))
        loadFromXml (*xml);
}

void ParameterManager::loadFromXml (const juce::XmlElement& xml)
{
    clear();

    if (!XmlText::isTag (xml, "PluginParameters"))
        return;

    for (auto* row : xml.getChildIterator())
        if (XmlText::isTag (*row, "param"))
            if (auto parameter = createParameter (*row))
                addParameter (parameter.release());
}

void ParameterManager::clear()
{
    const juce::ScopedWriteLock writing (lock);
    byIndex.clear();
    byName.clear();
    parameters.clear();
}

bool ParameterManager::addParameter (Parameter* parameter)
{
    if (parameter == nullptr)
        return false;

    const juce::ScopedWriteLock writing (lock);

    if (parameters.contains (parameter))
        return false;

    std::unique_ptr<Parameter> owned (parameter);

    if (byIndex.contains (parameter->getIndex()) || byName.contains (parameter->getName()))
        return false;

    parameters.add (owned.release());
    byIndex.set (parameter->getIndex(), parameter);
    byName.set (parameter->getName(), parameter);
    return true;
}

int ParameterManager::getNumParameters() const
{
    const juce::ScopedReadLock reading (lock);
    return parameters.size();
}

Parameter* ParameterManager::getParameter (int index) const
{
    const juce::ScopedReadLock reading (lock);
    return byIndex[index];
}

Parameter* ParameterManager::getParameterByName (const juce::String& name) const
{
    const juce::ScopedReadLock reading (lock);
    return byName[name];
}

juce::String ParameterManager::getParameterName (int index) const
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        return parameter->getName();

    return {};
}

float ParameterManager::getValue (int index) const
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        return parameter->getValue();

    return 0.0f;
}

float ParameterManager::getNormalizedValue (int index) const
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        return parameter->getNormalizedValue();

    return 0.0f;
}

bool ParameterManager::getBoolValue (int index) const
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        return parameter->getBoolValue();

    return false;
}

juce::String ParameterManager::getStringValue (int index) const
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        return parameter->getStringValue();

    return {};
}

void ParameterManager::setNormalizedValue (int index, float value)
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        parameter->setNormalizedValue (value, true);
}

void ParameterManager::setIntValue (int index, int value)
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        parameter->setIntValue (value, true);
}

void ParameterManager::setStringValue (int index, const juce::String& text)
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        parameter->setStringValue (text, true);
}

void ParameterManager::addImmediateListener (int index, Parameter::Listener* listener)
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        parameter->addImmediateListener (listener);
}

void ParameterManager::addDeferredListener (int index, Parameter::Listener* listener)
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        parameter->addDeferredListener (listener);
}

void ParameterManager::removeDeferredListener (int index, Parameter::Listener* listener)
{
    const juce::ScopedReadLock reading (lock);

    if (auto* parameter = byIndex[index])
        parameter->removeDeferredListener (listener);
}

void ParameterManager::addImmediateListenerToAll (Parameter::Listener* listener)
{
    const juce::ScopedReadLock reading (lock);

    for (auto* parameter : parameters)
        parameter->addImmediateListener (listener);
}

void ParameterManager::addDeferredListenerToAll (Parameter::Listener* listener)
{
    const juce::ScopedReadLock reading (lock);

    for (auto* parameter : parameters)
        parameter->addDeferredListener (listener);
}

void ParameterManager::removeDeferredListenerFromAll (Parameter::Listener* listener)
{
    const juce::ScopedReadLock reading (lock);

    for (auto* parameter : parameters)
        parameter->removeDeferredListener (listener);
}

void ParameterManager::notifyAll()
{
    const juce::ScopedReadLock reading (lock);

    for (auto* parameter : parameters)
        parameter->sendChangeNotification();
}

void ParameterManager::triggerDeferredUpdates()
{
    const juce::ScopedReadLock reading (lock);

    for (auto* parameter : parameters)
        parameter->triggerAsyncUpdate();
}

std::unique_ptr<Parameter> ParameterManager::createParameter (const juce::XmlElement& row)
{
    int index = noIndex;

    // A number that isn't one whole integer would otherwise read as 0 and push out the real row 0.
    if (!NumberText::readInteger (row.getStringAttribute ("index"), index) || index == noIndex)
        return nullptr;

    const auto name = row.getStringAttribute ("name");

    if (name.isEmpty())
        return nullptr;

    const auto valueText = row.getStringAttribute ("value");
    const auto type = row.getStringAttribute ("type", "float");
    std::unique_ptr<Parameter> parameter;

    if (type == "float")
    {
        const auto minimum = NumberText::toFloat (row.getDoubleAttribute ("min", 0.0));
        const auto maximum = NumberText::toFloat (row.getDoubleAttribute ("max", 1.0));
        parameter = std::make_unique<FloatParameter> (index, name, minimum, maximum,
                                                      NumberText::toFloat (valueText.getDoubleValue()));
    }
    else if (type == "int")
    {
        const auto minimum =
            row.hasAttribute ("min") ? NumberText::leadingInteger (row.getStringAttribute ("min")) : 0;
        const auto maximum =
            row.hasAttribute ("max") ? NumberText::leadingInteger (row.getStringAttribute ("max")) : 1;
        parameter = std::make_unique<IntParameter> (index, name, minimum, maximum,
                                                    NumberText::leadingInteger (valueText));
    }
    else if (type == "string")
    {
        parameter = std::make_unique<StringParameter> (index, name, valueText);
    }
    else if (type == "bool" || type == "state")
    {
        parameter =
            std::make_unique<BoolParameter> (index, name, type == "bool" ? trueFalseStyle : onOffStyle);
        parameter->setStringValue (valueText, false);
    }
    else if (type == "enum")
    {
        parameter = std::make_unique<EnumParameter> (index, name, row.getStringAttribute ("enum"), valueText);
    }
    else if (type == "note")
    {
        int noteNumber = 0;
        NoteParameter::parseNoteText (valueText, noteNumber);
        parameter = std::make_unique<NoteParameter> (index, name, noteNumber);
    }
    else
    {
        return nullptr;
    }

    parameter->setAutomatable (row.getBoolAttribute ("auto", false));
    return parameter;
}
