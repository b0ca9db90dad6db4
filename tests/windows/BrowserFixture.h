#pragma once

#include "skin/TextFieldLift.h"
#include "support/EditorHarness.h"
#include "windows/GroupListColumn.h"
#include "windows/ItemComponent.h"
#include "windows/List.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/PresetListColumn.h"

#include <gtest/gtest.h>

/** The rows selected in a column's list. */
inline juce::Array<int> selected (ColumnBrowser::ListColumn& column)
{
    juce::Array<int> rows;
    const auto set = column.getList().getSelectedRows();
    for (int i = 0; i < set.size(); ++i)
        rows.add (set[i]);
    return rows;
}

/** The component that shows a row, if the row has one. */
inline ColumnBrowser::ListColumn::ItemComponent* itemAt (ColumnBrowser::ListColumn& column, int row)
{
    return dynamic_cast<ColumnBrowser::ListColumn::ItemComponent*> (
        column.getList().getComponentForRowNumber (row));
}

/** A started plug-in with its editor, and a preset browser window made beside it and docked as the
    family's panel below the face, as the editor will hold it; the first news of the current preset has
    reached it. */
struct BrowserFixture
{
    // The panel's place below the face, and the browser's size inside it.
    static constexpr int faceHeight = 207, panelWidth = 633;
    static constexpr int browserWidth = 591, browserHeight = 208;

    BrowserFixture()
    {
        TextFieldLift::setEnabled (false);
        window = std::make_unique<OldStylePresetBrowserWindow> (*h.plugin);
        window->setLookAndFeel (&h.editor->getLookAndFeel());
        window->setDocked (true);
        window->setBounds (0, faceHeight, panelWidth, OldStylePresetBrowserWindow::panelHeight);
        h.plugin->getParameterManager().triggerDeferredUpdates();
        h.pump();
    }

    ~BrowserFixture() { window.reset(); }

    OldStylePresetsBrowser& browser() const { return window->getBrowser(); }
    OldStylePresetsBrowser::GroupListColumn& groups() const { return *browser().getGroupColumn(); }
    OldStylePresetsBrowser::PresetListColumn& presets() const { return *browser().getPresetColumn(); }
    BasePluginOldStyle& plugin() const { return *h.plugin; }

    EditorHarness h;
    std::unique_ptr<OldStylePresetBrowserWindow> window;
};
