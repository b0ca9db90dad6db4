#include "RenderTestFolder.h"
#include "Renderer.h"

#include "support/PluginHarness.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{
juce::AudioBuffer<float> sine (int numChannels, int numSamples, double hz, double amplitude, double rate)
{
    juce::AudioBuffer<float> buffer (numChannels, numSamples);
    for (int c = 0; c < numChannels; ++c)
        for (int i = 0; i < numSamples; ++i)
            buffer.setSample (
                c, i, (float) (amplitude * std::sin (juce::MathConstants<double>::twoPi * hz * i / rate)));
    return buffer;
}

/** The names, sizes and contents of every file in the folder. */
juce::String snapshot (const RenderTestFolder& folder)
{
    juce::String text;
    for (const auto& name : folder.listFiles())
    {
        const auto f = folder.file (name);
        text << name << " " << f.getSize() << " "
             << (f.existsAsFile() ? juce::String (f.loadFileAsString().hashCode64()) : juce::String ("dir"))
             << "\n";
    }
    return text;
}

/** The inputs every error case may refer to. */
void writeFixtures (const RenderTestFolder& folder)
{
    folder.writeWav ("in.wav", sine (2, 2205, 441.0, 0.5, 44100.0), 44100.0);
    folder.writeWav ("six.wav", sine (6, 100, 441.0, 0.5, 44100.0), 44100.0);
    folder.writeWav ("low.wav", sine (1, 100, 441.0, 0.5, 11025.0), 11025.0);
    folder.writeText ("text.wav", "not audio at all");
    folder.writeText ("text.bin", "not a chunk at all");
    folder.writeText ("notxml.vtprsb", "<<< not xml");
    folder.writeText ("other.xml", "<Something application=\"Vantrice\"/>");
    folder.writeText ("corrupt.mid", "MThd but then nothing that makes sense");
    folder.file ("folder.wav").createDirectory();
    folder.file ("in.wav").createSymbolicLink (folder.file ("link.wav"), true);

    juce::MemoryBlock otherState;
    juce::AudioProcessor::copyXmlToBinary (juce::XmlElement ("PluginState"), otherState);
    folder.writeData ("other.state", otherState);
}

struct ErrorCase
{
    const char* name;
    std::vector<std::string> arguments;
    int code;
    const char* message; // a part of the one line on stderr
};

std::ostream& operator<< (std::ostream& s, const ErrorCase& c) { return s << c.name; }

class RenderCommandErrors : public ::testing::TestWithParam<ErrorCase>
{
};

TEST_P (RenderCommandErrors, OneLineAnExitCodeAndNoFileWritten)
{
    const auto& c = GetParam();
    RenderTestFolder folder;
    writeFixtures (folder);
    const auto before = snapshot (folder);

    const auto run = folder.run (c.arguments);

    EXPECT_EQ (run.code, c.code);
    EXPECT_TRUE (run.out.empty()) << run.out;
    const juce::String err (run.err);
    EXPECT_TRUE (err.startsWith ("vantrice-render: ")) << run.err;
    EXPECT_EQ (err.indexOfChar ('\n'), err.length() - 1) << "more than one line: " << run.err;
    EXPECT_TRUE (err.contains (c.message)) << run.err;
    EXPECT_EQ (snapshot (folder), before);
}

