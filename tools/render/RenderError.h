#pragma once

#include <juce_core/juce_core.h>

#include <stdexcept>

/** A failure of the renderer that ends the run: what the user is told, and the process's exit code. */
class RenderError : public std::runtime_error
{
public:
    enum Code
    {
        usage = 2,        // bad options or arguments
        inputFile = 3,    // an input file is missing, unreadable or of an unsupported kind
        badSetting = 4,   // unknown preset or parameter, or a value out of range or unparsable
        corruptData = 5,  // a state, bank, preset, MIDI map or MIDI file that doesn't parse as one
        outputFile = 6,   // an output can't be written
        interrupted = 130 // stopped by a signal, as shells report Ctrl-C
    };

    RenderError (Code code, const juce::String& message);

    Code getCode() const noexcept { return code; }
    juce::String getMessage() const { return juce::String (what()); }

private:
    Code code;
};
