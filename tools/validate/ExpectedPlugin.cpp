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

// Texts at several values of each parameter, unlinked unless marked.
const std::array<ExpectedPlugin::Text, 40> ExpectedPlugin::texts{ {
    { ParameterIndex::preamp, 0.0f, "0.0dB", false },
    { ParameterIndex::preamp, 0.5f, "+24.0dB", false },
    { ParameterIndex::preamp, 1.0f, "+48.0dB", false },
    { ParameterIndex::leftBits, 0.0f, "1 bit", false },
    { ParameterIndex::leftBits, 1.0f / 16.0f, "2 bits", false },
    { ParameterIndex::leftBits, 15.0f / 16.0f, "16 bits", false },
    { ParameterIndex::leftBits, 0.55f, "10 bits", false }, // between steps: the nearest
    { ParameterIndex::leftBits, 1.0f, "Quant. Off", false },
    { ParameterIndex::leftFrequency, 0.0f, "44Hz", false },
    { ParameterIndex::leftFrequency, 1.0f, "44100Hz", false },
    { ParameterIndex::leftLinkFreq, 0.0f, "Off", false },
    { ParameterIndex::leftLinkFreq, 1.0f, "On", false },
    { ParameterIndex::leftFilterType, 0.0f, "LP", false },
    { ParameterIndex::leftFilterType, 0.25f, "BP", false },
    { ParameterIndex::leftFilterType, 0.5f, "HP", false },
    { ParameterIndex::leftFilterType, 0.75f, "BR", false },
    { ParameterIndex::leftFilterType, 1.0f, "Off", false },
    { ParameterIndex::leftCutoff, 0.0f, "14Hz", false },
    { ParameterIndex::leftCutoff, 1.0f, "12000Hz", false },
    { ParameterIndex::leftReso, 0.0f, "0%", false },
    { ParameterIndex::leftReso, 0.5f, "50%", false },
    { ParameterIndex::rightBits, 0.5f, "9 bits", false },
    { ParameterIndex::rightBits, 0.5f, "linked", true },
    { ParameterIndex::rightFrequency, 0.0f, "44Hz", false },
    { ParameterIndex::rightLinkFreq, 1.0f, "On", false },
    { ParameterIndex::rightFilterType, 0.25f, "BP", false },
    { ParameterIndex::rightCutoff, 1.0f, "12000Hz", false },
    { ParameterIndex::rightReso, 0.25f, "25%", false },
    { ParameterIndex::rightReso, 0.25f, "linked", true },
    { ParameterIndex::linkChannels, 0.0f, "Off", false },
    { ParameterIndex::linkChannels, 1.0f, "On", true },
    { ParameterIndex::fx, 0.25f, "75/25% (Dry/Wet)", false },
    { ParameterIndex::fx, 1.0f, "0/100% (Dry/Wet)", false },
    { ParameterIndex::outputVolume, 0.0f, "-Inf.", false },
    { ParameterIndex::outputVolume, 0.5f, "0.0dB", false },
    { ParameterIndex::outputVolume, 1.0f, "+12.0dB", false },
    { ParameterIndex::leftFilterOrder, 0.0f, "Post", false },
    { ParameterIndex::leftFilterOrder, 1.0f, "Pre", false },
    { ParameterIndex::rightFilterOrder, 1.0f, "Pre", false },
    { ParameterIndex::rightFilterOrder, 1.0f, "linked", true },
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
