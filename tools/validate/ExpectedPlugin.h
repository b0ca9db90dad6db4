#pragma once

#include "dsp/ParameterIndex.h"

#include <juce_core/juce_core.h>

#include <array>

/** What a host must find in every format of the plug-in: who it is, its parameters, and the latency it
    reports at each host rate it supports. */
class ExpectedPlugin
{
public:
    static constexpr const char* name = "Vantrice";
    static constexpr const char* maker = "Zelkora Sound Works";
    static constexpr const char* version = VANTRICE_VERSION; // the project's one declaration
    static constexpr const char* uniqueIdText = "VTm4";
    static constexpr const char* lv2Uri = "https://zelkora.example/plugins/vantrice";
    static constexpr int numInputs = 2;
    static constexpr int numOutputs = 2;
    static constexpr int numParameters = ParameterIndex::count;
    static constexpr int numPresets = 128;

    struct Parameter
    {
        const char* name;
        float defaultValue; // the parameter table's
        float startValue;   // a new instance's, told to hosts as the default: the first factory preset's
        int numSteps;       // 0 for a continuous parameter
    };

    struct RateLatency
    {
        double rate;
        int latency;
    };

    /** A display text of a parameter at a value, with "Link Channels" on or off. */
    struct Text
    {
        int index;
        float value;
        const char* text;
        bool linked;
    };

    static const std::array<Parameter, numParameters> parameters;
    static const std::array<Text, 40> texts;
    static const std::array<RateLatency, 6> latencies;

    /** The four characters of the 2.4 unique id as the number the interface carries. */
    static int getUniqueId() noexcept;

    /** The index of the parameter with this name, or -1. */
    static int indexOf (const juce::String& parameterName);
};
