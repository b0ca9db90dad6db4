#include "StringParameter.h"

#include "common/NumberText.h"

StringParameter::StringParameter (int parameterIndex, const juce::String& parameterName,
                                  const juce::String& startValue)
    : Parameter (parameterIndex, parameterName)
    , value (startValue)
{
}

std::unique_ptr<Parameter> StringParameter::clone() const
{
    auto copy = std::make_unique<StringParameter> (getIndex(), getName(), getStringValue());
    copy->setAutomatable (isAutomatable());
    return copy;
}

float StringParameter::getValue() const { return NumberText::toFloat (getStringValue().getDoubleValue()); }

float StringParameter::getNormalizedValue() const { return NumberText::limitToUnit (getValue()); }

int StringParameter::getIntValue() const { return NumberText::leadingInteger (getStringValue()); }

bool StringParameter::getBoolValue() const
{
    const auto text = getStringValue();
    return text == "true" || NumberText::leadingInteger (text) != 0;
}

juce::String StringParameter::getStringValue() const
{
    const juce::ScopedReadLock reading (lock);
    return value;
}

void StringParameter::setValue (float newValue, bool notify)
{
    setStringValue (juce::String::formatted ("%.9g", (double) newValue), notify);
}

void StringParameter::setNormalizedValue (float newValue, bool notify) { setValue (newValue, notify); }

void StringParameter::setIntValue (int newValue, bool notify)
{
    setStringValue (juce::String (newValue), notify);
}

void StringParameter::setBoolValue (bool newValue, bool notify)
{
    setStringValue (newValue ? "true" : "false", notify);
}

void StringParameter::setStringValue (const juce::String& newValue, bool notify)
{
    {
        const juce::ScopedWriteLock writing (lock);

        if (value == newValue)
            return;

        value = newValue;
    }
    // Listeners run outside the lock: the processor's take the family's lock, which the audio thread
    // holds while a preset it applies writes this text.
    valueChanged (notify);
}

void StringParameter::setFrom (const Parameter& other, bool notify)
{
    setStringValue (other.getStringValue(), notify);
}
