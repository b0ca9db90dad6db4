#pragma once

#include "windows/OldStylePresetsBrowser.h"

/** The bank's groups, one selected at a time; a group that holds presets leads on to them. Groups move
    by dragging them before or after another; presets dragged onto a group move into it. */
class OldStylePresetsBrowser::GroupListColumn : public CommonColumn
{
public:
    static constexpr int width = 241;

    GroupListColumn (OldStylePresetsBrowser& owner, BasePluginOldStyle& pluginToUse);

    bool canFollow (Column*) override { return false; }
    bool isLinkedTo (Column*) override { return false; }
    int getDefaultWidth() override { return width; }

    int getNumItems() override;
    juce::String getItemText (int row) override;
    bool hasChildren (int row) override;
    Column* createColumnForItem (int row) override;
    void itemSelected (int row) override;
    void itemRenamed (int row, const juce::String& text) override;

    bool canDropOnColumn (ListColumn*) override { return false; }
    bool canDropOnItem (ListColumn* source, int row) override;
    bool canDropBefore (ListColumn* source, int row) override;
    bool canDropAfter (ListColumn* source, int row) override;
    void droppedOnItem (ListColumn* source, int row) override;
    void droppedBefore (ListColumn* source, int row) override;
    void droppedAfter (ListColumn* source, int row) override;

private:
    /** Moves the one selected group of this column to `to`, if the drag came from here. */
    void moveSelectedGroup (ListColumn* source, int row, bool after);

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GroupListColumn)
};
