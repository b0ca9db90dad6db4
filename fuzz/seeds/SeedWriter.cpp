// Writes the seed corpus of every fuzz target from documents the plug-in and the renderer write
// themselves: vantrice-fuzz-seeds CORPUS-FOLDER.
#include "FuzzHost.h"

#include "common/ResourceLoader.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>
#include <iostream>

namespace
{
void writeSeed (const juce::File& corpus, const juce::String& door, const juce::String& name,
                const juce::MemoryBlock& data)
{
    const auto folder = corpus.getChildFile (door);
    folder.createDirectory();
    if (!folder.getChildFile (name).replaceWithData (data.getData(), data.getSize()))
        throw std::runtime_error ("cannot write "
                                  + folder.getChildFile (name).getFullPathName().toStdString());
}

void writeSeed (const juce::File& corpus, const juce::String& door, const juce::String& name,
                const juce::String& text)
{
    writeSeed (corpus, door, name, juce::MemoryBlock (text.toRawUTF8(), text.getNumBytesAsUTF8()));
}

juce::MemoryBlock fileBytes (const juce::File& file)
{
    juce::MemoryBlock block;
    file.loadFileAsData (block);
    return block;
}

juce::String xmlText (const juce::XmlElement& xml) { return xml.toString(); }

// A whole bank is a hundred kilobytes, which slows every mutation; a few presets of each group show the
// fuzzer the same structure.
void trimGroups (juce::XmlElement& xml)
{
    constexpr int presetsKept = 2;
    for (auto* child : xml.getChildIterator())
        trimGroups (*child);
    if (xml.getTagName().endsWith ("PresetGroup"))
        while (xml.getNumChildElements() > presetsKept)
            xml.removeChildElement (xml.getChildElement (presetsKept), true);
}

juce::MemoryBlock trimmedChunk (const juce::MemoryBlock& chunk)
{
    auto xml = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
    trimGroups (*xml);
    juce::MemoryBlock trimmed;
    juce::AudioProcessor::copyXmlToBinary (*xml, trimmed);
    return trimmed;
}

juce::String trimmedDocument (const juce::String& text)
{
    auto xml = juce::XmlDocument::parse (text);
    trimGroups (*xml);
    return xml->toString();
}

// Four-byte records of the MIDI stream target: a controller on a mapped number, a program change, a host
// write, and a block end with a new size.
juce::MemoryBlock midiStream()
{
    const uint8_t records[] = { 10,   0xB0, 7,    100, // mapped controller at sample 10
                                40,   0xC0, 3,    0,   // program change at sample 40
                                0xFE, 4,    0x80, 0,   // host write to parameter 4
                                0xFF, 0,    200,  0,   // block end, next 201 samples
                                0,    0xB3, 21,   64,  // controller on another channel
                                0xFF, 1,    0,    0 };
    return { records, sizeof (records) };
}

juce::MemoryBlock midiFile()
{
    juce::MidiMessageSequence track;
    track.addEvent (juce::MidiMessage::controllerEvent (1, 7, 90), 0.0);
    track.addEvent (juce::MidiMessage::programChange (1, 4), 480.0);
    track.addEvent (juce::MidiMessage::noteOn (1, 60, (juce::uint8) 100), 960.0);
    track.updateMatchedPairs();
    juce::MidiFile file;
    file.setTicksPerQuarterNote (480);
    file.addTrack (track);
    juce::MemoryOutputStream out;
    file.writeTo (out);
    return out.getMemoryBlock();
}

juce::MemoryBlock waveFile (double rate, int channels, int bits, int length)
{
    juce::AudioBuffer<float> audio (channels, length);
    for (int c = 0; c < channels; ++c)
        for (int i = 0; i < length; ++i)
            audio.setSample (c, i, 0.5f * std::sin (0.03f * (float) (i + c)));
    auto block = std::make_unique<juce::MemoryOutputStream>();
    auto* stream = block.get();
    juce::WavAudioFormat wav;
    std::unique_ptr<juce::AudioFormatWriter> writer (
        wav.createWriterFor (block.release(), rate, (unsigned int) channels, bits, {}, 0));
    writer->writeFromAudioSampleBuffer (audio, 0, length);
    writer->flush();
    juce::MemoryBlock result (stream->getData(), stream->getDataSize());
    return result;
}

void writeAll (const juce::File& corpus)
{
    auto& host = FuzzHost::get();
    auto plugin = FuzzHost::startDistinctPlugin (host.getScratch().getChildFile ("seeds"));

    juce::MemoryBlock chunk;
    plugin->getStateInformation (chunk);
    writeSeed (corpus, "StateChunk", "state", trimmedChunk (chunk));
    plugin->getCurrentProgramStateInformation (chunk);
    writeSeed (corpus, "ProgramChunk", "program", chunk);

    const auto scratch = host.getScratch();
    plugin->savePresetFile (scratch.getChildFile ("p.vtprs"), 5);
    writeSeed (corpus, "PresetFile", "preset", fileBytes (scratch.getChildFile ("p.vtprs")));
    plugin->saveBankFile (scratch.getChildFile ("b.vtprsb"));
    writeSeed (corpus, "BankFile", "bank",
               trimmedDocument (scratch.getChildFile ("b.vtprsb").loadFileAsString()));
    writeSeed (corpus, "BankFile", "factory", trimmedDocument (loadResourceText ("default.vtprsb")));
    plugin->getMidiControl().saveFile (scratch.getChildFile ("map.xml"));
    writeSeed (corpus, "MidiMap", "map", fileBytes (scratch.getChildFile ("map.xml")));
    writeSeed (corpus, "SettingsFile", "settings", xmlText (*plugin->createUserSettingsXml()));

    writeSeed (corpus, "ParameterTable", "parameters", loadResourceText ("parameters.xml"));
    writeSeed (corpus, "EventsTable", "events",
               "<EventsMap><event uid=\"1000\" name=\"Options\"/><event uid=\"2001\" name=\"Next "
               "Preset\"/></EventsMap>");

    writeSeed (corpus, "MidiStream", "stream", midiStream());
    writeSeed (corpus, "MidiFile", "file", midiFile());
    writeSeed (
        corpus, "RenderOptions", "options",
        "--preset\nPhone Call\n--param\nPreamp=+6.0dB\n--block\n100\n--bit-depth\n24\nin.wav\nout.wav");
    writeSeed (corpus, "RenderInput", "stereo-44100", waveFile (44100.0, 2, 16, 64));
    writeSeed (corpus, "RenderInput", "mono-48000", waveFile (48000.0, 1, 24, 48));
}
} // namespace

int main (int argc, char** argv)
{
    if (argc != 2)
    {
        std::cerr << "usage: vantrice-fuzz-seeds CORPUS-FOLDER" << std::endl;
        return 2;
    }
    try
    {
        writeAll (juce::File::getCurrentWorkingDirectory().getChildFile (argv[1]));
    }
    catch (const std::exception& error)
    {
        std::cerr << "vantrice-fuzz-seeds: " << error.what() << std::endl;
        return 1;
    }
    return 0;
}