INSTANTIATE_TEST_SUITE_P (
    Table, RenderCommandErrors,
    ::testing::Values (
        ErrorCase{ "NoFiles", {}, 2, "no output file given" },
        ErrorCase{ "BlockZero", { "--block", "0", "out.wav" }, 2, "--block must be 1 to 65536, not 0" },
        ErrorCase{ "BlockTooLarge", { "--block", "65537", "out.wav" }, 2, "--block must be 1 to 65536" },
        ErrorCase{ "BitDepth", { "--bit-depth", "12", "out.wav" }, 2, "--bit-depth must be 16, 24 or 32" },
        ErrorCase{ "ThreeFiles", { "in.wav", "b.wav", "out.wav" }, 2, "too many files" },
        ErrorCase{ "OutputNotWav", { "in.wav", "out.mp3" }, 2, "extension .wav" },
        ErrorCase{ "PlotNotPng", { "--plot", "plot.jpg", "out.wav" }, 2, "extension .png" },
        ErrorCase{ "ParamWithoutValue", { "--param", "FX", "out.wav" }, 2, "--param wants NAME=VALUE" },
        ErrorCase{ "OutputIsInput", { "in.wav", "in.wav" }, 2, "refusing to overwrite the input file" },
        ErrorCase{ "OutputIsInputByAnotherPath",
                   { "in.wav", "./sub/../in.wav" },
                   2,
                   "refusing to overwrite" },
        ErrorCase{ "OutputIsALinkToTheInput", { "in.wav", "link.wav" }, 2, "refusing to overwrite" },
        ErrorCase{ "StateOverInput",
                   { "in.wav", "out.wav", "--save-state", "in.wav" },
                   2,
                   "refusing to overwrite" },
        ErrorCase{ "SameOutputTwice",
                   { "in.wav", "out.wav", "--save-state", "out.wav" },
                   2,
                   "two different outputs" },
        ErrorCase{ "MissingInput", { "missing.wav", "out.wav" }, 3, "cannot find input file" },
        ErrorCase{ "InputIsAFolder", { "folder.wav", "out.wav" }, 3, "is a directory" },
        ErrorCase{ "InputNotAudio", { "text.wav", "out.wav" }, 3, "not an audio file of a known format" },
        ErrorCase{ "SixChannels", { "six.wav", "out.wav" }, 3, "has 6 channels; only mono and stereo" },
        ErrorCase{ "UnsupportedRate", { "low.wav", "out.wav" }, 3, "11025 Hz is not supported" },
        ErrorCase{ "MissingState", { "--state", "none.state", "out.wav" }, 3, "cannot find state file" },
        ErrorCase{ "UnknownPreset",
                   { "--preset", "MPC60", "out.wav" },
                   4,
                   "unknown preset 'MPC60'; did you mean 'MPC 60'?" },
        ErrorCase{ "UnknownParameter",
                   { "--param", "Left Bit=8 bits", "out.wav" },
                   4,
                   "unknown parameter 'Left Bit'; did you mean 'Left Bits'?" },
        ErrorCase{ "ValueOutOfRange",
                   { "--param", "FX=1.5", "out.wav" },
                   4,
                   "value 1.5 for 'FX' is out of range" },
        ErrorCase{ "ValueUnparsable",
                   { "--param", "Left Bits=lots", "out.wav" },
                   4,
                   "'Left Bits' has no value 'lots'" },
        ErrorCase{ "ValueNotExact", { "--param", "Left Bits=8 bit", "out.wav" }, 4, "such as '8 bits'" },
        ErrorCase{ "RightWhileLinked",
                   { "--param", "Right Bits=8 bits", "out.wav" },
                   4,
                   "Link Channels=Off" },
        ErrorCase{ "CorruptState", { "--state", "text.bin", "out.wav" }, 5, "is not a host state chunk" },
        ErrorCase{ "StateOfAnotherPlugin",
                   { "--state", "other.state", "out.wav" },
                   5,
                   "not a Vantrice state" },
        ErrorCase{ "CorruptMidi",
                   { "in.wav", "--midi", "corrupt.mid", "out.wav" },
                   5,
                   "not a valid standard MIDI file" },
        ErrorCase{ "BankNotXml", { "--bank", "notxml.vtprsb", "out.wav" }, 5, "is not a valid XML document" },
        ErrorCase{ "NotABank", { "--bank", "other.xml", "out.wav" }, 5, "is not a Vantrice bank" },
        ErrorCase{ "NotAPreset", { "--preset-file", "other.xml", "out.wav" }, 5, "is not a Vantrice preset" },
        ErrorCase{ "NotAMidiMap", { "--midi-map", "other.xml", "out.wav" }, 5, "is not a Vantrice MIDI map" },
        ErrorCase{ "OutputFolderMissing", { "in.wav", "nowhere/out.wav" }, 6, "doesn't exist" },
        ErrorCase{ "OutputIsAFolder", { "in.wav", "folder.wav" }, 6, "it is a directory" },
        ErrorCase{ "StateFolderMissing",
                   { "out.wav", "--save-state", "nowhere/s.state" },
                   6,
                   "doesn't exist" }),
    [] (const ::testing::TestParamInfo<ErrorCase>& param) { return std::string (param.param.name); });

