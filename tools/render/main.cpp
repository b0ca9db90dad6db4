#include "RenderCommand.h"

#include <juce_events/juce_events.h>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <unistd.h>

namespace
{
/** The first Ctrl-C stops the render cleanly, removing its temporary files; a second one ends at once. */
void stopOnSignal (int signalNumber)
{
    std::signal (signalNumber, SIG_DFL);
    RenderCommand::requestStop();
}
} // namespace

int main (int argc, char** argv)
{
    std::signal (SIGINT, stopOnSignal);
    std::signal (SIGTERM, stopOnSignal);

    const std::vector<std::string> arguments (argv + 1, argv + argc);
    const int code = RenderCommand::run (arguments, std::cout, std::cerr, isatty (fileno (stderr)) != 0);

    // No message loop runs here (it would take over Ctrl-C), so JUCE's singletons, such as the font
    // cache of the plot, are released by hand.
    juce::DeletedAtShutdown::deleteAll();
    return code;
}
