#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <thread>

namespace
{
constexpr int blockSize = 512;
// The restore's span is cut into this many moments, one per run, at which the audio thread's block
// arrives.
constexpr int moments = 40;

/** A project restored on the message thread while the audio thread plays its first block after a
    prepare: the block arrives at moments spread over the restore, and the figure is how long the longest
    block took, waits included. At a rate outside the family's table the restore also measures the
    converters' latency. */
void restoreWhilePlaying (benchmark::State& state)
{
    const juce::ScopedJuceInitialiser_GUI juce;
    ScratchFolder folder ("vantrice-bench");
    Vantrice plugin;
    plugin.start (folder.getChildFile ("Vantrice.so"));
    const auto rate = (double) state.range (0);
    juce::MemoryBlock chunk;
    plugin.getStateInformation (chunk);
    juce::AudioBuffer<float> buffer (2, blockSize);
    juce::MidiBuffer midi;

    // How long a restore takes with nothing playing, to spread the block's moments over it.
    plugin.prepareToPlay (rate, blockSize);
    const auto before = juce::Time::getHighResolutionTicks();
    plugin.setStateInformation (chunk.getData(), (int) chunk.getSize());
    const auto restoreTicks = juce::Time::getHighResolutionTicks() - before;

    double longest = 0.0, total = 0.0;
    int run = 0;
    for (auto _ : state)
    {
        plugin.prepareToPlay (rate, blockSize);
        buffer.clear();
        const auto delay = restoreTicks * (run % moments) / moments;
        std::atomic<juce::int64> startTicks{ 0 };
        double blockMilliseconds = 0.0;
        std::thread audio (
            [&]
            {
                juce::int64 start = 0;
                while ((start = startTicks.load()) == 0)
                    std::this_thread::yield();
                while (juce::Time::getHighResolutionTicks() - start < delay)
                    std::this_thread::yield();
                const auto blockStart = juce::Time::getHighResolutionTicks();
                plugin.processBlock (buffer, midi);
                blockMilliseconds = juce::Time::highResolutionTicksToSeconds (
                                        juce::Time::getHighResolutionTicks() - blockStart)
                                    * 1000.0;
            });
        startTicks.store (juce::Time::getHighResolutionTicks());
        plugin.setStateInformation (chunk.getData(), (int) chunk.getSize());
        audio.join();
        longest = juce::jmax (longest, blockMilliseconds);
        total += blockMilliseconds;
        ++run;
    }
    state.counters["restore_ms"] = juce::Time::highResolutionTicksToSeconds (restoreTicks) * 1000.0;
    state.counters["longest_block_ms"] = longest;
    state.counters["mean_block_ms"] = run > 0 ? total / run : 0.0;
}
} // namespace

// 48000 Hz is in the family's table; 32000 Hz is not, so its latency is measured.
BENCHMARK (restoreWhilePlaying)
    ->Arg (48000)
    ->Arg (32000)
    ->Iterations (moments)
    ->Unit (benchmark::kMillisecond);
