#include "common/ScratchFolder.h"

#include <cstdlib>
#include <vector>

ScratchFolder::ScratchFolder (const juce::String& prefix)
{
    const auto pattern = juce::File::getSpecialLocation (juce::File::tempDirectory)
                             .getChildFile (prefix + "-XXXXXX")
                             .getFullPathName()
                             .toStdString();
    std::vector<char> path (pattern.begin(), pattern.end());
    path.push_back ('\0');
    if (mkdtemp (path.data()) != nullptr)
        folder = juce::File (juce::String::fromUTF8 (path.data()));
}

ScratchFolder::~ScratchFolder()
{
    if (isValid())
        folder.deleteRecursively();
}
