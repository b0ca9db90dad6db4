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

    // The processor posts its change notices to a message manager, which must exist; no loop runs them
    // here, and since this is no JUCE application, JUCE leaves Ctrl-C to the handler above.
    const juce::ScopedJuceInitialiser_GUI juce;

    const std::vector<std::string> arguments (argv + 1, argv + argc);
    return RenderCommand::run (arguments, std::cout, std::cerr, isatty (fileno (stderr)) != 0);
}
