#include "BoolParameter.h"

#include "common/NumberText.h"

BoolParameter::BoolParameter (int parameterIndex, const juce::String& parameterName, int style)
    : Parameter (parameterIndex, parameterName)
    , displayStyle (style)
{
}

std::unique_ptr<Parameter> BoolParameter::clone() const
{
    auto copy = std::make_unique<BoolParameter> (getIndex(), getName(), displayStyle);
    copy->setBoolValue (getBoolValue(), false);
    copy->setAutomatable (isAutomatable());
    return copy;
}

float BoolParameter::getValue() const { return getBoolValue() ? 1.0f : 0.0f; }

float BoolParameter::getNormalizedValue() const { return getValue(); }

int BoolParameter::getIntValue() const { return getBoolValue() ? 1 : 0; }

bool BoolParameter::getBoolValue() const { return value.load() == 1; }

juce::String BoolParameter::getStringValue() const
{
    const bool on = getBoolValue();

    switch (displayStyle)
    {
        case 1:
            return on ? "on" : "off";
        case 2:
            return on ? "1" : "0";
        case 3:
            return on ? "yes" : "no";
        default:
            return on ? "true" : "false";
    }
}

void BoolParameter::setValue (float newValue, bool notify) { store (newValue != 0.0f, notify); }

void BoolParameter::setNormalizedValue (float newValue, bool notify) { store (newValue >= 0.5f, notify); }

void BoolParameter::setIntValue (int newValue, bool notify) { store (newValue != 0, notify); }

void BoolParameter::setBoolValue (bool newValue, bool notify) { store (newValue, notify); }

void BoolParameter::setStringValue (const juce::String& newValue, bool notify)
{
    if (newValue == "true" || newValue == "1" || newValue == "on" || newValue == "yes")
        store (true, notify);
    else if (newValue == "false" || newValue == "0" || newValue == "off" || newValue == "no")
        store (false, notify);
    else
        setNormalizedValue (NumberText::toFloat (newValue.getDoubleValue()), notify);
}

void BoolParameter::setFrom (const Parameter& other, bool notify) { store (other.getBoolValue(), notify); }

void BoolParameter::store (bool newValue, bool notify)
{
    const int newState = newValue ? 1 : 0;

    if (value.load() == newState)
        return;

    value.store (newState);
    valueChanged (notify);
}
