#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Counts the repaints a component asks for, without a screen: JUCE hands every repaint of a visible
    component to its cached image first. The component owns the counter and keeps painting as usual. */
class RepaintCounter final : public juce::CachedComponentImage
{
public:
    /** Attaches a counter, starting from 0, to `component`, which owns it from then on. */
    static RepaintCounter& attach (juce::Component& component)
    {
        auto* counter = new RepaintCounter (component);
        component.setCachedComponentImage (counter);
        counter->count = 0;
        return *counter;
    }

    void paint (juce::Graphics& g) override { component.paintEntireComponent (g, true); }
    bool invalidateAll() override
    {
        ++count;
        return true;
    }
    bool invalidate (const juce::Rectangle<int>&) override
    {
        ++count;
        return true;
    }
    void releaseResources() override {}

    int count = 0;

private:
    explicit RepaintCounter (juce::Component& componentToWatch)
        : component (componentToWatch)
    {
    }

    juce::Component& component;
};
