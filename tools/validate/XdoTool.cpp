#include "XdoTool.h"

juce::String XdoTool::run (const juce::StringArray& args)
{
    juce::ChildProcess process;
    juce::StringArray command ("xdotool");
    command.addArray (args);
    if (!process.start (command, juce::ChildProcess::wantStdOut))
        return {};
    auto output = process.readAllProcessOutput();
    return process.getExitCode() == 0 ? output : juce::String();
}

void XdoTool::clickAt (juce::Point<int> onScreen)
{
    run ({ "mousemove", juce::String (onScreen.x), juce::String (onScreen.y), "click", "1" });
}
