#include "IntParameter.h"

#include "common/NumberText.h"

#include <cmath>
#include <limits>

IntParameter::IntParameter (int parameterIndex, const juce::String& parameterName, int minimumValue,
                            int maximumValue, int startValue)
    : Parameter (parameterIndex, parameterName)
    , minimum (minimumValue)
    , maximum (maximumValue)
    , value (clamp (startValue))
{
}

std::unique_ptr<Parameter> IntParameter::clone() const
{
    auto copy = std::make_unique<IntParameter> (getIndex(), getName(), minimum, maximum, getIntValue());
    copy->setAutomatable (isAutomatable());
    return copy;
}

float IntParameter::getValue() const { return (float) value.load(); }

float IntParameter::getNormalizedValue() const
{
    // In 64 bits so that a range spanning the whole int type doesn't overflow.
    return (float) ((juce::int64) value.load() - minimum) / (float) ((juce::int64) maximum - minimum);
}

int IntParameter::getIntValue() const { return value.load(); }

bool IntParameter::getBoolValue() const { return value.load() != minimum; }

juce::String IntParameter::getStringValue() const { return juce::String (value.load()); }

void IntParameter::setValue (float newValue, bool notify)
{
    // Truncating then clamping equals clamping then truncating, since the bounds are whole numbers; this
    // order keeps the float inside the int range before the conversion.
    int clamped = minimum;

    if (newValue >= (float) maximum)
        clamped = maximum;
    else if (newValue > (float) minimum)
        clamped = clamp ((int) newValue);

    store (clamped, notify);
}

void IntParameter::setNormalizedValue (float newValue, bool notify)
{
    const float x = (float) ((juce::int64) maximum - minimum) * NumberText::limitToUnit (newValue) + 0.5f;
    const double stepped = std::floor ((double) x) + (double) minimum;

    // Only a range near the int limits can round past them in float; keep the conversion defined there.
    store ((int) juce::jlimit ((double) std::numeric_limits<int>::min(),
                               (double) std::numeric_limits<int>::max(), stepped),
           notify);
}

void IntParameter::setIntValue (int newValue, bool notify) { store (clamp (newValue), notify); }

void IntParameter::setBoolValue (bool newValue, bool notify) { store (newValue ? maximum : minimum, notify); }

void IntParameter::setStringValue (const juce::String& newValue, bool notify)
{
    store (clamp (NumberText::leadingInteger (newValue)), notify);
}

void IntParameter::setFrom (const Parameter& other, bool notify)
{
    store (clamp (other.getIntValue()), notify);
}

int IntParameter::clamp (int x) const noexcept
{
    if (minimum <= x && x <= maximum)
        return x;

    return x > maximum ? maximum : minimum;
}

void IntParameter::store (int newValue, bool notify)
{
    if (value.load() == newValue)
        return;

    value.store (newValue);
    valueChanged (notify);
}
