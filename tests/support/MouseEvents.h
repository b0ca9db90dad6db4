#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Mouse events made in code, as JUCE would deliver them to a component, for tests without a pointer. */
struct MouseEvents
{
    /** An event at `position` on `component`, the button having gone down at `downAt`. */
    static juce::MouseEvent at (juce::Component& component, juce::Point<float> position,
                                juce::Point<float> downAt, juce::ModifierKeys modifiers,
                                juce::Time time = juce::Time::getCurrentTime())
    {
        return juce::MouseEvent (juce::Desktop::getInstance().getMainMouseSource(), position, modifiers,
                                 juce::MouseInputSource::defaultPressure, 0.0f, 0.0f, 0.0f, 0.0f, &component,
                                 &component, time, downAt, time, 1, position != downAt);
    }

    /** A left-button drag on `component` from `from` to `to` in `steps` moves, with `extra` keys held. */
    static void drag (juce::Component& component, juce::Point<float> from, juce::Point<float> to,
                      int steps = 10, juce::ModifierKeys extra = {})
    {
        const auto down = juce::ModifierKeys (juce::ModifierKeys::leftButtonModifier | extra.getRawFlags());
        component.mouseDown (at (component, from, from, down));
        for (int i = 1; i <= steps; ++i)
            component.mouseDrag (
                at (component, from + (to - from) * ((float) i / (float) steps), from, down));
        component.mouseUp (at (component, to, from, extra));
    }

    /** A wheel step of `units` over `component`; each call gets its own time, as JUCE ignores repeats. */
    static void wheel (juce::Component& component, float units)
    {
        static juce::int64 tick = 0;
        juce::MouseWheelDetails details;
        details.deltaX = 0.0f;
        details.deltaY = units;
        details.isReversed = false;
        details.isSmooth = false;
        details.isInertial = false;
        const auto centre = component.getLocalBounds().getCentre().toFloat();
        component.mouseWheelMove (at (component, centre, centre, {}, juce::Time (++tick)), details);
    }
};
