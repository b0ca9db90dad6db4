#include "RenderCommand.h"

#include "DemoSignal.h"
#include "RenderError.h"
#include "RenderOptions.h"
#include "RenderOutput.h"
#include "RenderPlot.h"
#include "RenderProgress.h"
#include "RenderSummary.h"
#include "Renderer.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <atomic>

namespace
{
std::atomic<bool> stopRequested{ false };
static_assert (std::atomic<bool>::is_always_lock_free, "set from a signal handler");

struct Audio
{
    juce::AudioBuffer<float> buffer;
    double sampleRate = 0.0;
};

// Where an uncompressed file's first frame starts: JUCE's readers seek to a frame and read exactly its
// bytes, so reading the first one leaves the stream just past it. Before any metadata that precedes the
// samples, this tells how much of the file the samples can have.
juce::int64 firstFrameOffset (juce::AudioFormatReader& reader, juce::int64 bytesPerFrame)
{
    juce::AudioBuffer<float> frame ((int) reader.numChannels, 1);
    if (reader.lengthInSamples < 1 || reader.input == nullptr || !reader.read (&frame, 0, 1, 0, true, true))
        return 0;
    return juce::jlimit<juce::int64> (0, reader.input->getTotalLength(),
                                      reader.input->getPosition() - bytesPerFrame);
}

Audio readAudio (const juce::File& file)
{
    const auto name = "'" + file.getFullPathName() + "'";
    if (file.isDirectory())
        throw RenderError (RenderError::inputFile, "input " + name + " is a directory");
    if (!file.existsAsFile())
        throw RenderError (RenderError::inputFile, "cannot find input file " + name);

    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file));
    if (reader == nullptr)
    {
        juce::StringArray known;
        for (auto* format : formats)
            known.add (format->getFormatName());
        throw RenderError (RenderError::inputFile, "cannot read " + name
                                                       + ": not an audio file of a known format ("
                                                       + known.joinIntoString (", ") + ")");
    }

    if (reader->numChannels < 1 || reader->numChannels > 2)
        throw RenderError (RenderError::inputFile, "input " + name + " has "
                                                       + juce::String (reader->numChannels)
                                                       + " channels; only mono and stereo are supported");
    Renderer::checkSampleRate (reader->sampleRate);

    // A header may claim more audio than the file holds (a cut-off download, or a hostile file), and the
    // readers fill the missing part with silence. At most what the file can hold is rendered: for an
    // uncompressed file the frames its bytes make from the first frame on, and for a compressed one at
    // most 4096 frames per byte, the most a block of pure silence packs into one byte of any codec we read.
    const bool uncompressed = reader->getFormatName() == "WAV file" || reader->getFormatName() == "AIFF file";
    const auto bytesPerFrame =
        (juce::int64) reader->numChannels * juce::jmax (1, (int) reader->bitsPerSample / 8);
    const auto framesHeld = uncompressed
                                ? (file.getSize() - firstFrameOffset (*reader, bytesPerFrame)) / bytesPerFrame
                                : file.getSize() * 4096;
    if (reader->lengthInSamples > framesHeld)
        reader->lengthInSamples = framesHeld;

    if (reader->lengthInSamples > std::numeric_limits<int>::max())
        throw RenderError (RenderError::inputFile, "input " + name + " is too long to render in one piece");

    Audio audio;
    audio.sampleRate = reader->sampleRate;
    const int length = (int) reader->lengthInSamples;
    audio.buffer.setSize ((int) reader->numChannels, length);
    if (!reader->read (&audio.buffer, 0, length, 0, true, true))
        throw RenderError (RenderError::inputFile, "cannot read the samples of " + name);
    return audio;
}

void applySettings (Renderer& renderer, const RenderOptions& options)
{
    if (options.stateFile != juce::File())
        renderer.restoreStateFile (options.stateFile);
    if (options.midiMapFile != juce::File())
        renderer.loadMidiMapFile (options.midiMapFile);
    if (options.bankFile != juce::File())
        renderer.loadBankFile (options.bankFile);
    if (options.presetName.isNotEmpty())
        renderer.selectPreset (options.presetName);
    if (options.presetFile != juce::File())
        renderer.loadPresetFile (options.presetFile);
    for (const auto& [name, value] : options.parameters)
        renderer.setParameter (name, value);
}

int execute (const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
             bool errIsTerminal)
{
    const auto options = RenderOptions::parse (arguments);
    if (options.textToPrint.isNotEmpty())
    {
        out << options.textToPrint << std::flush;
        return 0;
    }

    Renderer renderer;
    applySettings (renderer, options);
    if (options.listPresets)
    {
        out << renderer.getPresetList() << std::flush;
        return 0;
    }

    // Everything that can be refused is refused before the work starts.
    Audio input;
    if (options.rendersDemo())
    {
        input.sampleRate = DemoSignal::defaultSampleRate;
        input.buffer = DemoSignal::create (input.sampleRate);
    }
    else
    {
        input = readAudio (options.input);
    }
    const auto midi = options.midiFile != juce::File()
                          ? MidiTimeline::fromFile (options.midiFile, input.sampleRate)
                          : MidiTimeline();

    std::vector<std::unique_ptr<RenderOutput>> outputs;
    for (const auto& file : options.getOutputFiles())
        outputs.push_back (std::make_unique<RenderOutput> (file));
    auto& audioOutput = *outputs.front();

    const auto preset = renderer.getPresetDescription();
    RenderProgress progress (err, errIsTerminal
                                      && input.buffer.getNumSamples()
                                             >= RenderProgress::minimumSeconds * input.sampleRate);
    const auto result =
        renderer.render (input.buffer, input.sampleRate, options.blockSize, midi, options.compensate,
                         [&progress] (double f)
                         {
                             progress.update (f);
                             if (stopRequested.load())
                                 throw RenderError (RenderError::interrupted, "interrupted");
                         });
    progress.finish();

    // MIDI program changes may have moved on to another preset.
    const auto presetAtEnd = renderer.getPresetDescription();
    const auto presets = presetAtEnd == preset ? preset : preset + ", at the end " + presetAtEnd;

    audioOutput.writeAudio (result.output, result.sampleRate, options.bitDepth);
    for (auto& o : outputs)
    {
        if (o->getTarget() == options.saveStateFile)
            o->writeData (renderer.getState());
        else if (o->getTarget() == options.plotFile)
            o->writePng (RenderPlot::draw (
                input.buffer, result.output, result.sampleRate,
                (options.rendersDemo() ? juce::String ("demo") : options.input.getFileName()) + " through "
                    + presets));
    }
    for (auto& o : outputs)
        o->commit();

    if (!options.quiet)
        out << RenderSummary (input.buffer, result, presets, options.blockSize).toText() << std::flush;
    return 0;
}
} // namespace

void RenderCommand::requestStop() noexcept { stopRequested.store (true); }

int RenderCommand::run (const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                        bool errIsTerminal)
{
    int code = 0;
    try
    {
        code = execute (arguments, out, err, errIsTerminal);
    }
    catch (const RenderError& e)
    {
        err << "vantrice-render: " << e.what() << std::endl;
        code = e.getCode();
    }
    catch (const std::exception& e)
    {
        err << "vantrice-render: internal error: " << e.what() << std::endl;
        code = 1;
    }

    // A stop request is used up by the run it reached.
    stopRequested.store (false);
    return code;
}
