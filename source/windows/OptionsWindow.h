#pragma once

#include "windows/TabbedComponentEx.h"
#include "windows/WindowComponent.h"

/** What a user settles once for the plug-in, a tabbed page each: presets, MIDI control and, in effects
    that have it, quality. Every page acts at the click. Docked, the window is a flat panel below the
    face, without title bar or border, with a shadow along its top. The window doesn't own its pages. */
class OptionsWindow : public WindowComponent
{
public:
    OptionsWindow();

    /** A tab with `component` as its page, at `index` (-1 at the end). A new first page shows at once. */
    void addPage (const juce::String& name, juce::Component* component, int index);
    /** Square corners, no title bar, no border and a shadow along the top; or the window's own look. */
    void setDocked (bool shouldBeDocked);
    bool isDocked() const noexcept { return docked; }
    TabbedComponentEx& getTabs() noexcept { return *tabs; }

    bool isDimmingBackground() override { return true; }
    void resized() override;

private:
    std::unique_ptr<TabbedComponentEx> tabs;
    bool docked = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (OptionsWindow)
};
