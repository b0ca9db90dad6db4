#include "windows/PseudoModalComponent.h"

namespace
{
constexpr float dimmingAlpha = 0.33f;
}

PseudoModalComponent::CoveringWindow::CoveringWindow (PseudoModalComponent& ownerToUse)
    : owner (ownerToUse)
{
    setVisible (false);
}

void PseudoModalComponent::CoveringWindow::parentHierarchyChanged()
{
    if (auto* parent = getParentComponent())
        setBounds (parent->getLocalBounds());
}

void PseudoModalComponent::CoveringWindow::parentSizeChanged()
{
    if (auto* parent = getParentComponent())
        setBounds (parent->getLocalBounds());
}

void PseudoModalComponent::CoveringWindow::resized() { owner.updatePosition(); }

void PseudoModalComponent::CoveringWindow::paint (juce::Graphics& g)
{
    if (owner.isDimmingBackground())
    {
        g.setColour (juce::Colours::black.withAlpha (dimmingAlpha));
        g.fillRect (getLocalBounds());
    }
}

PseudoModalComponent::PseudoModalComponent()
    : coveringWindow (*this)
{
}

PseudoModalComponent::~PseudoModalComponent()
{
    // The cover may hang on the editor; the window on the cover goes with it.
    if (auto* parent = coveringWindow.getParentComponent())
        parent->removeChildComponent (&coveringWindow);
    coveringWindow.removeChildComponent (this);
}

void PseudoModalComponent::attachToDesktop (juce::Component* start)
{
    juce::Component* desktop = start;
    while (desktop != nullptr && dynamic_cast<Desktop*> (desktop) == nullptr)
        desktop = desktop->getParentComponent();
    if (desktop == nullptr)
        return;
    setVisible (true);
    coveringWindow.addAndMakeVisible (this);
    desktop->addChildComponent (coveringWindow);
    coveringWindow.setVisible (false);
    coveringWindow.toBack();
}

bool PseudoModalComponent::isOnAttachedCover() const
{
    return getParentComponent() == &coveringWindow && coveringWindow.getParentComponent() != nullptr;
}

bool PseudoModalComponent::isShown() const
{
    return isOnAttachedCover() ? coveringWindow.isVisible() : isVisible();
}

void PseudoModalComponent::show (int mode, juce::Point<int> position, juce::Component* relativeTo)
{
    if (!isOnAttachedCover())
        attachToDesktop (this);
    // The point is where the window's corner goes on the cover.
    if (relativeTo != nullptr && isOnAttachedCover())
        position = coveringWindow.getLocalPoint (relativeTo, position);
    if (!isOnAttachedCover())
    {
        setVisible (true);
        return;
    }
    // A second show of a showing window changes nothing, not even its place.
    if (coveringWindow.isVisible())
        return;
    positionMode = mode;
    positionX = position.x;
    positionY = position.y;
    coveringWindow.setVisible (true);
    coveringWindow.toFront (true);
    shownStateChanged();
    updatePosition();
}

void PseudoModalComponent::showCentred() { show (centred, {}, nullptr); }

void PseudoModalComponent::showAt (int mode, juce::Point<int> position, juce::Component* relativeTo)
{
    show (mode, position, relativeTo);
}

void PseudoModalComponent::hide()
{
    if (!isOnAttachedCover())
    {
        setVisible (false);
        return;
    }
    if (!coveringWindow.isVisible())
        return;
    coveringWindow.setVisible (false);
    coveringWindow.toBack();
    shownStateChanged();
}

void PseudoModalComponent::updatePosition()
{
    if (positionMode == centred)
        setCentreRelative (0.5f, 0.5f);
    else if (positionMode == atPoint)
        setBounds (positionX, positionY, getWidth(), getHeight());
}

void PseudoModalComponent::parentHierarchyChanged()
{
    // An owner that takes the window back as a plain child detaches it; the next show attaches it anew.
    if (getParentComponent() != nullptr && getParentComponent() != &coveringWindow
        && coveringWindow.getParentComponent() != nullptr)
        coveringWindow.getParentComponent()->removeChildComponent (&coveringWindow);
}
