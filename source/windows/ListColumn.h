#pragma once

#include "windows/Column.h"

/** A column that shows a list of items with icons, renames them in place, and takes drops at four kinds
    of position: on the column, on a row, before a row and after it. The model is the set of virtual
    operations below; `source` in the drop operations is the column whose list started the drag. */
class ColumnBrowser::ListColumn : public Column, public juce::DragAndDropTarget
{
public:
    class List;
    class ItemComponent;

    enum DropMode
    {
        noDrop = 0,
        dropOnColumn = 1,
        dropOnItem = 2,
        dropBefore = 3,
        dropAfter = 4
    };

    /** What a list's drag says it carries; a target takes nothing else. */
    static const char* const dragDescription;

    ListColumn();
    ~ListColumn() override;

    // The model.
    virtual int getNumItems() { return 0; }
    virtual juce::String getItemText (int /*row*/) { return {}; }
    virtual juce::Image getItemImage (int /*row*/, bool /*selected*/) { return {}; }
    /** The row leads on to something: bold text and an arrow. */
    virtual bool hasChildren (int /*row*/) { return false; }
    virtual bool canDragRows (const juce::SparseSet<int>& /*selection*/) { return true; }
    virtual bool canRenameItem (int /*row*/) { return true; }
    /** A new column to open behind this one for the row, or null. */
    virtual Column* createColumnForItem (int /*row*/) { return nullptr; }
    /** A new column to open when the list's empty space is clicked, or null. */
    virtual Column* createColumnForBackground() { return nullptr; }
    virtual void itemSelected (int /*row*/) {}
    virtual void itemRenamed (int /*row*/, const juce::String& /*text*/) {}
    virtual void backgroundClicked() {}
    virtual bool canDropOnColumn (ListColumn* /*source*/) { return true; }
    virtual bool canDropOnItem (ListColumn* /*source*/, int /*row*/) { return true; }
    virtual bool canDropBefore (ListColumn* /*source*/, int /*row*/) { return true; }
    virtual bool canDropAfter (ListColumn* /*source*/, int /*row*/) { return true; }
    virtual void droppedOnColumn (ListColumn* /*source*/) {}
    virtual void droppedOnItem (ListColumn* /*source*/, int /*row*/) {}
    virtual void droppedBefore (ListColumn* /*source*/, int /*row*/) {}
    virtual void droppedAfter (ListColumn* /*source*/, int /*row*/) {}

    /** Selects the row alone and scrolls it into full view. */
    void selectRow (int row);
    /** Opens the in-place editor on the row, if its component is on screen and the row may be renamed. */
    void startRename (int row);
    void update() override;

    List& getList() const noexcept { return *list; }
    int getDropRow() const noexcept { return dropRow; }
    int getDropMode() const noexcept { return dropMode; }

    void resized() override;
    void paint (juce::Graphics& g) override;

    bool isInterestedInDragSource (const SourceDetails& details) override;
    void itemDragEnter (const SourceDetails& details) override;
    void itemDragMove (const SourceDetails& details) override;
    void itemDragExit (const SourceDetails& details) override;
    void itemDropped (const SourceDetails& details) override;

private:
    /** The column whose list the drag came from, if it is one of this browser's. */
    ListColumn* sourceColumnOf (const SourceDetails& details) const;
    void updateDropPosition (const SourceDetails& details);
    void setDropPosition (int row, int mode);
    /** Repaints the marks of a drop position: the rows around it, or the column's frame. */
    void repaintDropMarks (int row, int mode);

    std::unique_ptr<List> list;
    int dropRow = -1;
    int dropMode = noDrop;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ListColumn)
};
