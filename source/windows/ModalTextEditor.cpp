#include "windows/ModalTextEditor.h"

#include "common/ListenerWalk.h"
#include "skin/TextFieldLift.h"

ModalTextEditor::ModalTextEditor (const juce::String& name)
    : juce::TextEditor (name)
{
    setPopupMenuEnabled (false);
    setSelectAllWhenFocused (true);
    setWantsKeyboardFocus (true);
    juce::TextEditor::addListener (this);
}

ModalTextEditor::~ModalTextEditor() { juce::TextEditor::removeListener (this); }

void ModalTextEditor::addListener (ModalListener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void ModalTextEditor::removeListener (ModalListener* listener)
{
    listeners.removeFirstMatchingValue (listener);
}

void ModalTextEditor::focusGained (FocusChangeType cause)
{
    if (!isOnDesktop() && !editing)
    {
        editing = true;
        textAtStart = getText();
        savedBounds = getBounds();
        savedParent = getParentComponent();
        // Leaving the parent takes the focus away for a moment; that is no end of the edit.
        lifting = true;
        TextFieldLift::lift (*this);
        lifting = false;
        if (!hasKeyboardFocus (false))
            grabKeyboardFocus();
    }
    juce::TextEditor::focusGained (cause);
    repaint();
}

void ModalTextEditor::focusLost (FocusChangeType cause)
{
    // The text editor's own handling still runs: it ends its caret and selection.
    juce::TextEditor::focusLost (cause);
    if (!lifting && editing)
        finishEdit();
    repaint();
}

void ModalTextEditor::finishEdit()
{
    editing = false;
    const bool wasLifted = isOnDesktop();
    if (wasLifted && savedParent != nullptr)
    {
        TextFieldLift::putBack (*this, *savedParent, savedBounds);
        setHighlightedRegion ({ 0, 0 });
    }
    if (getText() != textAtStart)
    {
        callListenersBackwards (listeners, [this] (ModalListener& l) { l.textCommitted (this); });
        textAtStart = getText();
    }
    callListenersBackwards (listeners, [this] (ModalListener& l) { l.editFinished (this); });
    if (hasKeyboardFocus (false))
        giveAwayKeyboardFocus();
}

void ModalTextEditor::textEditorTextChanged (juce::TextEditor&)
{
    callListenersBackwards (listeners, [this] (ModalListener& l) { l.textChanged (this); });
}

void ModalTextEditor::textEditorReturnKeyPressed (juce::TextEditor&)
{
    if (editing)
        finishEdit();
}

void ModalTextEditor::textEditorEscapeKeyPressed (juce::TextEditor&)
{
    if (!editing)
        return;
    setText (textAtStart, false);
    finishEdit();
    callListenersBackwards (listeners, [this] (ModalListener& l) { l.editCancelled (this); });
}
