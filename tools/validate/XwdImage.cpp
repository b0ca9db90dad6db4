#include "XwdImage.h"

#include <set>

namespace
{
// The dump's header: 25 big-endian 32-bit words, by position.
enum HeaderWord
{
    headerSize = 0,
    fileVersion = 1,
    pixmapFormat = 2,
    pixmapWidth = 4,
    pixmapHeight = 5,
    byteOrder = 7,
    bitsPerPixel = 11,
    bytesPerLine = 12,
    visualClass = 13,
    redMask = 14,
    greenMask = 15,
    blueMask = 16,
    numColours = 19,
    numHeaderWords = 25
};

constexpr juce::uint32 xwdFileVersion = 7;
constexpr juce::uint32 zPixmap = 2;
constexpr juce::uint32 trueColour = 4;
constexpr juce::uint32 directColour = 5;
constexpr size_t colourEntrySize = 12; // pixel, red, green, blue, flags and a pad byte

/** Scales a masked channel to 8 bits. */
juce::uint8 channel (juce::uint32 pixel, juce::uint32 mask)
{
    if (mask == 0)
        return 0;
    int shift = 0;
    while (((mask >> shift) & 1u) == 0)
        ++shift;
    const auto maximum = mask >> shift;
    return (juce::uint8) (((pixel & mask) >> shift) * 255u / maximum);
}
} // namespace

XwdImage::XwdImage (const juce::File& file)
{
    juce::MemoryBlock data;
    if (!file.loadFileAsData (data))
        error = "cannot read " + file.getFullPathName();
    else if (!read (data))
        image = {};
}

bool XwdImage::read (const juce::MemoryBlock& data)
{
    if (data.getSize() < numHeaderWords * 4)
    {
        error = "not a window dump: too short";
        return false;
    }
    auto word = [&data] (int index) { return juce::ByteOrder::bigEndianInt (data.begin() + index * 4); };

    if (word (fileVersion) != xwdFileVersion || word (pixmapFormat) != zPixmap)
    {
        error = "not a window dump of version 7 in Z format";
        return false;
    }
    const auto visual = word (visualClass);
    const auto bits = word (bitsPerPixel);
    if ((visual != trueColour && visual != directColour) || (bits != 24 && bits != 32))
    {
        error = "only true-colour dumps of 24 or 32 bits per pixel are read";
        return false;
    }

    const auto width = (int) word (pixmapWidth);
    const auto height = (int) word (pixmapHeight);
    const auto lineBytes = (size_t) word (bytesPerLine);
    const auto pixelsStart = (size_t) word (headerSize) + (size_t) word (numColours) * colourEntrySize;
    if (width <= 0 || height <= 0 || pixelsStart + lineBytes * (size_t) height > data.getSize())
    {
        error = "the dump is cut short";
        return false;
    }

    const bool lsbFirst = word (byteOrder) == 0;
    const auto bytesPerPixel = (size_t) bits / 8;
    const auto red = word (redMask), green = word (greenMask), blue = word (blueMask);

    image = juce::Image (juce::Image::RGB, width, height, false);
    const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::writeOnly);
    for (int y = 0; y < height; ++y)
    {
        const auto* line = data.begin() + pixelsStart + lineBytes * (size_t) y;
        for (int x = 0; x < width; ++x)
        {
            const auto* p = reinterpret_cast<const juce::uint8*> (line + bytesPerPixel * (size_t) x);
            juce::uint32 value = 0;
            for (size_t b = 0; b < bytesPerPixel; ++b)
                value |= (juce::uint32) p[lsbFirst ? b : bytesPerPixel - 1 - b] << (8 * b);
            pixels.setPixelColour (
                x, y, juce::Colour (channel (value, red), channel (value, green), channel (value, blue)));
        }
    }
    return true;
}

bool XwdImage::writePng (const juce::File& file) const
{
    if (!image.isValid())
        return false;
    file.deleteFile();
    juce::FileOutputStream out (file);
    juce::PNGImageFormat png;
    return out.openedOk() && png.writeImageToStream (image, out);
}

int XwdImage::countColours() const
{
    std::set<juce::uint32> colours;
    const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::readOnly);
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            colours.insert (pixels.getPixelColour (x, y).getARGB());
    return (int) colours.size();
}

juce::String XwdImage::describe() const
{
    return juce::String (image.getWidth()) + "x" + juce::String (image.getHeight()) + ", "
           + juce::String (countColours()) + " colours";
}
