#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** While the user types into a text field, a host may keep the keyboard for its own window, so a field
    that is a plain child of the plug-in's window never sees the keys. A lifted field leaves its parent
    for a borderless temporary window of its own at the same place on the screen, takes the keyboard
    there, and goes back when the edit ends. Where lifting is off, or the field is drawn scaled (a lifted
    window couldn't cover it exactly), the field stays a child and takes the focus there.

    One switch decides for every field: the environment variable VANTRICE_LIFT_TEXT_FIELDS, "1" to lift,
    "0" to stay a child; unset, fields stay children. */
class TextFieldLift final
{
public:
    static bool isEnabled();
    /** Overrides the environment, for tests. */
    static void setEnabled (bool shouldLift);

    /** Moves `field` to a window of its own at its place on the screen, if lifting is on and the field is
        drawn at its own size; returns whether it did. The field keeps, or takes again, the keyboard. */
    static bool lift (juce::Component& field);

    /** Puts a lifted field back into `parent` at `bounds`. */
    static void putBack (juce::Component& field, juce::Component& parent, juce::Rectangle<int> bounds);
};
