#pragma once

#include "Parameter.h"

// A float value over minimum..maximum; every setter clamps, a NaN landing on the minimum.
class FloatParameter : public Parameter
{
public:
    FloatParameter (int index, const juce::String& name, float minimum, float maximum, float value);

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

    float getMinimum() const noexcept { return minimum; }
    float getMaximum() const noexcept { return maximum; }

private:
    float clamp (double x) const noexcept;
    void store (float newValue, bool notify);

    const float minimum;
    const float maximum;
    std::atomic<float> value;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (FloatParameter)
};
