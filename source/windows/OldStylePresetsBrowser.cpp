#include "windows/OldStylePresetsBrowser.h"

#include "presets/BasePluginOldStyle.h"
#include "windows/GroupListColumn.h"
#include "windows/List.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/PresetListColumn.h"

OldStylePresetsBrowser::OldStylePresetsBrowser (OldStylePresetBrowserWindow* windowToTell,
                                                BasePluginOldStyle& pluginToShow)
    : window (windowToTell)
    , plugin (pluginToShow)
{
}

OldStylePresetsBrowser::~OldStylePresetsBrowser() = default;

ColumnBrowser::Column* OldStylePresetsBrowser::createRootColumn()
{
    return new GroupListColumn (*this, plugin);
}

void OldStylePresetsBrowser::columnsChanged()
{
    if (window != nullptr)
        window->updateButtons();
}

OldStylePresetsBrowser::GroupListColumn* OldStylePresetsBrowser::getGroupColumn() const
{
    return dynamic_cast<GroupListColumn*> (getColumn (0));
}

OldStylePresetsBrowser::PresetListColumn* OldStylePresetsBrowser::getPresetColumn() const
{
    return dynamic_cast<PresetListColumn*> (getColumn (1));
}

void OldStylePresetsBrowser::selectPresetInColumns (int group, int position)
{
    auto* presets = getPresetColumn();
    if (presets == nullptr || presets->getGroup() != group)
        addColumn (new PresetListColumn (*this, plugin, group));
    // A selection of several rows that holds the preset stays as it is.
    if ((presets = getPresetColumn()) != nullptr && !presets->getList().isRowSelected (position))
        presets->selectRow (position);
    if (auto* groups = getGroupColumn())
        groups->selectRow (group);
}

void OldStylePresetsBrowser::showCurrentPreset()
{
    const int current = plugin.getCurrentPreset();
    const int group = plugin.getGroupOfPreset (current);
    const int start = plugin.getGroupStart (group);
    if (auto* presets = getPresetColumn(); presets != nullptr && presets->getGroup() == group)
        presets->selectRow (start == -1 ? -1 : current - start);
}

int OldStylePresetsBrowser::getSelectedGroup() const
{
    auto* groups = getGroupColumn();
    return groups != nullptr ? groups->getList().getSelectedRow (0) : -1;
}

OldStylePresetsBrowser::CommonColumn::CommonColumn (OldStylePresetsBrowser& owner,
                                                    BasePluginOldStyle& pluginToUse,
                                                    const juce::Image& normal, const juce::Image& selected)
    : browser (owner)
    , plugin (pluginToUse)
    , normalImage (normal)
    , selectedImage (selected)
{
}
