// An audio file from anywhere, rendered through the plug-in by the offline renderer.
#include "FuzzHost.h"

#include "RenderCommand.h"
#include "RenderError.h"

#include <cstring>
#include <sstream>

namespace
{
juce::File input, output;
}

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    const auto folder = FuzzHost::get().getScratch().getChildFile ("render");
    folder.createDirectory();
    input = folder.getChildFile ("input.wav");
    output = folder.getChildFile ("output.wav");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    input.replaceWithData (data, size);
    output.deleteFile();
    std::ostringstream out, err;
    const int code = RenderCommand::run (
        { "--quiet", input.getFullPathName().toStdString(), output.getFullPathName().toStdString() }, out,
        err);

    // The renderer either writes its output or says why in one line and writes nothing; the input stays.
    if (code == 0)
    {
        FuzzHost::expect (output.existsAsFile(), "a render that succeeded wrote no output");
    }
    else
    {
        FuzzHost::expect (code == RenderError::inputFile || code == RenderError::corruptData,
                          "an audio file gave exit code " + std::to_string (code) + ": " + err.str());
        FuzzHost::expect (!output.exists(), "a render that failed left an output");
        const auto message = err.str();
        FuzzHost::expect (!message.empty() && message.find ('\n') == message.size() - 1,
                          "a failed render did not say why in one line");
    }
    juce::MemoryBlock after;
    input.loadFileAsData (after);
    FuzzHost::expect (after.getSize() == size
                          && (size == 0 || std::memcmp (after.getData(), data, size) == 0),
                      "the render changed its input");
    return 0;
}
