#include "RenderOptions.h"

#include "RenderError.h"

#include <CLI/CLI.hpp>

namespace
{
juce::File fileFromArgument (const std::string& path, const char* what)
{
    const auto text = juce::String (path).trim();
    if (text.isEmpty())
        throw RenderError (RenderError::usage, juce::String ("empty file name for ") + what);
    return juce::File::getCurrentWorkingDirectory().getChildFile (text);
}

/** The file a path finally names, following a symbolic link, so that a link to the input counts as it. */
juce::File resolved (const juce::File& file) { return file.isSymbolicLink() ? file.getLinkedTarget() : file; }

juce::String oneLine (const std::string& text)
{
    return juce::String (text).replaceCharacters ("\r\n", "  ").trim();
}
} // namespace

RenderOptions RenderOptions::parse (const std::vector<std::string>& arguments)
{
    RenderOptions options;

    CLI::App app ("Runs an audio file through the Vantrice processor offline, exactly as a host would, and "
                  "writes the result. Without IN it renders a built-in drum-and-chord demo loop.",
                  "vantrice-render");
    app.set_help_flag ("-h,--help", "Print this help and exit");
    app.footer (
        "Settings apply in this order: --state, --midi-map, --bank, --preset, --preset-file, --param.\n"
        "Exit codes: 0 done, 2 bad options, 3 input file missing, unreadable or unsupported, 4 unknown "
        "preset or parameter or bad value, 5 corrupt state, bank, preset, map or MIDI file, 6 cannot "
        "write an output, 130 interrupted.");

    std::vector<std::string> files;
    std::string state, midiMap, bank, preset, presetFile, midi, saveState, plot;
    std::vector<std::string> parameters;

    app.add_option ("files", files,
                    "[IN] OUT: the audio file to process (WAV, AIFF, FLAC, Ogg) and the WAV "
                    "file to write");
    app.add_option ("--state", state, "Host state chunk to restore before anything else")->type_name ("FILE");
    app.add_option ("--midi-map", midiMap, "MIDI controller map (.vtccmap) to load after the state")
        ->type_name ("FILE");
    app.add_option ("--bank", bank, "Preset bank (.vtprsb) to load")->type_name ("FILE");
    app.add_option ("--preset", preset, "Preset of the bank to select, by name (case-insensitive)")
        ->type_name ("NAME");
    app.add_option ("--preset-file", presetFile,
                    "Preset file (.vtprs) to read into the current slot and apply")
        ->type_name ("FILE");
    app.add_option ("--param", parameters,
                    "Set a parameter, repeatable: a normalised value 0..1 or text in the parameter's units, "
                    "e.g. \"Left Bits=8 bits\", \"FX=50/50% (Dry/Wet)\"")
        ->type_name ("NAME=VALUE")
        ->allow_extra_args (false);
    app.add_option ("--midi", midi,
                    "MIDI file whose controllers and program changes are played at their "
                    "exact samples")
        ->type_name ("FILE");
    app.add_option ("--block", options.blockSize, "Host block size, 1 to 65536 (default 512)")
        ->type_name ("N");
    app.add_option ("--bit-depth", options.bitDepth,
                    "Output sample format: 16, 24 or 32 (float, the default)")
        ->type_name ("BITS");
    app.add_flag ("--compensate", options.compensate,
                  "Remove the reported latency so that the output lines up with the input");
    app.add_option ("--save-state", saveState, "Write the host state chunk after rendering")
        ->type_name ("FILE");
    app.add_option ("--plot", plot, "Write a PNG of the waveforms and spectra of input and output")
        ->type_name ("FILE");
    app.add_flag ("--list-presets", options.listPresets, "Print the bank's presets by group and exit");
    app.add_flag ("-q,--quiet", options.quiet, "Print no summary");

    std::vector<const char*> argv{ "vantrice-render" };
    for (const auto& a : arguments)
        argv.push_back (a.c_str());

    try
    {
        app.parse ((int) argv.size(), argv.data());
    }
    catch (const CLI::CallForHelp&)
    {
        options.textToPrint = app.help();
        return options;
    }
    catch (const CLI::ParseError& e)
    {
        throw RenderError (RenderError::usage, oneLine (e.what()));
    }

    if (options.blockSize < 1 || options.blockSize > maxBlockSize)
        throw RenderError (RenderError::usage, "--block must be 1 to " + juce::String (maxBlockSize)
                                                   + ", not " + juce::String (options.blockSize));
    if (options.bitDepth != 16 && options.bitDepth != 24 && options.bitDepth != 32)
        throw RenderError (RenderError::usage,
                           "--bit-depth must be 16, 24 or 32, not " + juce::String (options.bitDepth));

    auto fileOption = [&app] (const char* name, const std::string& path, juce::File& target)
    {
        if (app.count (name) > 0)
            target = fileFromArgument (path, name);
    };
    fileOption ("--state", state, options.stateFile);
    fileOption ("--midi-map", midiMap, options.midiMapFile);
    fileOption ("--bank", bank, options.bankFile);
    fileOption ("--preset-file", presetFile, options.presetFile);
    fileOption ("--midi", midi, options.midiFile);
    fileOption ("--save-state", saveState, options.saveStateFile);
    fileOption ("--plot", plot, options.plotFile);

    options.presetName = juce::String (preset).trim();
    if (app.count ("--preset") > 0 && options.presetName.isEmpty())
        throw RenderError (RenderError::usage, "--preset needs a preset name");

    for (const auto& p : parameters)
    {
        const juce::String text (p);
        const auto name = text.upToFirstOccurrenceOf ("=", false, false).trim();
        const auto value = text.fromFirstOccurrenceOf ("=", false, false).trim();
        if (!text.containsChar ('=') || name.isEmpty() || value.isEmpty())
            throw RenderError (RenderError::usage, "--param wants NAME=VALUE, not '" + text + "'");
        options.parameters.emplace_back (name, value);
    }

    if (options.listPresets)
        return options;

    if (files.empty())
        throw RenderError (RenderError::usage,
                           "no output file given (usage: vantrice-render [options] [IN] OUT)");
    if (files.size() > 2)
        throw RenderError (RenderError::usage, "too many files: give at most IN and OUT");

    options.output = fileFromArgument (files.back(), "OUT");
    if (files.size() == 2)
        options.input = fileFromArgument (files.front(), "IN");

    if (!options.output.hasFileExtension ("wav"))
        throw RenderError (RenderError::usage,
                           "the output is written as WAV: give OUT the extension .wav, not '"
                               + options.output.getFileName() + "'");

    if (options.plotFile != juce::File() && !options.plotFile.hasFileExtension ("png"))
        throw RenderError (RenderError::usage, "the plot is a PNG image: give it the extension .png, not '"
                                                   + options.plotFile.getFileName() + "'");

    // Never write over a file that is read, and never write one file twice.
    const auto inputs = options.getInputFiles();
    const auto outputs = options.getOutputFiles();
    for (int i = 0; i < outputs.size(); ++i)
    {
        for (const auto& in : inputs)
            if (outputs[i] == in || resolved (outputs[i]) == resolved (in))
                throw RenderError (RenderError::usage,
                                   "refusing to overwrite the input file '" + in.getFullPathName() + "'");
        for (int j = 0; j < i; ++j)
            if (outputs[i] == outputs[j])
                throw RenderError (RenderError::usage, "'" + outputs[i].getFullPathName()
                                                           + "' is given as two different outputs");
    }

    return options;
}

juce::Array<juce::File> RenderOptions::getInputFiles() const
{
    juce::Array<juce::File> files;
    for (const auto& f : { input, stateFile, midiMapFile, bankFile, presetFile, midiFile })
        if (f != juce::File())
            files.add (f);
    return files;
}

juce::Array<juce::File> RenderOptions::getOutputFiles() const
{
    juce::Array<juce::File> files;
    for (const auto& f : { output, saveStateFile, plotFile })
        if (f != juce::File())
            files.add (f);
    return files;
}
