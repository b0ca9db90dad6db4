#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"
#include "parameters/FloatParameter.h"
#include "parameters/ParameterManager.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/MidiControlComponent.h"
#include "windows/OptionsWindow.h"
#include "windows/PresetsSettingsComponent.h"

#include <benchmark/benchmark.h>

namespace
{
// The panel below the face: the editor's width and the panel's height, and where its pages stand.
constexpr int panelWidth = 633, panelHeight = 256, faceHeight = 207, pageWidth = 605, pageHeight = 196;

/** The options panel of a started crusher, docked in a host of the editor's size with the dialogs' look,
    built as the editor builds it. */
struct OptionsPanel final : juce::Component, PseudoModalComponent::Desktop
{
    explicit OptionsPanel (BasePluginOldStyle& plugin)
        : presets (plugin)
        , midi (plugin.getMidiControl(), plugin.getMapExtension(), plugin.getMapWildcards())
    {
        setLookAndFeel (&look);
        setSize (panelWidth, faceHeight + panelHeight);
        window.setDocked (true);
        window.setBounds (0, faceHeight, panelWidth, panelHeight);
        window.addPage ("Midi Control", &midi, -1);
        window.addPage ("Presets", &presets, 0);
        addChildComponent (window);
        sendLookAndFeelChange();
    }
    ~OptionsPanel() override
    {
        removeAllChildren();
        setLookAndFeel (nullptr);
    }

    DefaultLookAndFeel look;
    PresetsSettingsComponent presets;
    MidiControlComponent midi;
    OptionsWindow window;
};

struct StartedCrusher
{
    StartedCrusher()
        : folder ("vantrice-bench")
    {
        plugin.start (folder.getChildFile ("Vantrice.so"));
    }
    const juce::ScopedJuceInitialiser_GUI juce;
    ScratchFolder folder;
    Vantrice plugin;
};

/** The options button: the built panel shown and drawn, the whole host as a repaint would, then hidden. */
void openOptionsPanel (benchmark::State& state)
{
    StartedCrusher started;
    OptionsPanel panel (started.plugin);
    panel.window.getTabs().setCurrentTabIndex (static_cast<int> (state.range (0)));
    for (auto _ : state)
    {
        panel.window.setVisible (true);
        benchmark::DoNotOptimize (panel.createComponentSnapshot (panel.getLocalBounds()));
        panel.window.setVisible (false);
    }
}

/** What the editor's construction spends on the options: the window, both pages, their dressing. */
void buildOptionsPanel (benchmark::State& state)
{
    StartedCrusher started;
    for (auto _ : state)
    {
        OptionsPanel panel (started.plugin);
        benchmark::DoNotOptimize (&panel);
    }
}

/** A map as full as it gets: 128 parameters on the 128 controllers, on the page at its size in the panel. */
struct FullMap
{
    FullMap()
    {
        for (int i = 0; i < MidiControl::numControllers; ++i)
            parameters.addParameter (
                new FloatParameter (i, "Parameter " + juce::String (i), 0.0f, 1.0f, 0.0f));
        for (int i = 0; i < MidiControl::numControllers; ++i)
            map.assign (i, parameters.getParameter (i), false);
        host.setLookAndFeel (&look);
        host.setSize (panelWidth, panelHeight);
        page.setSize (pageWidth, pageHeight);
        host.addAndMakeVisible (page);
        host.sendLookAndFeelChange();
    }
    ~FullMap()
    {
        host.removeAllChildren();
        host.setLookAndFeel (nullptr);
    }

    const juce::ScopedJuceInitialiser_GUI juce;
    ParameterManager parameters;
    MidiControl map{ parameters };
    DefaultLookAndFeel look;
    juce::Component host;
    MidiControlComponent page{ map, ".vtccmap", "*.vtccmap" };
};

/** The table read anew from the map, as every change of the map asks. */
void refreshFullTable (benchmark::State& state)
{
    FullMap full;
    auto& list = full.page.getList();
    for (auto _ : state)
        list.refresh();
    state.counters["columns"] = list.getNumColumns();
}

/** The same, and the table drawn again, as the repaint after it does. */
void refreshAndDrawFullTable (benchmark::State& state)
{
    FullMap full;
    auto& list = full.page.getList();
    juce::Image canvas (juce::Image::RGB, list.getWidth(), list.getHeight(), false);
    for (auto _ : state)
    {
        list.refresh();
        juce::Graphics g (canvas);
        list.paintEntireComponent (g, false);
    }
}
} // namespace

BENCHMARK (openOptionsPanel)->Arg (0)->Arg (1)->Unit (benchmark::kMicrosecond);
BENCHMARK (buildOptionsPanel)->Unit (benchmark::kMicrosecond);
BENCHMARK (refreshFullTable)->Unit (benchmark::kMicrosecond);
BENCHMARK (refreshAndDrawFullTable)->Unit (benchmark::kMicrosecond);
