#include "windows/TabbedComponentEx.h"

#include "common/ListenerWalk.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
constexpr float pageCorner = 4.0f;
}

TabbedComponentEx::TabbedComponentEx()
    : juce::TabbedComponent (juce::TabbedButtonBar::TabsAtTop)
{
}

void TabbedComponentEx::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void TabbedComponentEx::removeListener (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

void TabbedComponentEx::lookAndFeelChanged()
{
    juce::TabbedComponent::lookAndFeelChanged();
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        setTabBarDepth (look->getTabDepth());
        setIndent (look->getTabIndent());
    }
    resized();
    repaint();
}

void TabbedComponentEx::resized()
{
    // The page below the tab bar, its outline on the half pixel so that it falls on whole pixels.
    const float depth = (float) getTabBarDepth(), right = (float) getWidth() - 0.5f;
    const float bottom = (float) getHeight() - 0.5f;
    juce::Path outline;
    outline.startNewSubPath (0.5f, depth - 0.5f);
    outline.lineTo (right, depth - 0.5f);
    outline.lineTo (right, bottom);
    outline.lineTo (0.5f, bottom);
    outline.closeSubPath();
    backgroundPath = outline.createPathWithRoundedCorners (pageCorner);
    juce::TabbedComponent::resized();
}

void TabbedComponentEx::paint (juce::Graphics& g)
{
    if (backgroundPath.isEmpty() || g.getClipBounds().isEmpty())
        return;
    g.setColour (findColour (DefaultLookAndFeel::tabPageColourId));
    g.fillPath (backgroundPath);
    g.setColour (findColour (DefaultLookAndFeel::tabOutlineColourId));
    g.strokePath (backgroundPath, juce::PathStrokeType (1.0f));
}

void TabbedComponentEx::currentTabChanged (int, const juce::String&)
{
    callListenersBackwards (listeners, [this] (Listener& l) { l.tabChanged (this); });
}
