#pragma once

#include "windows/LabelWithModalTextEditor.h"
#include "windows/ListColumn.h"

/** A row's content: the icon, the text in a label that edits in place, the arrow of a row that leads on,
    the selection and the drop marks. It takes no clicks, nor do its children: they fall through to the
    list's row, which selects, drags and starts renames. */
class ColumnBrowser::ListColumn::ItemComponent : public juce::Component, public ModalTextEditor::ModalListener
{
public:
    explicit ItemComponent (ListColumn& owner);
    ~ItemComponent() override;

    /** Shows the row as the model has it now; repaints only what changed. */
    void update (int newRow, bool isSelected);

    int getRow() const noexcept { return row; }
    bool isSelected() const noexcept { return selected; }
    LabelWithModalTextEditor& getLabel() noexcept { return label; }

    void resized() override;
    void paint (juce::Graphics& g) override;

    void textCommitted (ModalTextEditor* editor) override;

private:
    /** The width that the list's vertical bar leaves to the row. */
    int usableWidth() const;

    ListColumn& column;
    juce::Image normalImage, selectedImage;
    LabelWithModalTextEditor label;
    bool hasChildrenFlag = false;
    bool selected = false;
    int row = -1;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ItemComponent)
};
