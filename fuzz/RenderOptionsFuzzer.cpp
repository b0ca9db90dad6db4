// The renderer's command line, one argument per line of the input.
#include "FuzzHost.h"

#include "RenderError.h"
#include "RenderOptions.h"

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    FuzzHost::get();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    std::vector<std::string> arguments;
    std::string current;
    for (size_t i = 0; i < size; ++i)
    {
        if (data[i] == '\n')
        {
            arguments.push_back (current);
            current.clear();
        }
        else
        {
            current += (char) data[i];
        }
    }
    if (!current.empty())
        arguments.push_back (current);

    // Every refusal is a usage error of one line; anything accepted is within the renderer's limits.
    try
    {
        const auto options = RenderOptions::parse (arguments);
        // Help and version end the run before anything else is looked at.
        if (options.textToPrint.isNotEmpty())
            return 0;
        FuzzHost::expect (options.blockSize >= 1 && options.blockSize <= RenderOptions::maxBlockSize,
                          "a block size outside the limits was accepted");
        FuzzHost::expect (options.bitDepth == 16 || options.bitDepth == 24 || options.bitDepth == 32,
                          "a bit depth the writer can't write was accepted");
    }
    catch (const RenderError& error)
    {
        FuzzHost::expect (error.getCode() == RenderError::usage,
                          "options gave an error that is no usage error");
        // The line as the terminal gets it, byte by byte.
        const std::string line = error.what();
        FuzzHost::expect (!line.empty() && line.find ('\n') == std::string::npos,
                          "a usage error is not one line: " + line);
    }
    return 0;
}
