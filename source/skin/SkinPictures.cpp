#include "skin/SkinPictures.h"

#include "common/ResourceLoader.h"

namespace
{
constexpr float densityForDouble = 1.5f;
}

bool SkinPictures::wantsDouble (juce::Graphics& g)
{
    return g.getInternalContext().getPhysicalPixelScaleFactor() >= densityForDouble;
}

juce::String SkinPictures::doubleKey (const juce::String& key)
{
    if (!key.containsChar ('.'))
        return {};
    return key.upToLastOccurrenceOf (".", false, false) + "@2x" + key.fromLastOccurrenceOf (".", true, false);
}

juce::Image SkinPictures::loadDouble (const juce::String& key, const juce::Image& single)
{
    juce::Image image;
    if (key.isEmpty() || !loadResourceImage (doubleKey (key), image))
        return {};
    // A double that isn't exactly twice the size would draw the wrong part of the strip.
    if (image.getBounds() != single.getBounds() * 2)
        return {};
    return image;
}
