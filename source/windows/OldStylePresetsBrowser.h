#pragma once

#include "windows/ListColumn.h"

class BasePluginOldStyle;
class OldStylePresetBrowserWindow;

/** The bank as two columns: its groups on the left, the presets of the selected group on the right. The
    current preset is marked in both, and the columns follow it when it changes elsewhere. */
class OldStylePresetsBrowser : public ColumnBrowser
{
public:
    class CommonColumn;
    class GroupListColumn;
    class PresetListColumn;

    /** `window` is told when the columns change, so that it can set its buttons; it may be null. */
    OldStylePresetsBrowser (OldStylePresetBrowserWindow* window, BasePluginOldStyle& plugin);
    ~OldStylePresetsBrowser() override;

    Column* createRootColumn() override;
    void columnsChanged() override;

    /** Opens the group's presets in the second column and marks the preset at `position` in it, keeping a
        selection of several rows that holds it already; marks the group in the first column. */
    void selectPresetInColumns (int group, int position);
    /** Marks the current preset, if the open preset column shows its group. */
    void showCurrentPreset();
    /** The selected row of the first column; -1 if there is none. */
    int getSelectedGroup() const;

    GroupListColumn* getGroupColumn() const;
    PresetListColumn* getPresetColumn() const;
    BasePluginOldStyle& getPlugin() const noexcept { return plugin; }

private:
    OldStylePresetBrowserWindow* window;
    BasePluginOldStyle& plugin;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (OldStylePresetsBrowser)
};

/** What the two columns share: the browser, the plug-in, and a glyph for plain and selected rows. */
class OldStylePresetsBrowser::CommonColumn : public ColumnBrowser::ListColumn
{
public:
    CommonColumn (OldStylePresetsBrowser& owner, BasePluginOldStyle& pluginToUse, const juce::Image& normal,
                  const juce::Image& selected);

    juce::Image getItemImage (int, bool isSelected) override
    {
        return isSelected ? selectedImage : normalImage;
    }
    /** Both columns are as wide as they are made. */
    bool isResizable() override { return false; }

    BasePluginOldStyle& getPlugin() const noexcept { return plugin; }

protected:
    OldStylePresetsBrowser& browser;
    BasePluginOldStyle& plugin;

private:
    juce::Image normalImage, selectedImage;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (CommonColumn)
};
