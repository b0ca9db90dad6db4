#include "windows/PresetListColumn.h"

#include "common/ResourceLoader.h"
#include "presets/BasePluginOldStyle.h"
#include "windows/GroupListColumn.h"
#include "windows/List.h"

OldStylePresetsBrowser::PresetListColumn::PresetListColumn (OldStylePresetsBrowser& owner,
                                                            BasePluginOldStyle& pluginToUse, int groupToShow)
    : CommonColumn (owner, pluginToUse, loadCachedResourceImage ("NoteGlyph.png"),
                    loadCachedResourceImage ("NoteGlyphSelected.png"))
    , group (groupToShow)
{
}

bool OldStylePresetsBrowser::PresetListColumn::canFollow (Column* last)
{
    auto* groups = dynamic_cast<GroupListColumn*> (last);
    return groups != nullptr && &groups->getPlugin() == &plugin;
}

ColumnBrowser::Column* OldStylePresetsBrowser::PresetListColumn::createParentColumn()
{
    return new GroupListColumn (browser, plugin);
}

int OldStylePresetsBrowser::PresetListColumn::getNumItems() { return plugin.getGroupSize (group); }

juce::String OldStylePresetsBrowser::PresetListColumn::getItemText (int row)
{
    return plugin.getPresetNameInGroup (group, row);
}

// Selecting the current preset again does nothing, which ends the echo from the preset parameters.
void OldStylePresetsBrowser::PresetListColumn::itemSelected (int row)
{
    plugin.selectPreset (plugin.getPresetIndex (group, row));
}

void OldStylePresetsBrowser::PresetListColumn::itemRenamed (int row, const juce::String& text)
{
    if (juce::isPositiveAndBelow (group, plugin.getNumGroups()))
        plugin.setPresetName (plugin.getGroupStart (group) + row, text);
}

bool OldStylePresetsBrowser::PresetListColumn::canDropOnColumn (ListColumn* source)
{
    return dynamic_cast<PresetListColumn*> (source) != nullptr;
}

OldStylePresetsBrowser::PresetListColumn*
    OldStylePresetsBrowser::PresetListColumn::singlePresetSource (ListColumn* source)
{
    auto* presets = dynamic_cast<PresetListColumn*> (source);
    return presets != nullptr && presets->getList().getNumSelectedRows() == 1 ? presets : nullptr;
}

// A position takes one preset only: several can only go onto the column.
bool OldStylePresetsBrowser::PresetListColumn::canDropBefore (ListColumn* source, int)
{
    return singlePresetSource (source) != nullptr;
}

bool OldStylePresetsBrowser::PresetListColumn::canDropAfter (ListColumn* source, int)
{
    return singlePresetSource (source) != nullptr;
}

void OldStylePresetsBrowser::PresetListColumn::droppedOnColumn (ListColumn* source)
{
    auto* presets = dynamic_cast<PresetListColumn*> (source);
    if (presets == nullptr)
        return;
    const auto selection = presets->getList().getSelectedRows();
    plugin.movePresetsToGroup (group, presets->group, selection);
    update();
    browser.showCurrentPreset();
}

void OldStylePresetsBrowser::PresetListColumn::droppedBefore (ListColumn* source, int row)
{
    moveSelectedPreset (source, row, false);
}

void OldStylePresetsBrowser::PresetListColumn::droppedAfter (ListColumn* source, int row)
{
    moveSelectedPreset (source, row, true);
}

void OldStylePresetsBrowser::PresetListColumn::moveSelectedPreset (ListColumn* source, int row, bool after)
{
    auto* presets = singlePresetSource (source);
    if (presets == nullptr)
        return;
    const int from = plugin.getPresetIndex (presets->group, presets->getList().getSelectedRow (0));
    const int target = plugin.getPresetIndex (group, row);
    if (from < 0 || target < 0)
        return;

    // Taking the preset out first shifts the presets behind it by one, in the row and in a shared group.
    const bool sameGroup = presets->group == group;
    const int to = after ? (target < from ? target + 1 : target) : (target > from ? target - 1 : target);
    const int rowAfterwards =
        after ? (to >= from && sameGroup ? row : row + 1) : (to > from && sameGroup ? row - 1 : row);
    // The last preset of a group put before the next group's first, or the other way round: both places
    // are one, and nothing moves; nor may the selection move the current preset to another group.
    if (to == from)
        return;
    plugin.movePreset (from, to, presets->group, group);
    update();
    selectRow (rowAfterwards);
}
