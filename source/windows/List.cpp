#include "windows/List.h"

#include "windows/DefaultLookAndFeel.h"
#include "windows/ItemComponent.h"

ColumnBrowser::ListColumn::List::List (ListColumn& owner)
    : juce::ListBox ({}, nullptr)
    , column (owner)
{
    setModel (this);
    setRowHeight (rowHeight);
    getViewport()->setSingleStepSizes (rowHeight, rowHeight);
    setMultipleSelectionEnabled (true);
    lookAndFeelChanged();
}

// The list box must not reach its model, which is this object, while the model part is taken down.
ColumnBrowser::ListColumn::List::~List() { setModel (nullptr); }

void ColumnBrowser::ListColumn::List::lookAndFeelChanged()
{
    juce::ListBox::lookAndFeelChanged();
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        setColour (juce::ListBox::backgroundColourId,
                   look->findColour (DefaultLookAndFeel::browserListColourId));
}

int ColumnBrowser::ListColumn::List::getNumRows() { return column.getNumItems(); }

juce::Component* ColumnBrowser::ListColumn::List::refreshComponentForRow (int row, bool isRowSelected,
                                                                          juce::Component* existing)
{
    auto* item = dynamic_cast<ItemComponent*> (existing);
    if (existing != nullptr && item == nullptr)
        return existing;
    if (item == nullptr)
        item = new ItemComponent (column);
    item->update (row, isRowSelected);
    return item;
}

void ColumnBrowser::ListColumn::List::listBoxItemDoubleClicked (int row, const juce::MouseEvent&)
{
    if (getNumSelectedRows() == 1 && getSelectedRow (0) == row)
        column.startRename (row);
}

void ColumnBrowser::ListColumn::List::backgroundClicked (const juce::MouseEvent&)
{
    const juce::Component::SafePointer<juce::Component> self (this);
    if (auto* browser = column.getBrowser())
        browser->addColumn (column.createColumnForBackground());
    if (self == nullptr)
        return;
    column.backgroundClicked();
    column.update();
}

void ColumnBrowser::ListColumn::List::selectedRowsChanged (int lastRow)
{
    if (!juce::isPositiveAndBelow (lastRow, column.getNumItems()))
        return;
    const juce::Component::SafePointer<juce::Component> self (this);
    if (auto* browser = column.getBrowser())
        browser->addColumn (column.createColumnForItem (lastRow));
    if (self != nullptr)
        column.itemSelected (lastRow);
}

juce::var
    ColumnBrowser::ListColumn::List::getDragSourceDescription (const juce::SparseSet<int>& rowsToDescribe)
{
    if (!column.canDragRows (rowsToDescribe))
        return {};
    if (auto* browser = column.getBrowser())
        browser->setDragSourceColumn (&column);
    return juce::String (dragDescription);
}
