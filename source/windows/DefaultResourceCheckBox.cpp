#include "windows/DefaultResourceCheckBox.h"

#include "common/ListenerWalk.h"

namespace
{
constexpr int pathGap = 5; // between the check box's text and the path
}

DefaultResourceCheckBox::DefaultResourceCheckBox()
{
    check.addListener (this);
    path.addListener (this);
    addAndMakeVisible (path);
    addAndMakeVisible (check);
    updateEnabling();
}

DefaultResourceCheckBox::~DefaultResourceCheckBox()
{
    check.removeListener (this);
    path.removeListener (this);
}

void DefaultResourceCheckBox::setPath (const juce::String& text)
{
    check.setToggleState (text.isNotEmpty());
    path.setPath (text, false);
    updateEnabling();
}

void DefaultResourceCheckBox::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void DefaultResourceCheckBox::removeListener (Listener* listener)
{
    listeners.removeFirstMatchingValue (listener);
}

void DefaultResourceCheckBox::updateEnabling() { path.setEnabled (check.getToggleState()); }

void DefaultResourceCheckBox::notifyListeners()
{
    callListenersBackwards (listeners, [this] (Listener& l) { l.defaultResourceChanged (this); });
}

void DefaultResourceCheckBox::resized()
{
    if (layingOut)
        return;
    const juce::ScopedValueSetter<bool> guard (layingOut, true);
    const int height = juce::jmax (check.getHeight(), path.getHeight());
    setSize (getWidth(), height);
    check.setTopLeftPosition (0, (height - check.getHeight()) / 2);
    const int pathX = check.getWidth() + pathGap;
    path.setBounds (pathX, (height - path.getHeight()) / 2, juce::jmax (0, getWidth() - pathX),
                    path.getHeight());
}

void DefaultResourceCheckBox::lookAndFeelChanged() { resized(); }

void DefaultResourceCheckBox::childBoundsChanged (juce::Component*)
{
    // The check and the path take their sizes from the look and feel after this component has had it.
    resized();
}

void DefaultResourceCheckBox::checkBoxChanged (CheckBox* source)
{
    if (source != &check)
        return;
    updateEnabling();
    notifyListeners();
}

void DefaultResourceCheckBox::pathChanged (PathComponent* source)
{
    if (source == &path)
        notifyListeners();
}
