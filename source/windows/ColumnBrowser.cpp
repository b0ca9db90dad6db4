#include "windows/ColumnBrowser.h"

#include "windows/Column.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
// The filler that continues the row of columns has the columns' rounded body.
constexpr float fillerCorner = 6.0f;
// With the horizontal bar showing, the row stops a little above it.
constexpr int barClearance = 4;
} // namespace

ColumnBrowser::ViewportComponent::ViewportComponent() { setBounds (0, 0, 0, 0); }

// The columns belong to the browser.
ColumnBrowser::ViewportComponent::~ViewportComponent() { removeAllChildren(); }

void ColumnBrowser::ViewportComponent::resized()
{
    for (auto* child : getChildren())
        child->setSize (child->getWidth(), getHeight());
}

ColumnBrowser::ColumnBrowser()
    : viewportComponent (std::make_unique<ViewportComponent>())
{
    setViewedComponent (viewportComponent.get(), false);
    setScrollBarThickness (getLookAndFeel().getDefaultScrollbarWidth());
}

ColumnBrowser::~ColumnBrowser()
{
    // The columns go first, then the held column, then their parent.
    columns.clear();
    heldColumn.reset();
    dragSourceColumn = nullptr;
    setViewedComponent (nullptr, false);
    viewportComponent.reset();
}

void ColumnBrowser::addColumn (Column* newColumn)
{
    if (newColumn == nullptr)
        return;

    int inheritedWidth = 0;
    while (!columns.isEmpty() && !newColumn->canFollow (columns.getLast()))
    {
        auto* last = columns.getLast();
        inheritedWidth = last->getWidth();
        if (isDragRunning() && last == dragSourceColumn)
        {
            // The drop still needs this column's selection: it stays, out of sight, until the next one
            // takes its place or the browser goes.
            columns.removeLast (1, false);
            last->setVisible (false);
            if (heldColumn.get() != last)
                heldColumn.reset (last);
        }
        else
        {
            if (last == dragSourceColumn)
                dragSourceColumn = nullptr;
            columns.removeLast();
        }
    }

    attach (newColumn, -1);

    // Missing parents grow to the left until a column is linked to the one before it.
    auto* column = newColumn;
    const int index = columns.indexOf (newColumn);
    while (!(index > 0 && column->isLinkedTo (columns[index - 1])))
    {
        auto* parent = column->createParentColumn();
        if (parent == nullptr)
            break;
        attach (parent, index);
        column = parent;
    }

    // A column that replaces another keeps the width that the old one had.
    if (inheritedWidth != 0)
        columns[index]->setSize (juce::jmax (Column::smallestWidth, inheritedWidth),
                                 columns[index]->getHeight());

    relink();
    layoutColumns();
    for (auto* each : columns)
        each->update();
    columnsChanged();
}

void ColumnBrowser::attach (Column* column, int position)
{
    column->browser = this;
    column->setLookAndFeel (&getLookAndFeel());
    column->setSize (column->getDefaultWidth(), viewportComponent->getHeight());
    column->setVisible (true);
    viewportComponent->addChildComponent (column);
    columns.insert (position, column);
}

void ColumnBrowser::relink()
{
    for (int i = 0; i < columns.size(); ++i)
    {
        auto* column = columns[i];
        auto* previous = i > 0 ? columns[i - 1] : nullptr;
        auto* next = columns[i + 1];
        if (previous != column->previousColumn || next != column->nextColumn)
        {
            column->previousColumn = previous;
            column->nextColumn = next;
            column->resized();
            column->repaint();
        }
        column->isLast = i == columns.size() - 1;
    }
}

void ColumnBrowser::updateColumns()
{
    for (auto* column : columns)
        column->update();
    columnsChanged();
}

int ColumnBrowser::rowHeight()
{
    return getHorizontalScrollBar().isVisible() ? getMaximumVisibleHeight() - barClearance : getHeight();
}

void ColumnBrowser::layoutColumns()
{
    int x = 0;
    for (auto* column : columns)
    {
        column->setBounds (x, 0, column->getWidth(), column->getHeight());
        x += column->getWidth();
    }
    viewportComponent->setSize (x, rowHeight());
    repaint();
}

void ColumnBrowser::resized()
{
    juce::Viewport::resized();
    viewportComponent->setSize (viewportComponent->getWidth(), rowHeight());
    repaint();
}

void ColumnBrowser::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::browserBackgroundColourId));
    const int filled = viewportComponent->getWidth() - getViewPositionX();
    if (filled < getWidth())
    {
        const auto filler =
            juce::Rectangle<int> (filled, 0, getWidth() - filled, viewportComponent->getHeight()).toFloat();
        g.setColour (findColour (DefaultLookAndFeel::browserListColourId));
        g.fillRoundedRectangle (filler, fillerCorner);
        g.setColour (findColour (DefaultLookAndFeel::browserLineColourId));
        g.drawRoundedRectangle (filler.reduced (0.5f), fillerCorner, 1.0f);
    }
}

void ColumnBrowser::lookAndFeelChanged()
{
    setScrollBarThickness (getLookAndFeel().getDefaultScrollbarWidth());
    // The columns were given the look that the browser had when they came; they follow it.
    for (auto* column : columns)
        column->setLookAndFeel (&getLookAndFeel());
    if (heldColumn != nullptr)
        heldColumn->setLookAndFeel (&getLookAndFeel());
}
