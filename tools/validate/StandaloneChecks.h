#pragma once

#include "ValidationReport.h"

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_gui_basics/juce_gui_basics.h>

/** The Standalone app as a user meets it on a screen: it opens a window with the golden face in it, a
    click on Next steps one preset and holding it steps on, the name field takes typing, Ctrl and a click
    on the options button open the about window and a click on it closes it, and asked to quit
    it shuts down cleanly, keeping its state and settings. Input goes through xdotool, as a user's would;
    what the app kept is read back from its files. */
class StandaloneChecks
{
public:
    StandaloneChecks (const juce::File& app, const juce::File& outputFolder, const juce::File& scratchRoot,
                      ValidationReport& report);
    void run();

private:
    bool start();
    bool findEditor();
    void checkPresetSteps();
    void checkTyping();
    void checkAboutWindow();
    void checkPanels();
    /** The app's window's height, as X has it; -1 if it can't be read. */
    int windowHeight();
    bool clickAndWaitForHeight (juce::Point<int> button, int height);
    juce::Point<int> findCloseButton() const;
    void quit();
    void checkWhatWasKept();

    void clickAt (juce::Point<int> inEditor);
    /** The editor on the screen, the face's height or the given one. */
    juce::Image grabEditor (int height = 0) const;

    const juce::File app, outputFolder, installFolder;
    ValidationReport& report;
    int pid = -1;
    juce::Point<int> editorOrigin{ -1, -1 };
    int expectedPreset = 0;
    int holdEventsLow = 0, holdEventsHigh = 0;
    juce::String typedName, browsedName, windowId;
};
