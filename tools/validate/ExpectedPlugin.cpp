#include "ExpectedPlugin.h"

const std::array<ExpectedPlugin::Parameter, ExpectedPlugin::numParameters> ExpectedPlugin::parameters{ {
    { "Preamp", 0.0f, 0.475f, 0 },
    { "Left Bits", 1.0f, 0.685f, 17 },
    { "Left Frequency", 1.0f, 0.93f, 0 },
    { "Left Link Freq", 0.0f, 0.0f, 2 },
    { "Left Filter Type", 1.0f, 1.0f, 5 },
    { "Left Cutoff", 1.0f, 1.0f, 0 },
    { "Left Reso/Bandwidth", 0.0f, 0.0f, 0 },
    { "Right Bits", 1.0f, 1.0f, 17 },
    { "Right Frequency", 1.0f, 1.0f, 0 },
    { "Right Link Freq", 0.0f, 0.0f, 2 },
    { "Right Filter Type", 1.0f, 1.0f, 5 },
    { "Right Cutoff", 1.0f, 1.0f, 0 },
    { "Right Reso/Bandwidth", 0.0f, 0.0f, 0 },
    { "Link Channels", 1.0f, 1.0f, 2 },
    { "FX", 1.0f, 1.0f, 0 },
    { "Output Volume", 0.5f, 0.235f, 0 },
    { "Left Filter Order", 0.0f, 0.0f, 2 },
    { "Right Filter Order", 0.0f, 0.0f, 2 },
} };

const std::array<ExpectedPlugin::RateLatency, 6> ExpectedPlugin::latencies{ {
    { 44100.0, 21 },
    { 48000.0, 93 },
    { 88200.0, 141 },
    { 96000.0, 149 },
    { 176400.0, 245 },
    { 192000.0, 263 },
} };

int ExpectedPlugin::getUniqueId() noexcept
{
    // Four characters, the first in the highest byte, as the interface's identifiers are made.
    int id = 0;
    for (const char* c = uniqueIdText; *c != 0; ++c)
        id = (id << 8) | (int) (unsigned char) *c;
    return id;
}

int ExpectedPlugin::indexOf (const juce::String& parameterName)
{
    for (int i = 0; i < numParameters; ++i)
        if (parameterName == parameters[(size_t) i].name)
            return i;
    return -1;
}
