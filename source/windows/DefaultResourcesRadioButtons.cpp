#include "windows/DefaultResourcesRadioButtons.h"

DefaultResourcesRadioButtons::DefaultResourcesRadioButtons (const juce::String& groupTitle,
                                                            const juce::StringArray& rowLabels)
    : RadioButtons (groupTitle, rowLabels)
{
    path.addListener (this);
    addAndMakeVisible (path);
    // The base laid the group out before the path was there.
    layout();
    selectionChanged();
}

DefaultResourcesRadioButtons::~DefaultResourcesRadioButtons() { path.removeListener (this); }

void DefaultResourcesRadioButtons::resized()
{
    RadioButtons::resized();
    const int x = labelX + labelWidth + labelGap;
    path.setBounds (x, (getNumRows() - 1) * rowHeight - pathOverhang() + listTop,
                    juce::jmax (0, getWidth() - labelGap - x), path.getHeight());
}

void DefaultResourcesRadioButtons::sizeChanged()
{
    if (sizing)
        return;
    const juce::ScopedValueSetter<bool> guard (sizing, true);
    fitHeight();
}

void DefaultResourcesRadioButtons::fitHeight()
{
    setSize (getWidth(), getNumRows() * rowHeight + juce::jmax (pathOverhang(), 0)
                             + (int) titleFont.getHeight() + 2 * verticalMargin);
}

int DefaultResourcesRadioButtons::pathOverhang() const { return (path.getHeight() - rowHeight) / 2; }

void DefaultResourcesRadioButtons::selectionChanged()
{
    path.setEnabled (getSelectedIndex() == getNumRows() - 1);
}

void DefaultResourcesRadioButtons::childBoundsChanged (juce::Component* child)
{
    // The path takes its height from the look and feel after the group has had it.
    if (child != &path || sizing)
        return;
    const juce::ScopedValueSetter<bool> guard (sizing, true);
    resized();
    fitHeight();
}

void DefaultResourcesRadioButtons::pathChanged (PathComponent* source)
{
    if (source == &path)
        notifyListeners();
}
