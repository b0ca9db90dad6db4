#pragma once

#include <ostream>
#include <string>
#include <vector>

/** The whole of vantrice-render: parses the arguments, renders and writes, and reports. Failures end
    as one line "vantrice-render: ..." on err and a non-zero code (see RenderError::Code), with no file
    written. */
class RenderCommand
{
public:
    /** Runs with the arguments that follow the program's name; returns the exit code. The progress bar
        is drawn on err when it is a terminal. */
    static int run (const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                    bool errIsTerminal = false);

    /** Asks the render that is running, or the next one, to stop after its current block and clean up;
        safe in a signal handler. */
    static void requestStop() noexcept;
};
