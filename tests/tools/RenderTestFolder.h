#pragma once

#include "AudioComparison.h"
#include "RenderCommand.h"
#include "common/ScratchFolder.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <sstream>

/** A temporary folder for one test of the renderer's command, with helpers to write its inputs, read its
    outputs and run the command in-process. Removed with everything in it at the end. */
class RenderTestFolder
{
public:
    struct Run
    {
        int code = -1;
        std::string out, err;
    };

    RenderTestFolder()
        : scratch ("vantrice-render-test")
        , folder (scratch.getFolder())
    {
    }

    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }
    std::string path (const juce::String& name) const { return file (name).getFullPathName().toStdString(); }

    /** Writes a WAV file of 32-bit float samples. */
    std::string writeWav (const juce::String& name, const juce::AudioBuffer<float>& buffer, double rate) const
    {
        const auto target = file (name);
        target.deleteFile();
        auto stream = target.createOutputStream();
        juce::WavAudioFormat wav;
        std::unique_ptr<juce::AudioFormatWriter> writer (
            wav.createWriterFor (stream.get(), rate, (unsigned int) buffer.getNumChannels(), 32, {}, 0));
        if (writer != nullptr)
        {
            stream.release();
            writer->writeFromAudioSampleBuffer (buffer, 0, buffer.getNumSamples());
        }
        return path (name);
    }

    /** Reads an audio file; an empty buffer if it can't be read. */
    juce::AudioBuffer<float> readAudio (const juce::String& name, double* rate = nullptr) const
    {
        juce::AudioFormatManager formats;
        formats.registerBasicFormats();
        std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file (name)));
        juce::AudioBuffer<float> buffer;
        if (reader == nullptr)
            return buffer;
        buffer.setSize ((int) reader->numChannels, (int) reader->lengthInSamples);
        reader->read (&buffer, 0, buffer.getNumSamples(), 0, true, true);
        if (rate != nullptr)
            *rate = reader->sampleRate;
        return buffer;
    }

    std::string writeText (const juce::String& name, const juce::String& text) const
    {
        file (name).replaceWithText (text);
        return path (name);
    }

    std::string writeData (const juce::String& name, const juce::MemoryBlock& data) const
    {
        file (name).replaceWithData (data.getData(), data.getSize());
        return path (name);
    }

    /** Runs the command with the folder as working directory for relative names. Test programs run one
        test at a time, so changing the process's directory for the call is safe. */
    Run run (const std::vector<std::string>& arguments) const
    {
        const auto previous = juce::File::getCurrentWorkingDirectory();
        folder.setAsCurrentWorkingDirectory();
        std::ostringstream out, err;
        Run result;
        result.code = RenderCommand::run (arguments, out, err);
        previous.setAsCurrentWorkingDirectory();
        result.out = out.str();
        result.err = err.str();
        return result;
    }

    /** The names of the files in the folder, sorted. */
    juce::StringArray listFiles() const
    {
        juce::StringArray names;
        for (const auto& f : folder.findChildFiles (juce::File::findFilesAndDirectories, false))
            names.add (f.getFileName());
        names.sort (false);
        return names;
    }

    ScratchFolder scratch;
    const juce::File folder;
};

/** Whether two renders have the same size and every sample the same bits. */
inline bool identical (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b)
{
    juce::String whyNot;
    return AudioComparison::identical (a, b, whyNot);
}
