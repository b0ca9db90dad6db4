#pragma once

#include "dsp/VantriceCore.h"
#include "parameters/ParameterManager.h"

#include <array>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

/** Builds cores the way the family layer does, and runs signals through them. */
namespace CoreHarness
{
using Values = std::array<float, ParameterIndex::count>;

/** The defaults of the embedded parameter table, by index, as a freshly loaded table holds them. */
inline const Values& defaults()
{
    static const Values values = []
    {
        ParameterManager table;
        table.loadFromResource ("parameters.xml");
        Values v{};
        for (int i = 0; i < ParameterIndex::count; ++i)
            v[(size_t) i] = table.getNormalizedValue (i);
        return v;
    }();
    return values;
}

/** A core at a host rate with every parameter given once, as at start, then `overrides` on top. */
inline std::unique_ptr<VantriceCore> makeCore (double rate = 44100.0,
                                               const std::vector<std::pair<int, float>>& overrides = {})
{
    auto core = std::make_unique<VantriceCore> (nullptr);
    auto values = defaults();
    for (const auto& [index, value] : overrides)
        values[(size_t) index] = value;
    for (int i = 0; i < ParameterIndex::count; ++i)
        core->setParameter (i, values[(size_t) i]);
    core->setSampleRate ((float) rate);
    return core;
}

struct Stereo
{
    std::vector<float> left, right;
};

/** Runs a stereo signal through in runs of at most `runLength` samples. */
inline Stereo runStereo (VantriceCore& core, Stereo signal, int runLength = 512)
{
    const int n = (int) signal.left.size();
    for (int start = 0; start < n; start += runLength)
    {
        float* l = signal.left.data() + start;
        float* r = signal.right.data() + start;
        core.processStereo (&l, &r, std::min (runLength, n - start));
    }
    return signal;
}

inline std::vector<float> runMono (VantriceCore& core, std::vector<float> signal, int runLength = 512)
{
    const int n = (int) signal.size();
    for (int start = 0; start < n; start += runLength)
    {
        float* l = signal.data() + start;
        core.processMono (&l, std::min (runLength, n - start));
    }
    return signal;
}

inline std::vector<float> sine (int n, double frequency, double rate, double amplitude = 0.5)
{
    std::vector<float> s ((size_t) n);
    for (int i = 0; i < n; ++i)
        s[(size_t) i] = (float) (amplitude * std::sin (2.0 * 3.141592653589793 * frequency * i / rate));
    return s;
}

inline std::vector<float> noise (int n, unsigned seed, float amplitude = 0.5f)
{
    std::mt19937 generator (seed);
    std::uniform_real_distribution<float> d (-amplitude, amplitude);
    std::vector<float> s ((size_t) n);
    for (auto& x : s)
        x = d (generator);
    return s;
}

inline Stereo stereoNoise (int n, unsigned seed) { return { noise (n, seed), noise (n, seed + 1) }; }
} // namespace CoreHarness
