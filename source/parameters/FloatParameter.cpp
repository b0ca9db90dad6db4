#include "FloatParameter.h"

#include "common/NumberText.h"

#include <cmath>
#include <limits>

FloatParameter::FloatParameter (int parameterIndex, const juce::String& parameterName, float minimumValue,
                                float maximumValue, float startValue)
    : Parameter (parameterIndex, parameterName)
    , minimum (minimumValue)
    , maximum (maximumValue)
    , value (clamp (startValue))
{
}

std::unique_ptr<Parameter> FloatParameter::clone() const
{
    auto copy = std::make_unique<FloatParameter> (getIndex(), getName(), minimum, maximum, getValue());
    copy->setAutomatable (isAutomatable());
    return copy;
}

float FloatParameter::getValue() const { return value.load(); }

float FloatParameter::getNormalizedValue() const { return (value.load() - minimum) / (maximum - minimum); }

int FloatParameter::getIntValue() const
{
    const float v = value.load();

    // Truncation of a float beyond the int range is undefined, so those ends saturate.
    if (v >= (float) std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();

    if (v <= (float) std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();

    return std::isnan (v) ? 0 : (int) v;
}

bool FloatParameter::getBoolValue() const
{
    const float v = value.load();
    return (maximum - v) <= (v - minimum);
}

juce::String FloatParameter::getStringValue() const { return juce::String ((double) value.load(), 9); }

void FloatParameter::setValue (float newValue, bool notify) { store (clamp (newValue), notify); }

void FloatParameter::setNormalizedValue (float newValue, bool notify)
{
    store ((maximum - minimum) * NumberText::limitToUnit (newValue) + minimum, notify);
}

void FloatParameter::setIntValue (int newValue, bool notify) { store (clamp ((float) newValue), notify); }

void FloatParameter::setBoolValue (bool newValue, bool notify)
{
    store (newValue ? maximum : minimum, notify);
}

void FloatParameter::setStringValue (const juce::String& newValue, bool notify)
{
    store (clamp (NumberText::toFloat (newValue.getDoubleValue())), notify);
}

void FloatParameter::setFrom (const Parameter& other, bool notify)
{
    store (clamp (other.getValue()), notify);
}

float FloatParameter::clamp (double x) const noexcept
{
    if (minimum <= x && x <= maximum)
        return (float) x;

    return x > maximum ? maximum : minimum;
}

void FloatParameter::store (float newValue, bool notify)
{
    if (value.load() == newValue)
        return;

    value.store (newValue);
    valueChanged (notify);
}
