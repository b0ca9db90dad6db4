#pragma once

#include "FormatUnderTest.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The editor as a host shows it: its size, and on a screen the face the user sees, pixel for pixel the
    golden face of the unit tests. */
class EditorChecks
{
public:
    explicit EditorChecks (FormatUnderTest& format);
    void run();

private:
    /** Plays a tone whose level steps through the instance while its editor is on the screen. */
    void checkMetersMove (juce::AudioProcessor& instance, juce::Component& window);
    /** The browse button's panel as the host sees it: its editor grows, shows the browser, and shrinks. */
    void checkBrowserPanel (juce::AudioProcessorEditor& editor, juce::Component& window);
    /** Saves a screenshot where the run keeps them (VANTRICE_SCREENSHOT_DIR), for a person to look at. */
    void keep (const juce::Image& shot, const juce::String& what) const;

    FormatUnderTest& format;
    ValidationReport& report;
};
