#pragma once

#include <juce_core/juce_core.h>

#include <map>

class GFXToggleButton;

/** Toggles that share a name can be swept with one drag: the value the pressed toggle took is copied to
    every toggle of its group that the drag passes over. Each editor keeps its own groups, so plug-in
    instances never reach each other's buttons, and a toggle leaves its group when it goes. */
class GFXToggleButtonDragGroup final
{
public:
    GFXToggleButtonDragGroup() = default;

    void addButton (const juce::String& name, GFXToggleButton* button);
    void removeButton (GFXToggleButton* button);

    /** The screen position of the mouse down that starts a drag. */
    void setDragStart (const juce::String& name, int x, int y);
    /** The value a sweep copies: what the last click stored. */
    void setDragValue (const juce::String& name, bool value);
    /** Sets the value on every button of the group whose left or right screen edge lies between the drag's
        start and `x`; each one so set writes its own parameter. Only the horizontal position counts. */
    void dragTo (const juce::String& name, int x, int y);

    int getNumButtons (const juce::String& name) const;

private:
    struct Group
    {
        juce::Array<GFXToggleButton*> buttons;
        int startX = 0, startY = 0;
        bool value = false;
    };
    std::map<juce::String, Group> groups;

    JUCE_DECLARE_NON_COPYABLE (GFXToggleButtonDragGroup)
};
