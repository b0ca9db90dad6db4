#pragma once

#include "windows/ModalTextEditor.h"

/** A label that opens a text editor over itself on a double click; the editor is made at the first edit
    and kept, hidden between edits, with its listeners. */
class LabelWithModalTextEditor : public juce::Component, public ModalTextEditor::ModalListener
{
public:
    explicit LabelWithModalTextEditor (const juce::String& name = {});
    ~LabelWithModalTextEditor() override;

    void setText (const juce::String& newText);
    const juce::String& getText() const noexcept { return text; }
    void setFont (const juce::Font& newFont);
    const juce::Font& getFont() const noexcept { return font; }
    /** Goes to the editor, or waits for it until it is made. */
    void addListener (ModalTextEditor::ModalListener* listener);

    void showEditor();
    ModalTextEditor* getEditor() const noexcept { return editor.get(); }

    void mouseDoubleClick (const juce::MouseEvent&) override { showEditor(); }
    void resized() override;
    void paint (juce::Graphics& g) override;

    void textChanged (ModalTextEditor* source) override { setText (source->getText()); }
    void textCommitted (ModalTextEditor* source) override { setText (source->getText()); }
    void editCancelled (ModalTextEditor* source) override { setText (source->getText()); }
    void editFinished (ModalTextEditor* source) override { source->setVisible (false); }

private:
    juce::Array<ModalTextEditor::ModalListener*> pendingListeners;
    juce::String text;
    std::unique_ptr<ModalTextEditor> editor;
    juce::Font font{ 13.0f };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (LabelWithModalTextEditor)
};
