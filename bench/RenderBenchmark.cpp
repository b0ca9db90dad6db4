#include "DemoSignal.h"
#include "Renderer.h"

#include <benchmark/benchmark.h>
#include <juce_events/juce_events.h>

namespace
{
constexpr double excerptSeconds = 2.0; // a bar of the demo loop: kick, snare, hats and a chord

/** The offline renderer as a user runs it: a fresh processor, a preset, the demo signal in host blocks
    of 512. Only the block loop is timed; making the processor is not part of rendering audio. */
void Render (benchmark::State& state, double rate, const char* preset, bool reference)
{
    // The processor posts its change notices to a message manager, which must exist.
    const juce::ScopedJuceInitialiser_GUI juce;

    const auto demo = DemoSignal::create (rate);
    juce::AudioBuffer<float> input (demo.getNumChannels(), (int) (excerptSeconds * rate));
    for (int c = 0; c < input.getNumChannels(); ++c)
        input.copyFrom (c, 0, demo, c, 0, input.getNumSamples());

    double processing = 0.0;
    VantriceCore::FormCounts forms;
    for (auto _ : state)
    {
        Renderer renderer;
        auto* core = renderer.getProcessor().getVantriceCore();
        core->setReferenceLoop (reference);
        if (*preset != 0)
            renderer.selectPreset (preset);
        const auto result = renderer.render (input, rate);
        benchmark::DoNotOptimize (result.output.getReadPointer (0));
        state.SetIterationTime (result.processingSeconds);
        processing += result.processingSeconds;
        forms = core->getFormCounts();
    }

    const double frames = (double) state.iterations() * input.getNumSamples();
    state.counters["realtime_x"] = processing > 0.0 ? frames / rate / processing : 0.0;
    // Per sample frame: one sample of each of the two channels.
    state.counters["ns_per_sample"] = frames > 0.0 ? processing * 1.0e9 / frames : 0.0;
    const auto stretches = forms.blockStretches + forms.literalStretches;
    // The reference takes the literal loop throughout.
    state.counters["literal_share"] =
        reference ? 1.0 : (stretches > 0 ? (double) forms.literalStretches / (double) stretches : 0.0);
}
} // namespace

BENCHMARK_CAPTURE (Render, defaults_44100_reference, 44100.0, "", true)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_44100_fast, 44100.0, "", false)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_96000_reference, 96000.0, "", true)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_96000_fast, 96000.0, "", false)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_192000_reference, 192000.0, "", true)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, defaults_192000_fast, 192000.0, "", false)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_44100_reference, 44100.0, "Dist'n'Crush", true)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_44100_fast, 44100.0, "Dist'n'Crush", false)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_96000_reference, 96000.0, "Dist'n'Crush", true)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_96000_fast, 96000.0, "Dist'n'Crush", false)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_192000_reference, 192000.0, "Dist'n'Crush", true)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
BENCHMARK_CAPTURE (Render, dist_n_crush_192000_fast, 192000.0, "Dist'n'Crush", false)
    ->UseManualTime()
    ->Unit (benchmark::kMillisecond);
