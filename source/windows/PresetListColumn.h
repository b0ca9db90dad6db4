#pragma once

#include "windows/OldStylePresetsBrowser.h"

/** The presets of one group, several of which may be selected; a click on one makes it the current
    preset. One preset moves by dragging it before or after another, here or in another group; several
    move by dropping them on the column of another group. */
class OldStylePresetsBrowser::PresetListColumn : public CommonColumn
{
public:
    static constexpr int width = 350;

    PresetListColumn (OldStylePresetsBrowser& owner, BasePluginOldStyle& pluginToUse, int groupToShow);

    int getGroup() const noexcept { return group; }

    bool canFollow (Column* last) override;
    bool isLinkedTo (Column* previous) override { return canFollow (previous); }
    Column* createParentColumn() override;
    int getDefaultWidth() override { return width; }

    int getNumItems() override;
    juce::String getItemText (int row) override;
    void itemSelected (int row) override;
    void itemRenamed (int row, const juce::String& text) override;

    bool canDropOnColumn (ListColumn* source) override;
    bool canDropOnItem (ListColumn*, int) override { return false; }
    bool canDropBefore (ListColumn* source, int row) override;
    bool canDropAfter (ListColumn* source, int row) override;
    void droppedOnColumn (ListColumn* source) override;
    void droppedBefore (ListColumn* source, int row) override;
    void droppedAfter (ListColumn* source, int row) override;

private:
    /** A preset column whose list has exactly one selected row; null for anything else. */
    static PresetListColumn* singlePresetSource (ListColumn* source);
    /** Moves the one preset selected in `source` before or after `row` of this column. */
    void moveSelectedPreset (ListColumn* source, int row, bool after);

    const int group;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PresetListColumn)
};
