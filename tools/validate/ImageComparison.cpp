#include "ImageComparison.h"

namespace
{
juce::uint32 opaque (const juce::Image::BitmapData& data, int x, int y)
{
    return data.getPixelColour (x, y).getARGB() | 0xff000000;
}

bool matchesAt (const juce::Image::BitmapData& hay, const juce::Image::BitmapData& needle, int x0, int y0)
{
    for (int y = 0; y < needle.height; ++y)
        for (int x = 0; x < needle.width; ++x)
            if (opaque (hay, x0 + x, y0 + y) != opaque (needle, x, y))
                return false;
    return true;
}
} // namespace

juce::String ImageComparison::describeDifference (const juce::Image& expected, const juce::Image& actual)
{
    if (expected.getBounds() != actual.getBounds())
        return "is " + juce::String (actual.getWidth()) + " by " + juce::String (actual.getHeight())
               + ", not " + juce::String (expected.getWidth()) + " by " + juce::String (expected.getHeight());
    const juce::Image::BitmapData a (expected, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData b (actual, juce::Image::BitmapData::readOnly);
    int differing = 0;
    juce::Point<int> first;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x)
            if (opaque (a, x, y) != opaque (b, x, y) && differing++ == 0)
                first = { x, y };
    if (differing == 0)
        return {};
    return juce::String (differing) + " pixels differ, the first at " + first.toString();
}

juce::Point<int> ImageComparison::find (const juce::Image& haystack, const juce::Image& needle)
{
    if (needle.getWidth() > haystack.getWidth() || needle.getHeight() > haystack.getHeight())
        return { -1, -1 };
    const juce::Image::BitmapData hay (haystack, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData pin (needle, juce::Image::BitmapData::readOnly);
    const auto corner = opaque (pin, 0, 0);
    for (int y = 0; y + pin.height <= hay.height; ++y)
        for (int x = 0; x + pin.width <= hay.width; ++x)
            if (opaque (hay, x, y) == corner && matchesAt (hay, pin, x, y))
                return { x, y };
    return { -1, -1 };
}

juce::Image ImageComparison::loadGolden (const juce::String& name)
{
    return juce::ImageFileFormat::loadFrom (juce::File (VANTRICE_GOLDEN_DIR).getChildFile (name + ".png"));
}
