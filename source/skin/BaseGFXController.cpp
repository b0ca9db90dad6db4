#include "skin/BaseGFXController.h"

#include "common/ResourceLoader.h"
#include "skin/SkinPictures.h"
#include "skin/SkinXml.h"

#include <cmath>

int BaseGFXController::frameForValue (float value, int numFrames) noexcept
{
    const float t = juce::jlimit (0.0f, 1.0f, value);
    return (int) std::floor ((float) (numFrames - 1) * t + 0.5f);
}

void BaseGFXController::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                     EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    loadGfx (element);
    if (strip.isNull())
        loadSize (element);
    loadPos (element);
}

void BaseGFXController::loadGfx (const juce::XmlElement& element)
{
    framesNum = 1;
    auto* gfx = SkinXml::getChild (element, "gfx");
    if (gfx == nullptr)
        return;
    // A strip has at least one frame: a count below that could divide nothing.
    framesNum = juce::jmax (1, SkinXml::getInt (*gfx, "framesNum", 1));
    juce::Image image;
    const auto key = SkinXml::getAttribute (*gfx, "resource");
    loadResourceImage (key, image);
    if (image.isValid())
    {
        setStrip (image, framesNum);
        stripKey = key;
    }
}

void BaseGFXController::setStrip (const juce::Image& image, int frames)
{
    strip = image;
    stripKey.clear();
    doubleStrip = {};
    doubleStripLooked = false;
    framesNum = juce::jmax (1, frames);
    const int width = strip.getWidth();
    const int height = strip.getHeight() / framesNum;
    if (width != frameWidth || height != frameHeight)
    {
        frameWidth = width;
        frameHeight = height;
        frameSizeChanged();
    }
}

void BaseGFXController::loadSize (const juce::XmlElement& element)
{
    auto* size = SkinXml::getChild (element, "size");
    if (size == nullptr)
        return;
    const int height = SkinXml::getInt (*size, "height", 0);
    const int width = SkinXml::getInt (*size, "width", 0);
    if (height != frameHeight || width != frameWidth)
    {
        frameHeight = height;
        frameWidth = width;
        frameSizeChanged();
    }
}

void BaseGFXController::loadPos (const juce::XmlElement& element)
{
    auto* pos = SkinXml::getChild (element, "pos");
    if (pos == nullptr)
        return;
    const int newTop = SkinXml::getInt (*pos, "top", 0);
    const int newLeft = SkinXml::getInt (*pos, "left", 0);
    if (newTop != top || newLeft != left)
    {
        top = newTop;
        left = newLeft;
        positionChanged();
    }
}

const juce::Image& BaseGFXController::getDoubleStrip()
{
    if (!doubleStripLooked)
    {
        doubleStripLooked = true;
        doubleStrip = SkinPictures::loadDouble (stripKey, strip);
    }
    return doubleStrip;
}

void BaseGFXController::drawFrame (juce::Graphics& g, int frame)
{
    if (SkinPictures::wantsDouble (g) && getDoubleStrip().isValid())
        g.drawImage (doubleStrip, 0, 0, frameWidth, frameHeight, 0, frame * frameHeight * 2, frameWidth * 2,
                     frameHeight * 2);
    else
        g.drawImage (strip, 0, 0, frameWidth, frameHeight, 0, frame * frameHeight, frameWidth, frameHeight);
}
