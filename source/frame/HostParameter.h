#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

class BasePlugin;

/** What a host sees of one host parameter index. It holds no value of its own: every call goes to the
    frame, which answers from the parameter table, so VST2, VST3 and LV2 hosts all see the same names,
    values, steps and texts, and typed text is turned back into a value in the parameter's own units. */
class HostParameter final : public juce::AudioProcessorParameterWithID
{
public:
    HostParameter (BasePlugin& owner, int hostIndex, float defaultValue);

    /** A stable identifier that sorts in index order: "p00", "p01" and so on. Formats that name their
        parameters (VST3, LV2) build their identifiers from it. */
    static juce::String idForIndex (int hostIndex);

    float getValue() const override;
    void setValue (float newValue) override;
    float getDefaultValue() const override;
    /** What hosts are told a "reset to default" gives: set once while the plug-in starts, before any host
        sees it. */
    void setDefaultValue (float newDefault) noexcept { defaultValue = newDefault; }
    juce::String getName (int maximumStringLength) const override;
    juce::String getLabel() const override;
    juce::String getText (float normalisedValue, int maximumStringLength) const override;
    float getValueForText (const juce::String& text) const override;
    int getNumSteps() const override;
    bool isDiscrete() const override;
    bool isBoolean() const override;
    bool isAutomatable() const override;
    bool isMetaParameter() const override;
    juce::String getCurrentValueAsText() const override;

private:
    BasePlugin& owner;
    const int hostIndex;
    float defaultValue;
};
