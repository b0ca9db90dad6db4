#pragma once

#include <juce_graphics/juce_graphics.h>

/** The plug-in's face as it stands on a screen: where it is, and what its name field shows. */
class FaceOnScreen
{
public:
    /** The face's size, with its status bar; a panel below the face makes the editor this much taller,
        starting where the status bar stood. */
    static constexpr int width = 633, height = 223, panelHeight = 256, panelTop = 207;

    /** The top left corner of the face in `screen`, whatever its controls show, or (-1, -1). */
    static juce::Point<int> findFace (const juce::Image& screen);

    /** Whether the face at `origin` is the golden face, a fresh instance's, pixel for pixel. */
    static bool isGoldenFace (const juce::Image& screen, juce::Point<int> origin);

    /** Where the skin puts the control of that name on the face; empty if it has none. */
    static juce::Rectangle<int> getControlBounds (const juce::String& name);

    /** Where the name field lies on the face. */
    static juce::Rectangle<int> getNameField() { return getControlBounds ("PresetNameDisplay"); }

    /** The name field as the skin draws it with `text` and no caret. */
    static juce::Image drawNameField (const juce::String& text);

    /** Whether the face at `origin` in `screen` shows `text` in its name field. */
    static bool showsName (const juce::Image& screen, juce::Point<int> origin, const juce::String& text);
};
