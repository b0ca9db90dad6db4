#include "windows/OptionsWindow.h"

namespace
{
const juce::Colour tabColour (0xffc5c5c5);
enum CornerStyle
{
    squareCorners = 0,
    roundedCorners = 1
};
} // namespace

OptionsWindow::OptionsWindow()
    : tabs (std::make_unique<TabbedComponentEx>())
{
    addAndMakeVisible (*tabs);
}

void OptionsWindow::addPage (const juce::String& name, juce::Component* component, int index)
{
    tabs->addTab (name, tabColour, component, false, index);
    if (index == 0)
    {
        // The bar keeps the page that was in front; a new first page is brought there at once.
        tabs->setCurrentTabIndex (-1);
        tabs->setCurrentTabIndex (0);
    }
}

void OptionsWindow::setDocked (bool shouldBeDocked)
{
    if (shouldBeDocked == docked)
        return;
    docked = shouldBeDocked;
    setCornerStyle (docked ? squareCorners : roundedCorners);
    setTitleBarVisible (!docked);
    setBorderVisible (!docked);
    setShadowSide (docked ? topShadow : noShadow);
    resized();
}

void OptionsWindow::resized()
{
    WindowComponent::resized();
    tabs->setBounds (getContentArea());
}
