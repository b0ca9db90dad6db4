#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class LabelWithModalTextEditor;

/** A text field that can lift itself to a window of its own while it has the focus, where a host keeps
    the keyboard from its plug-in's window (the same switch as the face's name field), and goes back into
    its parent when the focus leaves. Return commits and closes, Escape reverts and closes, losing the
    focus commits. */
class ModalTextEditor : public juce::TextEditor, private juce::TextEditor::Listener
{
public:
    class ModalListener
    {
    public:
        virtual ~ModalListener() = default;
        virtual void textChanged (ModalTextEditor*) {}
        virtual void textCommitted (ModalTextEditor*) {}
        virtual void editCancelled (ModalTextEditor*) {}
        virtual void editFinished (ModalTextEditor*) {}
    };

    explicit ModalTextEditor (const juce::String& name = {});
    ~ModalTextEditor() override;

    void addListener (ModalListener* listener);
    void removeListener (ModalListener* listener);

    /** The label that made this editor, if one did. */
    LabelWithModalTextEditor* ownerLabel = nullptr;

    bool isEditing() const noexcept { return editing; }

    void focusGained (FocusChangeType cause) override;
    void focusLost (FocusChangeType cause) override;

private:
    void textEditorTextChanged (juce::TextEditor&) override;
    void textEditorReturnKeyPressed (juce::TextEditor&) override;
    void textEditorEscapeKeyPressed (juce::TextEditor&) override;
    void textEditorFocusLost (juce::TextEditor&) override {}

    /** Ends the edit: back into the parent, the text committed if it changed, the end told. */
    void finishEdit();

    juce::Array<ModalListener*> listeners;
    juce::Component::SafePointer<juce::Component> savedParent;
    juce::Rectangle<int> savedBounds;
    juce::String textAtStart;
    bool editing = false;
    bool lifting = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ModalTextEditor)
};
