#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

/** A browser that opens a new column to the right of the item selected in the column before: a row of
    columns in a viewport that scrolls sideways. It knows nothing of what it shows. It keeps the chain of
    columns consistent when a selection replaces the columns behind it, growing missing parents to the
    left, and keeps the column that started a drag alive after hovering threw it out of the row, because
    the drop still needs that column's selection. */
class ColumnBrowser : public juce::Viewport, public juce::DragAndDropContainer
{
public:
    class Column;
    class ListColumn;

    /** The viewed component: parent of the columns, which it doesn't own. */
    class ViewportComponent final : public juce::Component
    {
    public:
        ViewportComponent();
        ~ViewportComponent() override;
        /** Every column takes the row's height. */
        void resized() override;

    private:
        JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ViewportComponent)
    };

    ColumnBrowser();
    ~ColumnBrowser() override;

    /** Makes the leftmost column. */
    virtual Column* createRootColumn() = 0;
    /** Called after every change of the row and every update. */
    virtual void columnsChanged() {}
    /** Whether a drag from one of the lists is under way; a seam so that tests can hold one. */
    virtual bool isDragRunning() const { return isDragAndDropActive(); }

    /** Takes ownership and puts the column at the end of the row, first removing the columns that it
        can't stand behind and adding the parents that it lacks. A null column changes nothing. */
    void addColumn (Column* newColumn);
    /** Refreshes every column from the model, left to right. */
    void updateColumns();
    /** Places the columns side by side at their widths and sizes the viewed component to hold them. */
    void layoutColumns();

    int getNumColumns() const noexcept { return columns.size(); }
    Column* getColumn (int index) const noexcept { return columns[index]; }
    /** The column kept alive for a running drag after it left the row; null if there is none. */
    Column* getHeldColumn() const noexcept { return heldColumn.get(); }
    Column* getDragSourceColumn() const noexcept { return dragSourceColumn; }
    void setDragSourceColumn (Column* column) noexcept { dragSourceColumn = column; }
    ViewportComponent& getViewportComponent() noexcept { return *viewportComponent; }

    void resized() override;
    void paint (juce::Graphics& g) override;
    void lookAndFeelChanged() override;

private:
    void attach (Column* column, int position);
    void relink();
    /** The height of the viewed component: all of the browser, less the horizontal bar if it shows. */
    int rowHeight();

    juce::OwnedArray<Column> columns;
    std::unique_ptr<ViewportComponent> viewportComponent;
    std::unique_ptr<Column> heldColumn;
    Column* dragSourceColumn = nullptr;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ColumnBrowser)
};
