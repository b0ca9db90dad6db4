#include "dsp/SignalKernels.h"
#include "dsp/VantriceCore.h"
#include "parameters/ParameterManager.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{
using Overrides = std::vector<std::pair<int, float>>;

constexpr int blockSize = 512;

std::unique_ptr<VantriceCore> makeCore (double rate, const Overrides& overrides, bool reference)
{
    // The defaults of the embedded parameter table, by index.
    std::array<float, ParameterIndex::count> values{};
    {
        ParameterManager table;
        table.loadFromResource ("parameters.xml");
        for (int i = 0; i < ParameterIndex::count; ++i)
            values[(size_t) i] = table.getNormalizedValue (i);
    }
    for (const auto& [index, value] : overrides)
        values[(size_t) index] = value;
    auto core = std::make_unique<VantriceCore> (nullptr);
    for (int i = 0; i < ParameterIndex::count; ++i)
        core->setParameter (i, values[(size_t) i]);
    core->setSampleRate ((float) rate);
    core->setReferenceLoop (reference);
    return core;
}

namespace P = ParameterIndex;

// Hold at every sample, 8 bits, unlinked, both filters on, the left one "Pre" and the right one "Post".
const Overrides worstCase{ { P::linkChannels, 0.0f },      { P::leftBits, 7.0f / 16.0f },
                           { P::rightBits, 7.0f / 16.0f }, { P::leftFrequency, 1.0f },
                           { P::rightFrequency, 1.0f },    { P::leftLinkFreq, 1.0f },
                           { P::rightLinkFreq, 1.0f },     { P::leftFilterType, 0.0f },
                           { P::rightFilterType, 0.25f },  { P::leftFilterOrder, 1.0f },
                           { P::rightFilterOrder, 0.0f },  { P::leftReso, 0.5f },
                           { P::rightReso, 0.5f } };

// A hold rate that is no divisor of the core rate, so that every step starts between table rows; 8 bits.
const Overrides fractionalHold{ { P::leftBits, 7.0f / 16.0f }, { P::leftFrequency, 0.7f } };

void fill (std::vector<float>& l, std::vector<float>& r, double rate)
{
    for (size_t i = 0; i < l.size(); ++i)
    {
        l[i] = (float) (0.5 * std::sin (2.0 * 3.141592653589793 * 440.0 * (double) i / rate));
        r[i] = (float) (0.5 * std::sin (2.0 * 3.141592653589793 * 660.0 * (double) i / rate));
    }
}

void count (benchmark::State& state, const VantriceCore& core, double rate, bool reference)
{
    const auto samples = (double) state.iterations() * blockSize;
    state.counters["ns_per_sample"] =
        benchmark::Counter (samples, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["realtime_x"] = benchmark::Counter (samples / rate, benchmark::Counter::kIsRate);
    const auto forms = core.getFormCounts();
    const auto stretches = forms.blockStretches + forms.literalStretches;
    // The reference takes the literal loop throughout.
    state.counters["literal_share"] =
        reference ? 1.0 : (stretches > 0 ? (double) forms.literalStretches / (double) stretches : 0.0);
}

void runStereo (benchmark::State& state, double rate, const Overrides& overrides, bool reference)
{
    auto core = makeCore (rate, overrides, reference);
    std::vector<float> sourceL (blockSize), sourceR (blockSize), l (blockSize), r (blockSize);
    fill (sourceL, sourceR, rate);
    for (auto _ : state)
    {
        // A fresh copy of the input each block: the in-place output must not feed back.
        std::copy (sourceL.begin(), sourceL.end(), l.begin());
        std::copy (sourceR.begin(), sourceR.end(), r.begin());
        float* lp = l.data();
        float* rp = r.data();
        core->processStereo (&lp, &rp, blockSize);
        benchmark::DoNotOptimize (l.data());
    }
    count (state, *core, rate, reference);
}

void runMono (benchmark::State& state, double rate, bool reference)
{
    auto core = makeCore (rate, {}, reference);
    std::vector<float> sourceL (blockSize), sourceR (blockSize), l (blockSize);
    fill (sourceL, sourceR, rate);
    for (auto _ : state)
    {
        std::copy (sourceL.begin(), sourceL.end(), l.begin());
        float* lp = l.data();
        core->processMono (&lp, blockSize);
        benchmark::DoNotOptimize (l.data());
    }
    count (state, *core, rate, reference);
}

/** The block form runs the widest kernels the processor has; the run's context names them. */
const bool kernelsNamed = []
{
    benchmark::AddCustomContext ("kernels", SignalKernels::best().name);
    return true;
}();
} // namespace

BENCHMARK_CAPTURE (runStereo, defaults_44100_reference, 44100.0, Overrides{}, true);
BENCHMARK_CAPTURE (runStereo, defaults_44100_fast, 44100.0, Overrides{}, false);
BENCHMARK_CAPTURE (runStereo, worst_case_44100_reference, 44100.0, worstCase, true);
BENCHMARK_CAPTURE (runStereo, worst_case_44100_fast, 44100.0, worstCase, false);
BENCHMARK_CAPTURE (runStereo, fractional_hold_44100_reference, 44100.0, fractionalHold, true);
BENCHMARK_CAPTURE (runStereo, fractional_hold_44100_fast, 44100.0, fractionalHold, false);
BENCHMARK_CAPTURE (runMono, defaults_44100_reference, 44100.0, true);
BENCHMARK_CAPTURE (runMono, defaults_44100_fast, 44100.0, false);
BENCHMARK_CAPTURE (runStereo, converted_48000_reference, 48000.0, Overrides{}, true);
BENCHMARK_CAPTURE (runStereo, converted_48000_fast, 48000.0, Overrides{}, false);
BENCHMARK_CAPTURE (runStereo, converted_96000_reference, 96000.0, Overrides{}, true);
BENCHMARK_CAPTURE (runStereo, converted_96000_fast, 96000.0, Overrides{}, false);
BENCHMARK_CAPTURE (runStereo, converted_192000_reference, 192000.0, Overrides{}, true);
BENCHMARK_CAPTURE (runStereo, converted_192000_fast, 192000.0, Overrides{}, false);

BENCHMARK_MAIN();
