#include "common/ResourceLoader.h"

#include <VantriceBinaryData.h>

namespace
{
// Shorter blocks can't hold any image format's header.
constexpr size_t smallestImageBlock = 5;

struct KeyParts
{
    juce::String name;
    juce::String type;
};

bool splitKey (const juce::String& key, KeyParts& parts)
{
    const int point = key.lastIndexOfChar ('.');

    if (point <= 0 || point == key.length() - 1)
        return false;

    parts.name = key.substring (0, point);
    parts.type = key.substring (point + 1);
    return true;
}

/** The embedded block of a key, which lives as long as the library; null with a size of 0 if none. */
const char* findBlock (const juce::String& key, int& size)
{
    size = 0;
    for (int i = 0; i < VantriceBinaryData::namedResourceListSize; ++i)
        if (resourceKeyMatches (key, juce::String::fromUTF8 (VantriceBinaryData::originalFilenames[i])))
            return VantriceBinaryData::getNamedResource (VantriceBinaryData::namedResourceList[i], size);
    return nullptr;
}
} // namespace

bool resourceKeyMatches (const juce::String& key, const juce::String& fileName)
{
    KeyParts wanted, candidate;

    return splitKey (key, wanted) && splitKey (fileName, candidate)
           && wanted.name.equalsIgnoreCase (candidate.name) && wanted.type.equalsIgnoreCase (candidate.type);
}

std::unique_ptr<juce::MemoryBlock> loadResourceData (const juce::String& key)
{
    int size = 0;
    const char* data = findBlock (key, size);
    if (data == nullptr || size <= 0)
        return nullptr;
    return std::make_unique<juce::MemoryBlock> (data, (size_t) size);
}

juce::Image loadCachedResourceImage (const juce::String& key)
{
    int size = 0;
    const char* data = findBlock (key, size);
    if (data == nullptr || (size_t) size < smallestImageBlock)
        return {};
    return juce::ImageCache::getFromMemory (data, size);
}

juce::String loadResourceText (const juce::String& key)
{
    if (const auto data = loadResourceData (key))
        return data->toString();

    return {};
}

bool loadResourceImage (const juce::String& key, juce::Image& image)
{
    const auto data = loadResourceData (key);

    if (data == nullptr)
        return false;

    juce::Image decoded;

    if (data->getSize() >= smallestImageBlock)
        decoded = juce::ImageFileFormat::loadFrom (data->getData(), data->getSize());

    if (decoded != image)
        image = decoded;

    return true;
}
