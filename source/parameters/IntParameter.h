#pragma once

#include "Parameter.h"

// An integer value over minimum..maximum; every setter clamps.
class IntParameter : public Parameter
{
public:
    IntParameter (int index, const juce::String& name, int minimum, int maximum, int value);

    std::unique_ptr<Parameter> clone() const override;

    float getValue() const override;
    float getNormalizedValue() const override;
    int getIntValue() const override;
    bool getBoolValue() const override;
    juce::String getStringValue() const override;

    void setValue (float value, bool notify) override;
    void setNormalizedValue (float value, bool notify) override;
    void setIntValue (int value, bool notify) override;
    void setBoolValue (bool value, bool notify) override;
    void setStringValue (const juce::String& value, bool notify) override;
    void setFrom (const Parameter& other, bool notify) override;

    int getMinimum() const noexcept { return minimum; }
    int getMaximum() const noexcept { return maximum; }

protected:
    int clamp (int x) const noexcept;

private:
    void store (int newValue, bool notify);

    const int minimum;
    const int maximum;
    std::atomic<int> value;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (IntParameter)
};
