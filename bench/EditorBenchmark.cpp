#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"
#include "skin/BasePluginEditor.h"
#include "skin/GFXAnimation.h"
#include "skin/GFXKnob.h"
#include "windows/AboutWindow.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace
{
struct StartedPlugin
{
    StartedPlugin()
        : folder ("vantrice-bench")
    {
        plugin.start (folder.getChildFile ("Vantrice.so"));
    }
    ~StartedPlugin() { wrapper.reset(); }

    BasePluginEditor& open()
    {
        wrapper.reset (plugin.createEditor());
        return *plugin.getEditorComponent();
    }

    const juce::ScopedJuceInitialiser_GUI juce;
    ScratchFolder folder;
    Vantrice plugin;
    std::unique_ptr<juce::AudioProcessorEditor> wrapper;
};

/** The first open of a plug-in's window: the editor made from its skin, then drawn whole. */
void openEditorFirstTime (benchmark::State& state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto started = std::make_unique<StartedPlugin>();
        state.ResumeTiming();
        auto& editor = started->open();
        benchmark::DoNotOptimize (editor.createComponentSnapshot (editor.getLocalBounds()));
        state.PauseTiming();
        started.reset();
        state.ResumeTiming();
    }
}

/** A later open: the editor is there; the host's wrapper is made and the face drawn. */
void reopenEditor (benchmark::State& state)
{
    StartedPlugin started;
    started.open();
    for (auto _ : state)
    {
        started.wrapper.reset();
        auto& editor = started.open();
        benchmark::DoNotOptimize (editor.createComponentSnapshot (editor.getLocalBounds()));
    }
}

/** The whole face drawn offscreen, at 1x and on a screen of twice the density. */
void paintFace (benchmark::State& state)
{
    StartedPlugin started;
    auto& editor = started.open();
    const auto scale = (float) state.range (0);
    for (auto _ : state)
        benchmark::DoNotOptimize (editor.createComponentSnapshot (editor.getLocalBounds(), true, scale));
}

/** The about window opened over the face and the editor drawn with it, then closed again. */
void openAboutWindow (benchmark::State& state)
{
    StartedPlugin started;
    auto& editor = started.open();
    auto* about = editor.getAboutWindow();
    about->setSize (550, 190); // the size the editor gives it while no panel shows
    for (auto _ : state)
    {
        about->showCentred();
        benchmark::DoNotOptimize (editor.createComponentSnapshot (editor.getLocalBounds()));
        about->hide();
    }
}

/** One knob's frame, as a repaint after a turn draws it. */
void paintKnob (benchmark::State& state)
{
    StartedPlugin started;
    auto& editor = started.open();
    auto* knob = dynamic_cast<GFXKnob*> (BasePluginEditor::findComponentByName (editor, "LeftCutoffKnob"));
    juce::Image canvas (juce::Image::RGB, knob->getWidth(), knob->getHeight(), false);
    double value = 0.0;
    for (auto _ : state)
    {
        value = value >= 1.0 ? 0.0 : value + 1.0 / 60.0;
        knob->setValue (value, juce::dontSendNotification);
        juce::Graphics g (canvas);
        knob->paint (g);
    }
}
/** Heap in use by the process, in bytes. */
double heapInUse()
{
    const auto info = mallinfo2();
    return (double) (info.uordblks + info.hblkhd);
}

/** What an instance costs in memory: started, with its editor drawn at 1x, and with the double pictures
    decoded for a dense screen. */
void memoryPerInstance (benchmark::State& state)
{
    for (auto _ : state)
    {
        const double before = heapInUse();
        StartedPlugin started;
        const double plugin = heapInUse();
        auto& editor = started.open();
        benchmark::DoNotOptimize (editor.createComponentSnapshot (editor.getLocalBounds()));
        const double single = heapInUse();
        benchmark::DoNotOptimize (editor.createComponentSnapshot (editor.getLocalBounds(), true, 2.0f));
        const double doubled = heapInUse();
        constexpr double mebibyte = 1024.0 * 1024.0;
        state.counters["plugin_MiB"] = (plugin - before) / mebibyte;
        state.counters["with_editor_MiB"] = (single - before) / mebibyte;
        state.counters["with_2x_MiB"] = (doubled - before) / mebibyte;
    }
}
/** One tick of the editor while the meters move: the levels read from the core, the frames set, and the
    two meters drawn again, as their repaints ask. The audio that moves them is made outside the timing. */
void tickWithMovingMeters (benchmark::State& state)
{
    StartedPlugin started;
    constexpr double rate = 44100.0;
    constexpr int block = 512;
    started.plugin.prepareToPlay (rate, block);
    auto& editor = started.open();
    juce::Component* meters[] = { BasePluginEditor::findComponentByName (editor, "LeftVUMeter"),
                                  BasePluginEditor::findComponentByName (editor, "RightVUMeter") };
    juce::AudioBuffer<float> audio (2, block);
    juce::MidiBuffer midi;
    int step = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        // A level that changes every tick, so that every tick moves the meters.
        audio.clear();
        const float level = (float) (step++ % 11 + 1) / 11.0f;
        for (int i = 0; i < block; ++i)
            audio.setSample (0, i, level * (i % 2 == 0 ? 1.0f : -1.0f));
        audio.copyFrom (1, 0, audio, 0, 0, block);
        started.plugin.processBlock (audio, midi);
        state.ResumeTiming();
        editor.update();
        for (auto* meter : meters)
            benchmark::DoNotOptimize (meter->createComponentSnapshot (meter->getLocalBounds()));
    }
}
} // namespace

BENCHMARK (tickWithMovingMeters)->Unit (benchmark::kMicrosecond);
BENCHMARK (memoryPerInstance)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (openEditorFirstTime)->Unit (benchmark::kMillisecond)->Iterations (10);
BENCHMARK (reopenEditor)->Unit (benchmark::kMicrosecond);
BENCHMARK (openAboutWindow)->Unit (benchmark::kMicrosecond);
BENCHMARK (paintFace)->Arg (1)->Arg (2)->Unit (benchmark::kMicrosecond);
BENCHMARK (paintKnob)->Unit (benchmark::kMicrosecond);
