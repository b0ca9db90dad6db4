#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Lays its children out in a row (or a column) in their z-order, with a gap between them, and takes its
    size from them: the sum of their lengths along the row, the largest of their depths across it. */
class ComponentRow final : public juce::Component
{
public:
    enum Alignment
    {
        start = 0,
        centre = 1,
        end = 2
    };

    ComponentRow() = default;

    void setVertical (bool shouldBeVertical);
    void setAlignment (int newAlignment);
    void setGap (int newGap);

    bool isVertical() const noexcept { return vertical; }

    void childrenChanged() override { layout(); }
    void childBoundsChanged (juce::Component*) override { layout(); }

private:
    void layout();

    bool vertical = false;
    int alignment = start;
    int gap = 0;
    bool layingOut = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ComponentRow)
};
