#pragma once

#include "common/ScratchFolder.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The validator as an application of its own, as a host is one: JUCE then sets up X for threads and
    keeps X's errors from ending the process, which the plug-ins' own copies of JUCE count on. It runs
    what the command line asks as it starts, and quits with the result. */
class ValidatorApplication : public juce::JUCEApplication
{
public:
    ValidatorApplication() = default;

    const juce::String getApplicationName() override;
    const juce::String getApplicationVersion() override;
    bool moreThanOneInstanceAllowed() override { return true; }
    void initialise (const juce::String& commandLine) override;
    void shutdown() override {}
    void systemRequestedQuit() override {}
    void anotherInstanceStarted (const juce::String&) override {}

private:
    /** Keeps JUCE's hosting classes from printing their progress among the check lines. */
    class SilentLogger : public juce::Logger
    {
        void logMessage (const juce::String&) override {}
    };

    /** Returns the process's exit code. */
    int runCommand (const juce::StringArray& args);
    /** Screenshots and looking for the face in one, for scripts that drive a real host. */
    static int runScreenCommand (const juce::StringArray& args);
    static void printUsage();
    /** Makes a home of the run's own inside its scratch folder, which also holds the installed copies. */
    static bool useScratchHome (const ScratchFolder& root);

    SilentLogger logger;
};
