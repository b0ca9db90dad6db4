#pragma once

#include <array>

/** What the host and the documents should show of the eighteen parameters, in table order: the name,
    the start value (the first preset's, which is also the default) and the number of steps of a
    stepped control (0 for a continuous one). */
struct ExpectedParameter
{
    const char* name;
    float start;
    int steps;
};

inline constexpr std::array<ExpectedParameter, 18> expectedParameters{ {
    { "Preamp", 0.0f, 0 },
    { "Left Bits", 1.0f, 17 },
    { "Left Frequency", 1.0f, 0 },
    { "Left Link Freq", 0.0f, 2 },
    { "Left Filter Type", 1.0f, 5 },
    { "Left Cutoff", 1.0f, 0 },
    { "Left Reso/Bandwidth", 0.0f, 0 },
    { "Right Bits", 1.0f, 17 },
    { "Right Frequency", 1.0f, 0 },
    { "Right Link Freq", 0.0f, 2 },
    { "Right Filter Type", 1.0f, 5 },
    { "Right Cutoff", 1.0f, 0 },
    { "Right Reso/Bandwidth", 0.0f, 0 },
    { "Link Channels", 1.0f, 2 },
    { "FX", 1.0f, 0 },
    { "Output Volume", 0.5f, 0 },
    { "Left Filter Order", 0.0f, 2 },
    { "Right Filter Order", 0.0f, 2 },
} };
