#include "windows/LabelWithModalTextEditor.h"

namespace
{
// The editor's look over the label: a light grey selection, a black outline, and an orange one while
// it has the focus.
const juce::Colour highlight (0xffd3d3d3), focusedOutline (0xffff4500);
constexpr float focusedOutlineAlpha = 0.75f;
} // namespace

LabelWithModalTextEditor::LabelWithModalTextEditor (const juce::String& name)
    : juce::Component (name)
{
}

LabelWithModalTextEditor::~LabelWithModalTextEditor()
{
    if (editor != nullptr)
        editor->removeListener (this);
}

void LabelWithModalTextEditor::setText (const juce::String& newText)
{
    if (newText == text)
        return;
    text = newText;
    if (editor != nullptr)
        editor->setText (text, false);
    repaint();
}

void LabelWithModalTextEditor::setFont (const juce::Font& newFont)
{
    if (newFont == font)
        return;
    font = newFont;
    if (editor != nullptr)
        editor->applyFontToAllText (font);
    repaint();
}

void LabelWithModalTextEditor::addListener (ModalTextEditor::ModalListener* listener)
{
    if (editor != nullptr)
        editor->addListener (listener);
    else if (listener != nullptr)
        pendingListeners.addIfNotAlreadyThere (listener);
}

void LabelWithModalTextEditor::showEditor()
{
    if (editor == nullptr)
    {
        editor = std::make_unique<ModalTextEditor> (getName());
        editor->ownerLabel = this;
        editor->addListener (this);
        for (auto* listener : pendingListeners)
            editor->addListener (listener);
        pendingListeners.clear();
    }
    addChildComponent (*editor);
    editor->setBounds (getLocalBounds());
    editor->setColour (juce::TextEditor::highlightColourId, highlight);
    editor->setColour (juce::TextEditor::outlineColourId, juce::Colours::black);
    editor->setColour (juce::TextEditor::focusedOutlineColourId,
                       focusedOutline.withAlpha (focusedOutlineAlpha));
    editor->setFont (font);
    editor->applyFontToAllText (font);
    editor->setText (text, false);
    editor->selectAll();
    editor->setVisible (true);
    editor->toFront (true);
    editor->grabKeyboardFocus();
}

void LabelWithModalTextEditor::resized()
{
    if (editor != nullptr && editor->getParentComponent() == this)
        editor->setBounds (getLocalBounds());
}

void LabelWithModalTextEditor::paint (juce::Graphics& g)
{
    g.setColour (findColour (juce::Label::textColourId));
    g.setFont (font);
    g.drawText (text, getLocalBounds(), juce::Justification::centredLeft, false);
}
