#include "skin/TextFieldLift.h"

#include <cstdlib>
#include <optional>

namespace
{
std::optional<bool> overridden;
}

bool TextFieldLift::isEnabled()
{
    if (overridden.has_value())
        return *overridden;
    const char* setting = std::getenv ("VANTRICE_LIFT_TEXT_FIELDS");
    return setting != nullptr && juce::String (setting).trim() == "1";
}

void TextFieldLift::setEnabled (bool shouldLift) { overridden = shouldLift; }

bool TextFieldLift::lift (juce::Component& field)
{
    if (!isEnabled() || field.getParentComponent() == nullptr)
        return false;
    // Drawn at another size than its own (a host's zoom), the field's window couldn't cover it.
    const auto onScreen = field.getScreenBounds();
    if (onScreen.getWidth() != field.getWidth() || onScreen.getHeight() != field.getHeight())
        return false;

    field.getParentComponent()->removeChildComponent (&field);
    field.setBounds (onScreen);
    field.addToDesktop (juce::ComponentPeer::windowIsTemporary);
    field.setVisible (true);
    field.toFront (true);
    field.grabKeyboardFocus();
    // On X11 a new window takes the focus only once it is mapped: ask again when the queue has run.
    juce::Component::SafePointer<juce::Component> safe (&field);
    juce::MessageManager::callAsync (
        [safe]
        {
            if (safe != nullptr && safe->isOnDesktop() && !safe->hasKeyboardFocus (false))
                safe->grabKeyboardFocus();
        });
    return true;
}

void TextFieldLift::putBack (juce::Component& field, juce::Component& parent, juce::Rectangle<int> bounds)
{
    if (field.isOnDesktop())
        field.removeFromDesktop();
    parent.addAndMakeVisible (field);
    field.setBounds (bounds);
}
