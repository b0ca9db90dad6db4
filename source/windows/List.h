#pragma once

#include "windows/ListColumn.h"

/** A list column's list box, its own model: it asks its column for the rows and passes on what the user
    does with them. The rows are components, made once and refreshed in place. */
class ColumnBrowser::ListColumn::List : public juce::ListBox, public juce::ListBoxModel
{
public:
    static constexpr int rowHeight = 20;

    explicit List (ListColumn& owner);
    ~List() override;

    ListColumn& getColumn() const noexcept { return column; }

    int getNumRows() override;
    void paintListBoxItem (int, juce::Graphics&, int, int, bool) override {}
    juce::Component* refreshComponentForRow (int row, bool isRowSelected, juce::Component* existing) override;
    void listBoxItemDoubleClicked (int row, const juce::MouseEvent&) override;
    void backgroundClicked (const juce::MouseEvent&) override;
    void selectedRowsChanged (int lastRow) override;
    juce::var getDragSourceDescription (const juce::SparseSet<int>& rowsToDescribe) override;
    juce::String getTooltipForRow (int) override { return {}; }

    void lookAndFeelChanged() override;

private:
    ListColumn& column;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (List)
};
