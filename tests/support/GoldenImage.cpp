#include "support/GoldenImage.h"

#include <cstdlib>

juce::File GoldenImage::fileFor (const juce::String& name)
{
    return juce::File (VANTRICE_TEST_DATA_DIR).getChildFile ("golden").getChildFile (name + ".png");
}

juce::String GoldenImage::compare (const juce::Image& expected, const juce::Image& actual)
{
    if (expected.getBounds() != actual.getBounds())
        return "is " + juce::String (actual.getWidth()) + " by " + juce::String (actual.getHeight())
               + ", not " + juce::String (expected.getWidth()) + " by " + juce::String (expected.getHeight());
    int differing = 0;
    juce::Point<int> first;
    for (int y = 0; y < actual.getHeight(); ++y)
        for (int x = 0; x < actual.getWidth(); ++x)
            if (expected.getPixelAt (x, y).withAlpha (1.0f) != actual.getPixelAt (x, y).withAlpha (1.0f))
            {
                if (differing++ == 0)
                    first = { x, y };
            }
    if (differing == 0)
        return {};
    return juce::String (differing) + " pixels differ, the first at " + first.toString();
}

juce::String GoldenImage::check (const juce::Image& image, const juce::String& name)
{
    const auto file = fileFor (name);
    // Golden copies are opaque: a picture is compared and stored without its alpha.
    const auto opaque = image.convertedToFormat (juce::Image::RGB);
    juce::PNGImageFormat png;
    if (juce::String (std::getenv ("VANTRICE_UPDATE_GOLDEN")) == "1")
    {
        file.getParentDirectory().createDirectory();
        file.deleteFile();
        juce::FileOutputStream out (file);
        return out.openedOk() && png.writeImageToStream (opaque, out)
                   ? juce::String()
                   : "cannot write " + file.getFullPathName();
    }
    const auto golden = juce::ImageFileFormat::loadFrom (file);
    if (golden.isNull())
        return "no golden picture " + file.getFullPathName() + " (VANTRICE_UPDATE_GOLDEN=1 writes it)";
    const auto why = compare (golden, opaque);
    if (why.isNotEmpty())
    {
        const auto actual = juce::File::getCurrentWorkingDirectory().getChildFile (name + ".actual.png");
        actual.getParentDirectory().createDirectory();
        actual.deleteFile();
        juce::FileOutputStream out (actual);
        if (out.openedOk())
            png.writeImageToStream (opaque, out);
        return name + " " + why + " (this run's picture: " + actual.getFullPathName() + ")";
    }
    return {};
}
