#include "windows/GroupListColumn.h"

#include "common/ResourceLoader.h"
#include "presets/BasePluginOldStyle.h"
#include "windows/List.h"
#include "windows/PresetListColumn.h"

OldStylePresetsBrowser::GroupListColumn::GroupListColumn (OldStylePresetsBrowser& owner,
                                                          BasePluginOldStyle& pluginToUse)
    : CommonColumn (owner, pluginToUse, loadCachedResourceImage ("FolderGlyph.png"),
                    loadCachedResourceImage ("FolderGlyphSelected.png"))
{
    getList().setMultipleSelectionEnabled (false);
}

int OldStylePresetsBrowser::GroupListColumn::getNumItems() { return plugin.getNumGroups(); }

juce::String OldStylePresetsBrowser::GroupListColumn::getItemText (int row)
{
    return plugin.getGroupName (row);
}

bool OldStylePresetsBrowser::GroupListColumn::hasChildren (int row) { return plugin.getGroupSize (row) > 0; }

ColumnBrowser::Column* OldStylePresetsBrowser::GroupListColumn::createColumnForItem (int row)
{
    return new PresetListColumn (browser, plugin, row);
}

void OldStylePresetsBrowser::GroupListColumn::itemSelected (int) { browser.showCurrentPreset(); }

void OldStylePresetsBrowser::GroupListColumn::itemRenamed (int row, const juce::String& text)
{
    plugin.setGroupName (row, text);
}

bool OldStylePresetsBrowser::GroupListColumn::canDropOnItem (ListColumn* source, int)
{
    return dynamic_cast<PresetListColumn*> (source) != nullptr;
}

bool OldStylePresetsBrowser::GroupListColumn::canDropBefore (ListColumn* source, int)
{
    return dynamic_cast<GroupListColumn*> (source) != nullptr;
}

bool OldStylePresetsBrowser::GroupListColumn::canDropAfter (ListColumn* source, int row)
{
    return canDropBefore (source, row);
}

void OldStylePresetsBrowser::GroupListColumn::droppedOnItem (ListColumn* source, int row)
{
    // Hovering has opened this group behind the column already; the drag's own column may be held.
    auto* presets = dynamic_cast<PresetListColumn*> (source);
    if (presets == nullptr)
        return;
    const auto selection = presets->getList().getSelectedRows();
    plugin.movePresetsToGroup (row, presets->getGroup(), selection);
    if (auto* next = dynamic_cast<ListColumn*> (getNextColumn()))
        next->update();
    browser.showCurrentPreset();
}

void OldStylePresetsBrowser::GroupListColumn::droppedBefore (ListColumn* source, int row)
{
    moveSelectedGroup (source, row, false);
}

void OldStylePresetsBrowser::GroupListColumn::droppedAfter (ListColumn* source, int row)
{
    moveSelectedGroup (source, row, true);
}

void OldStylePresetsBrowser::GroupListColumn::moveSelectedGroup (ListColumn* source, int row, bool after)
{
    if (source != this || getList().getNumSelectedRows() != 1)
        return;
    const int from = getList().getSelectedRow (0);
    // Taking the group out first shifts the rows behind it by one.
    const int to = after ? (row < from ? row + 1 : row) : (row > from ? row - 1 : row);
    plugin.moveGroup (from, to);
    selectRow (to);
}
