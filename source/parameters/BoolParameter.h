#pragma once

#include "Parameter.h"

// A switch, shown in one of four word pairs.
class BoolParameter final : public Parameter
{
public:
    // displayStyle 0 (and any unknown style) shows true/false, 1 on/off, 2 1/0, 3 yes/no.
    BoolParameter (int index, const juce::String& name, int displayStyle);

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

    int getDisplayStyle() const noexcept { return displayStyle; }

private:
    void store (bool newValue, bool notify);

    const int displayStyle;
    std::atomic<int> value{ 0 };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BoolParameter)
};
