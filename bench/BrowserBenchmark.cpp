#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"
#include "skin/BasePluginEditor.h"
#include "windows/GroupListColumn.h"
#include "windows/List.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/PresetListColumn.h"

#include <benchmark/benchmark.h>

namespace
{
// The panel's place below the face.
constexpr int faceHeight = 207, panelWidth = 633;

struct PluginWithEditor
{
    PluginWithEditor()
        : folder ("vantrice-bench")
    {
        plugin.start (folder.getChildFile ("Vantrice.so"));
        wrapper.reset (plugin.createEditor());
        editor = plugin.getEditorComponent();
    }
    ~PluginWithEditor() { wrapper.reset(); }

    /** A browser window docked below the face, as the editor holds it, not told of the preset yet. */
    std::unique_ptr<OldStylePresetBrowserWindow> makePanel()
    {
        auto window = std::make_unique<OldStylePresetBrowserWindow> (plugin);
        window->setDocked (true);
        window->setBounds (0, faceHeight, panelWidth, OldStylePresetBrowserWindow::panelHeight);
        editor->addChildComponent (*window);
        window->sendLookAndFeelChange();
        return window;
    }

    void tellCurrentPreset (OldStylePresetBrowserWindow& window)
    {
        window.parameterChanged (
            plugin.getParameterManager().getParameter (BasePluginOldStyle::currentPresetNumberId));
    }

    const juce::ScopedJuceInitialiser_GUI juce;
    ScratchFolder folder;
    Vantrice plugin;
    std::unique_ptr<juce::AudioProcessorEditor> wrapper;
    BasePluginEditor* editor = nullptr;
};

/** The first open of the panel: the window made, told of the preset (both columns built), and drawn. */
void openBrowserPanelFirstTime (benchmark::State& state)
{
    PluginWithEditor started;
    for (auto _ : state)
    {
        auto window = started.makePanel();
        started.tellCurrentPreset (*window);
        window->setVisible (true);
        benchmark::DoNotOptimize (window->createComponentSnapshot (window->getLocalBounds()));
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}

/** A later open: the window and its columns are there; it is shown and drawn. */
void openBrowserPanelAgain (benchmark::State& state)
{
    PluginWithEditor started;
    auto window = started.makePanel();
    started.tellCurrentPreset (*window);
    for (auto _ : state)
    {
        window->setVisible (false);
        window->setVisible (true);
        benchmark::DoNotOptimize (window->createComponentSnapshot (window->getLocalBounds()));
    }
}

/** Both columns made anew for a bank of 128 presets in one group, as a loaded bank or a move of the
    current preset to another group makes them. */
void rebuildBothColumns (benchmark::State& state)
{
    PluginWithEditor started;
    started.plugin.clearBank();
    auto window = started.makePanel();
    window->setVisible (true);
    auto& browser = window->getBrowser();
    for (auto _ : state)
    {
        browser.addColumn (new OldStylePresetsBrowser::GroupListColumn (browser, started.plugin));
        browser.selectPresetInColumns (0, 0);
    }
    state.counters["rows"] = started.plugin.getGroupSize (0);
}

/** Both columns refreshed in place from the bank after a new name of the current preset, as the name
    parameter's news does it. */
void refreshBothColumns (benchmark::State& state)
{
    PluginWithEditor started;
    started.plugin.clearBank();
    auto window = started.makePanel();
    window->setVisible (true);
    started.tellCurrentPreset (*window);
    int round = 0;
    for (auto _ : state)
    {
        started.plugin.setPresetName (0, (++round % 2) == 0 ? "Even" : "Odd");
        window->getBrowser().updateColumns();
    }
}
/** One move of a preset drag over the preset column, a row further each time: the drop position found,
    the marks of the old and new row repainted, and those rows drawn again, as the screen asks. */
void dragOverRows (benchmark::State& state)
{
    PluginWithEditor started;
    started.plugin.clearBank();
    auto window = started.makePanel();
    window->setVisible (true);
    started.tellCurrentPreset (*window);
    auto& presets = *window->getBrowser().getPresetColumn();
    auto& list = presets.getList();
    list.selectRow (0);
    juce::DragAndDropTarget::SourceDetails details (list.getDragSourceDescription (list.getSelectedRows()),
                                                    &list, {});
    constexpr int listInset = 4, somewhereInside = 20, rowHeight = ColumnBrowser::ListColumn::List::rowHeight;
    const int visibleRows = list.getViewport()->getMaximumVisibleHeight() / rowHeight;
    presets.itemDragEnter (details);
    int row = 0;
    for (auto _ : state)
    {
        row = (row + 1) % visibleRows;
        details.localPosition = { listInset + somewhereInside, listInset + row * rowHeight + rowHeight / 2 };
        presets.itemDragMove (details);
        benchmark::DoNotOptimize (presets.createComponentSnapshot (
            list.getRowPosition (row, true).translated (listInset, listInset).expanded (0, rowHeight)));
    }
    presets.itemDragExit (details);
    juce::Desktop::getInstance().beginDragAutoRepeat (0);
}
} // namespace

BENCHMARK (openBrowserPanelFirstTime)->Unit (benchmark::kMicrosecond);
BENCHMARK (openBrowserPanelAgain)->Unit (benchmark::kMicrosecond);
BENCHMARK (rebuildBothColumns)->Unit (benchmark::kMicrosecond);
BENCHMARK (refreshBothColumns)->Unit (benchmark::kMicrosecond);
BENCHMARK (dragOverRows)->Unit (benchmark::kMicrosecond);
