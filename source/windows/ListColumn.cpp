#include "windows/ListColumn.h"

#include "windows/ItemComponent.h"
#include "windows/List.h"

namespace
{
// The list stands inside the column's rounded body.
constexpr int listInset = 4;
// A drop within this many pixels of a row's edge goes before or after the row rather than on it.
constexpr int edgeZone = 5;
// The column's frame while it takes a drop.
const juce::Colour dropFrameColour (0xffff0000);
constexpr float dropFrameCorner = 4.0f;
// Marks of a drop position lie within this many pixels of an edge.
constexpr int frameDepth = 3;
// A drag resting over a list is looked at again this often, so that the list scrolls on under it.
constexpr int dragRepeatMilliseconds = 25;
} // namespace

const char* const ColumnBrowser::ListColumn::dragDescription = "ListColumn";

ColumnBrowser::ListColumn::ListColumn()
    : list (std::make_unique<List> (*this))
{
    list->setTopLeftPosition (listInset, listInset);
    addAndMakeVisible (*list);
}

ColumnBrowser::ListColumn::~ListColumn() = default;

void ColumnBrowser::ListColumn::selectRow (int row)
{
    list->selectRow (row, true, true);

    auto* viewport = list->getViewport();
    const int height = list->getRowHeight();
    const int viewY = viewport->getViewPositionY();
    const int visible = viewport->getMaximumVisibleHeight();
    const int firstWhole = (viewY + height - 1) / height;
    const int lastWhole = (viewY + visible) / height - 1;
    if (row < 0)
        return;
    if (row < firstWhole)
        viewport->setViewPosition (viewport->getViewPositionX(), height * row);
    else if (row > lastWhole)
        viewport->setViewPosition (viewport->getViewPositionX(),
                                   juce::jmax (0, (row + 1) * height - visible));
}

void ColumnBrowser::ListColumn::startRename (int row)
{
    if (!canRenameItem (row))
        return;
    auto* item = dynamic_cast<ItemComponent*> (list->getComponentForRowNumber (row));
    if (item == nullptr)
        return;
    const auto view = list->getViewport()->getViewArea().getVerticalRange();
    const auto rowSpan =
        juce::Range<int>::withStartAndLength (row * list->getRowHeight(), list->getRowHeight());
    if (!view.intersects (rowSpan))
        return; // scrolled off
    item->getLabel().showEditor();
}

// The rows refresh in place and repaint what changed in them.
void ColumnBrowser::ListColumn::update() { list->updateContent(); }

void ColumnBrowser::ListColumn::resized()
{
    const int width = getWidth() - (hasGripStrip() ? gripWidth + 2 * listInset : 2 * listInset);
    list->setSize (juce::jmax (0, width), juce::jmax (0, getHeight() - 2 * listInset));
}

void ColumnBrowser::ListColumn::paint (juce::Graphics& g)
{
    Column::paint (g);
    if (dropMode == dropOnColumn)
    {
        g.setColour (dropFrameColour);
        g.drawRoundedRectangle (getLocalBounds().toFloat().reduced (0.5f), dropFrameCorner, 1.0f);
    }
}

ColumnBrowser::ListColumn* ColumnBrowser::ListColumn::sourceColumnOf (const SourceDetails& details) const
{
    auto* sourceList = dynamic_cast<List*> (details.sourceComponent.get());
    if (sourceList == nullptr || details.description.toString() != dragDescription)
        return nullptr;
    auto& source = sourceList->getColumn();
    return source.getBrowser() != nullptr && source.getBrowser() == getBrowser() ? &source : nullptr;
}

bool ColumnBrowser::ListColumn::isInterestedInDragSource (const SourceDetails& details)
{
    return sourceColumnOf (details) != nullptr;
}

void ColumnBrowser::ListColumn::itemDragEnter (const SourceDetails& details)
{
    updateDropPosition (details);
    juce::Desktop::getInstance().beginDragAutoRepeat (dragRepeatMilliseconds);
}

void ColumnBrowser::ListColumn::itemDragMove (const SourceDetails& details) { updateDropPosition (details); }

void ColumnBrowser::ListColumn::itemDragExit (const SourceDetails&) { setDropPosition (-1, noDrop); }

void ColumnBrowser::ListColumn::updateDropPosition (const SourceDetails& details)
{
    auto* source = sourceColumnOf (details);
    const auto point = list->getLocalPoint (this, details.localPosition);
    if (source == nullptr || !list->getLocalBounds().contains (point))
        return;

    const int height = list->getRowHeight();
    auto* viewport = list->getViewport();
    const int row = list->getRowContainingPosition (point.x, point.y);
    const int y = (point.y - viewport->getY() + viewport->getViewPositionY()) % height;

    int mode = noDrop;
    if (row == -1)
        mode = canDropOnColumn (source) ? dropOnColumn : noDrop;
    else if (canDropOnItem (source, row))
        mode = y < edgeZone && canDropBefore (source, row)            ? dropBefore
               : y >= height - edgeZone && canDropAfter (source, row) ? dropAfter
                                                                      : dropOnItem;
    else if (y < height / 2 && canDropBefore (source, row))
        mode = dropBefore;
    else if (canDropAfter (source, row))
        mode = dropAfter;
    else
        mode = canDropOnColumn (source) ? dropOnColumn : noDrop;

    const juce::Component::SafePointer<ListColumn> self (this);
    setDropPosition (row, mode);
    if (self == nullptr)
        return;

    const auto inViewport = viewport->getLocalPoint (list.get(), point);
    viewport->autoScroll (inViewport.x, inViewport.y, height / 2, height);
}

void ColumnBrowser::ListColumn::setDropPosition (int row, int mode)
{
    if (row == dropRow && mode == dropMode)
        return;
    const int oldRow = dropRow, oldMode = dropMode;
    dropRow = row;
    dropMode = mode;
    repaintDropMarks (oldRow, oldMode);
    repaintDropMarks (dropRow, dropMode);
    // Hovering on a row opens what lies behind it while the drag goes on.
    if (dropMode == dropOnItem)
        selectRow (dropRow);
}

void ColumnBrowser::ListColumn::repaintDropMarks (int row, int mode)
{
    if (mode == dropOnColumn)
    {
        repaint (getLocalBounds().removeFromTop (frameDepth));
        repaint (getLocalBounds().removeFromBottom (frameDepth));
        repaint (getLocalBounds().removeFromLeft (frameDepth));
        repaint (getLocalBounds().removeFromRight (frameDepth));
    }
    if (row >= 0 && mode != noDrop)
        for (int r = row - 1; r <= row + 1; ++r)
            list->repaint (list->getRowPosition (r, true));
}

void ColumnBrowser::ListColumn::itemDropped (const SourceDetails& details)
{
    auto* source = sourceColumnOf (details);
    auto* owner = getBrowser();
    const int row = dropRow, mode = dropMode;
    const juce::Component::SafePointer<ListColumn> self (this);
    if (source != nullptr)
    {
        if (mode == dropOnColumn)
            droppedOnColumn (source);
        else if (mode == dropOnItem)
            droppedOnItem (source, row);
        else if (mode == dropBefore)
            droppedBefore (source, row);
        else if (mode == dropAfter)
            droppedAfter (source, row);
    }
    if (self != nullptr)
        setDropPosition (-1, noDrop);
    if (owner != nullptr)
        owner->updateColumns();
}
