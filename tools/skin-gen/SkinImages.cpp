#include "SkinImages.h"

#include "FacePainter.h"
#include "PixelFont.h"

#include "skin/SkinPictures.h"

juce::String SkinImages::keyAtScale (const juce::String& key, int scale)
{
    // The editor looks for the double pictures under these names.
    return scale == 1 ? key : SkinPictures::doubleKey (key);
}

juce::Image SkinImages::renderBackground (int scale)
{
    juce::Image image (juce::Image::RGB, FaceLayout::width * scale, FaceLayout::height * scale, true);
    juce::Graphics g (image);
    g.addTransform (juce::AffineTransform::scale ((float) scale));
    FacePainter::paintStatic (g);
    return image;
}

juce::Image SkinImages::renderStrip (const FaceLayout::Control& control, const juce::Image& background,
                                     int scale)
{
    const auto bounds = control.bounds;
    const int frameWidth = bounds.getWidth() * scale, frameHeight = bounds.getHeight() * scale;
    juce::Image strip (juce::Image::RGB, frameWidth, frameHeight * control.frames, true);
    for (int frame = 0; frame < control.frames; ++frame)
    {
        juce::Graphics g (strip);
        const int top = frame * frameHeight;
        g.reduceClipRegion (0, top, frameWidth, frameHeight);
        g.drawImageAt (background, -bounds.getX() * scale, top - bounds.getY() * scale);
        g.addTransform (juce::AffineTransform::translation (
                            (float) -bounds.getX(), (float) (frame * bounds.getHeight() - bounds.getY()))
                            .scaled ((float) scale));
        FacePainter::paintControl (g, control, frame);
    }
    return strip;
}

std::vector<SkinImages::Picture> SkinImages::render (int scale)
{
    std::vector<Picture> pictures;
    const auto background = renderBackground (scale);
    pictures.push_back ({ keyAtScale (FaceLayout::backgroundResource, scale), background });
    pictures.push_back ({ keyAtScale (FaceLayout::fontResource, scale), PixelFont::renderStrip (scale) });
    for (const auto& control : FaceLayout::getControls())
        if (control.look != FaceLayout::Look::display)
            pictures.push_back (
                { keyAtScale (control.resource, scale), renderStrip (control, background, scale) });
    return pictures;
}