TEST (RenderCommand, RendersOnlyTheAudioAFileHolds)
{
    // A header that claims two gigabytes of samples in a file of a few hundred bytes, with forty kilobytes
    // of metadata before the samples (as cover art would be): the missing part is neither made up as
    // silence nor allocated, and the metadata doesn't count as audio.
    RenderTestFolder folder;
    const int held = 64;
    folder.writeWav ("in.wav", sine (2, held, 441.0, 0.5, 44100.0), 44100.0);
    juce::MemoryBlock bytes;
    folder.file ("in.wav").loadFileAsData (bytes);
    const auto* data = static_cast<const char*> (bytes.getData());
    int dataChunk = -1;
    for (int i = 12; i + 8 <= (int) bytes.getSize(); ++i)
        if (std::memcmp (data + i, "data", 4) == 0)
            dataChunk = i;
    ASSERT_GT (dataChunk, 0);

    const int junkSize = 40000;
    juce::MemoryOutputStream liar;
    liar.write (data, (size_t) dataChunk);
    liar.write ("JUNK", 4);
    liar.writeInt (junkSize);
    liar.writeRepeatedByte (0, (size_t) junkSize);
    liar.write (data + dataChunk, bytes.getSize() - (size_t) dataChunk);
    auto liarBytes = liar.getMemoryBlock();
    auto* liarData = static_cast<char*> (liarBytes.getData());
    const juce::uint32 claimed = 0x7FFFFFF0;
    // The RIFF size and the data chunk's size, little-endian.
    for (int at : { 4, dataChunk + 8 + junkSize + 4 })
        for (int b = 0; b < 4; ++b)
            liarData[at + b] = (char) ((claimed >> (8 * b)) & 0xFF);
    folder.writeData ("liar.wav", liarBytes);

    const auto run = folder.run ({ "liar.wav", "out.wav", "--quiet" });
    ASSERT_EQ (run.code, 0) << run.err;
    EXPECT_EQ (folder.readAudio ("out.wav").getNumSamples(), held);
}

TEST (RenderCommand, WritesTheSampleFormatAsked)
{
    RenderTestFolder folder;
    folder.writeWav ("in.wav", sine (1, 500, 441.0, 0.5, 48000.0), 48000.0);
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    for (const int bits : { 16, 24, 32 })
    {
        const auto run = folder.run ({ "in.wav", "out.wav", "-q", "--bit-depth", std::to_string (bits) });
        ASSERT_EQ (run.code, 0) << run.err;
        std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (folder.file ("out.wav")));
        ASSERT_NE (reader, nullptr);
        EXPECT_EQ ((int) reader->bitsPerSample, bits);
        EXPECT_EQ (reader->usesFloatingPointData, bits == 32);
        EXPECT_EQ (reader->sampleRate, 48000.0);
        EXPECT_EQ (reader->lengthInSamples, 500);
    }
}

// The summary's figures of a known signal: a full-scale square wave, dry at unity gain and lined up.
TEST (RenderCommand, SummaryGivesTheFiguresOfAKnownSignal)
{
    RenderTestFolder folder;

    // One second of 441 Hz: a whole number of periods, with the sine's crest on a sample.
    juce::AudioBuffer<float> input (1, 44100);
    for (int i = 0; i < input.getNumSamples(); ++i)
        input.setSample (0, i, i % 100 < 50 ? 1.0f : -1.0f);
    folder.writeWav ("in.wav", input, 44100.0);

    // Dry at unity gain and lined up, the output is the input.
    const auto run = folder.run (
        { "in.wav", "out.wav", "--param", "FX=0", "--param", "Output Volume=0.5", "--compensate" });
    ASSERT_EQ (run.code, 0) << run.err;

    const juce::String out (run.out);
    EXPECT_TRUE (out.contains ("duration     1.000 s, 44100 samples, mono")) << out;
    EXPECT_TRUE (out.contains ("sample rate  44100 Hz, blocks of 512")) << out;
    EXPECT_TRUE (out.contains ("preset       MPC 60 (edited)")) << out;
    EXPECT_TRUE (out.contains ("latency      21 samples (0.48 ms), compensated")) << out;
    EXPECT_TRUE (out.contains ("input        peak 0.00 dBFS, RMS 0.00 dBFS")) << out;
    EXPECT_TRUE (out.contains ("output       peak 0.00 dBFS, RMS 0.00 dBFS")) << out;
    EXPECT_TRUE (out.contains ("x real time")) << out;
}

