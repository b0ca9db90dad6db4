#include "skin/GFXToggleButtonDragGroup.h"

#include "skin/GFXToggleButton.h"

void GFXToggleButtonDragGroup::addButton (const juce::String& name, GFXToggleButton* button)
{
    groups[name].buttons.addIfNotAlreadyThere (button);
}

void GFXToggleButtonDragGroup::removeButton (GFXToggleButton* button)
{
    for (auto& [name, group] : groups)
        group.buttons.removeAllInstancesOf (button);
}

void GFXToggleButtonDragGroup::setDragStart (const juce::String& name, int x, int y)
{
    auto& group = groups[name];
    group.startX = x;
    group.startY = y;
}

void GFXToggleButtonDragGroup::setDragValue (const juce::String& name, bool value)
{
    groups[name].value = value;
}

void GFXToggleButtonDragGroup::dragTo (const juce::String& name, int x, int)
{
    const auto found = groups.find (name);
    if (found == groups.end())
        return;
    auto& group = found->second;
    const int lo = juce::jmin (group.startX, x), hi = juce::jmax (group.startX, x);
    // A copy: a swept button's own notification may reach the group again.
    const auto buttons = group.buttons;
    const bool value = group.value;
    for (auto* button : buttons)
    {
        const int x0 = button->getScreenX(), x1 = x0 + button->getWidth() - 1;
        if ((x0 >= lo && x0 <= hi) || (x1 >= lo && x1 <= hi))
            button->setToggleState (value, juce::sendNotification);
    }
}

int GFXToggleButtonDragGroup::getNumButtons (const juce::String& name) const
{
    const auto found = groups.find (name);
    return found == groups.end() ? 0 : found->second.buttons.size();
}
