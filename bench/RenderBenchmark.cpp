#include "DemoSignal.h"
#include "Renderer.h"

#include <benchmark/benchmark.h>
#include <juce_events/juce_events.h>

namespace
{
constexpr double excerptSeconds = 2.0; // a bar of the demo loop: kick, snare, hats and a chord

/** The offline renderer as a user runs it: a fresh processor, a preset, the demo signal in host blocks
    of 512. Only the block loop is timed; making the processor is not part of rendering audio. */
void Render (benchmark::State& state, double rate, const char* preset)
{
    // The processor posts its change notices to a message manager, which must exist.
    const juce::ScopedJuceInitialiser_GUI juce;

    const auto demo = DemoSignal::create (rate);
    juce::AudioBuffer<float> input (demo.getNumChannels(), (int) (excerptSeconds * rate));
    for (int c = 0; c < input.getNumChannels(); ++c)
        input.copyFrom (c, 0, demo, c, 0, input.getNumSamples());

    double processing = 0.0;
    for (auto _ : state)
    {
        Renderer renderer;
        if (*preset != 0)
            renderer.selectPreset (preset);
        const auto result = renderer.render (input, rate);
        benchmark::DoNotOptimize (result.output.getReadPointer (0));
        state.SetIterationTime (result.processingSeconds);
        processing += result.processingSeconds;
    }

    const double frames = (double) state.iterations() * input.getNumSamples();
    state.counters["realtime_x"] = processing > 0.0 ? frames / rate / processing : 0.0;
    // Per sample frame: one sample of each of the two channels.
    state.counters["ns_per_sample"] = frames > 0.0 ? processing * 1.0e9 / frames : 0.0;
}
} // namespace

BENCHMARK_CAPTURE (Render, defaults_44100, 44100.0, "")->UseManualTime()->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_96000, 96000.0, "")->UseManualTime()->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_192000, 192000.0, "")->UseManualTime()->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_44100, 44100.0, "Dist'n'Crush")
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_96000, 96000.0, "Dist'n'Crush")
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_192000, 192000.0, "Dist'n'Crush")
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
