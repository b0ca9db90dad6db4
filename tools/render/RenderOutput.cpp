#include "RenderOutput.h"

#include "RenderError.h"

RenderOutput::RenderOutput (const juce::File& targetToUse)
    : target (targetToUse)
    , temporary (targetToUse)
{
    const auto folder = target.getParentDirectory();
    if (!folder.isDirectory())
        fail ("the folder '" + folder.getFullPathName() + "' doesn't exist");
    if (target.isDirectory())
        fail ("it is a directory");
    if (!folder.hasWriteAccess())
        fail ("the folder '" + folder.getFullPathName() + "' is not writable");
}

void RenderOutput::fail (const juce::String& reason) const
{
    throw RenderError (RenderError::outputFile, "cannot write '" + target.getFullPathName() + "': " + reason);
}

std::unique_ptr<juce::FileOutputStream> RenderOutput::openStream()
{
    auto stream = temporary.getFile().createOutputStream();
    if (stream == nullptr || !stream->openedOk())
        fail ("cannot create a file in '" + target.getParentDirectory().getFullPathName() + "'");
    return stream;
}

void RenderOutput::writeAudio (const juce::AudioBuffer<float>& buffer, double sampleRate, int bitDepth)
{
    auto stream = openStream();
    juce::WavAudioFormat wav;
    std::unique_ptr<juce::AudioFormatWriter> writer (wav.createWriterFor (
        stream.get(), sampleRate, (unsigned int) buffer.getNumChannels(), bitDepth, {}, 0));
    if (writer == nullptr)
        fail ("no WAV writer for " + juce::String (buffer.getNumChannels()) + " channels of "
              + juce::String (bitDepth) + " bits");
    stream.release(); // the writer owns it now

    if (!writer->writeFromAudioSampleBuffer (buffer, 0, buffer.getNumSamples()) || !writer->flush())
        fail ("writing failed (is the disk full?)");
    writer.reset();
}

void RenderOutput::writeData (const juce::MemoryBlock& data)
{
    auto stream = openStream();
    if (!stream->write (data.getData(), data.getSize()))
        fail ("writing failed (is the disk full?)");
    stream->flush();
    if (stream->getStatus().failed())
        fail (stream->getStatus().getErrorMessage());
}

void RenderOutput::writePng (const juce::Image& image)
{
    auto stream = openStream();
    juce::PNGImageFormat png;
    if (!png.writeImageToStream (image, *stream))
        fail ("PNG encoding failed");
    stream->flush();
    if (stream->getStatus().failed())
        fail (stream->getStatus().getErrorMessage());
}

void RenderOutput::commit()
{
    if (!temporary.overwriteTargetFileWithTemporary())
        fail ("cannot replace it with the finished file");
}
