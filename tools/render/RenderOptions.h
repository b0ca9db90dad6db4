#pragma once

#include "Renderer.h"

#include <string>
#include <utility>
#include <vector>

/** What the command line asks for, parsed and checked, with every path made absolute. */
struct RenderOptions
{
    static constexpr int maxBlockSize = 65536; // the largest block hosts are known to send

    juce::File input;  // none: render the demo signal
    juce::File output; // none only when listing presets or showing help

    juce::File stateFile, midiMapFile, bankFile, presetFile, midiFile;
    juce::String presetName;
    std::vector<std::pair<juce::String, juce::String>> parameters; // name and value text, in order given

    juce::File saveStateFile, plotFile;
    int blockSize = Renderer::defaultBlockSize;
    int bitDepth = 32; // 32 writes float samples
    bool compensate = false;
    bool listPresets = false;
    bool quiet = false;

    /** Set when the run ends with this text on stdout, as for --help and --version. */
    juce::String textToPrint;

    bool rendersDemo() const { return input == juce::File(); }

    /** Parses the arguments that follow the program's name. Throws RenderError (usage) with a one-line
        message for anything it can't accept; files are checked for existence later. */
    static RenderOptions parse (const std::vector<std::string>& arguments);

    /** The files that are read and the files that are written. */
    juce::Array<juce::File> getInputFiles() const;
    juce::Array<juce::File> getOutputFiles() const;
};
