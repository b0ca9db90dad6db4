#pragma once

#include "Parameter.h"

// A text value. Texts can't live in an atomic, so reads take the read side of a lock and the setter the
// write side; an immediate listener on the setting thread may read the new text at once.
class StringParameter final : public Parameter
{
public:
    StringParameter (int index, const juce::String& name, const juce::String& value);

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

private:
    juce::ReadWriteLock lock;
    juce::String value;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (StringParameter)
};