TEST (RenderCommand, SettingsApplyInTheirOrder)
{
    RenderTestFolder folder;
    folder.writeWav ("in.wav", sine (2, 3000, 441.0, 0.5, 44100.0), 44100.0);

    // A bank whose first preset is renamed, and a preset file; both made by a processor of the test's own.
    {
        PluginHarness maker;
        maker->setPresetName (0, "Renamed First");
        ASSERT_TRUE (maker->saveBankFile (folder.file ("bank.vtprsb")));
        maker->programChange (38);
        ASSERT_TRUE (maker->savePresetFile (folder.file ("heavy.vtprs"), 38));
    }

    const auto listed = folder.run ({ "--bank", "bank.vtprsb", "--list-presets" });
    ASSERT_EQ (listed.code, 0) << listed.err;
    EXPECT_NE (listed.out.find ("    0  Renamed First\n"), std::string::npos) << listed.out;

    // The preset file lands in the slot that --preset selected, and --param acts on top of it.
    const auto run = folder.run ({ "in.wav", "out.wav", "--bank", "bank.vtprsb", "--preset", "renamed first",
                                   "--preset-file", "heavy.vtprs", "--param", "FX=0.25" });
    ASSERT_EQ (run.code, 0) << run.err;
    EXPECT_NE (run.out.find ("preset       Dist'n'Crush (edited)"), std::string::npos) << run.out;

    Renderer reference;
    reference.loadPresetFile (folder.file ("heavy.vtprs"));
    reference.setParameter ("FX", "0.25");
    const auto expected = reference.render (folder.readAudio ("in.wav"), 44100.0).output;
    EXPECT_TRUE (identical (folder.readAudio ("out.wav"), expected));
}

TEST (RenderCommand, StopRequestEndsTheRunWithoutFilesAndIsUsedUp)
{
    RenderTestFolder folder;
    RenderCommand::requestStop();
    const auto stopped = folder.run ({ "out.wav", "--plot", "plot.png", "--save-state", "s.state" });
    EXPECT_EQ (stopped.code, 130);
    EXPECT_EQ (stopped.err, "vantrice-render: interrupted\n");
    EXPECT_TRUE (folder.listFiles().isEmpty());

    const auto next = folder.run ({ "-q", "out.wav", "--plot", "plot.png" });
    EXPECT_EQ (next.code, 0) << next.err;
    EXPECT_EQ (folder.listFiles(), juce::StringArray ("out.wav", "plot.png"));
    EXPECT_TRUE (juce::ImageFileFormat::loadFrom (folder.file ("plot.png")).isValid());
}

TEST (RenderCommand, MidiFileAndMapPlayAtTheirSamples)
{
    RenderTestFolder folder;
    const auto input = sine (2, 30000, 441.0, 0.5, 44100.0);
    folder.writeWav ("in.wav", input, 44100.0);

    // 960 ticks a quarter at 120 BPM: tick t falls on second t / 1920.
    juce::MidiMessageSequence track;
    track.addEvent (juce::MidiMessage::tempoMetaEvent (500000), 0.0);
    track.addEvent (juce::MidiMessage::controllerEvent (1, 7, 20), 480.0); // 0.25 s: sample 11025
    track.addEvent (juce::MidiMessage::programChange (1, 38), 960.0);      // 0.5 s: sample 22050
    juce::MidiFile midi;
    midi.setTicksPerQuarterNote (960);
    midi.addTrack (track);
    {
        juce::FileOutputStream stream (folder.file ("events.mid"));
        ASSERT_TRUE (midi.writeTo (stream));
    }
    {
        PluginHarness maker;
        maker->getMidiControl().assign (7, maker->getParameterManager().getParameter (15), false);
        ASSERT_TRUE (maker->getMidiControl().saveFile (folder.file ("volume.vtccmap")));
    }

    const auto run = folder.run (
        { "in.wav", "out.wav", "--midi", "events.mid", "--midi-map", "volume.vtccmap", "--block", "64" });
    ASSERT_EQ (run.code, 0) << run.err;
    EXPECT_NE (run.out.find ("preset       MPC 60, at the end Dist'n'Crush"), std::string::npos) << run.out;

    Renderer reference;
    reference.getProcessor().getMidiControl().assign (
        7, reference.getProcessor().getParameterManager().getParameter (15), false);
    MidiTimeline events;
    events.addEvent (juce::MidiMessage::controllerEvent (1, 7, 20), 11025);
    events.addEvent (juce::MidiMessage::programChange (1, 38), 22050);
    EXPECT_TRUE (
        identical (folder.readAudio ("out.wav"), reference.render (input, 44100.0, 4096, events).output));
}
} // namespace
