#include "common/ResourceLoader.h"
#include "skin/SkinXml.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace
{
struct Strip
{
    juce::String name, tag;
    juce::Image image;
    int frames = 1;
    juce::Rectangle<int> bounds;

    juce::Image frame (int f) const
    {
        const int h = image.getHeight() / frames;
        return image.getClippedImage ({ 0, f * h, image.getWidth(), h });
    }
};

std::vector<Strip> strips (int scale)
{
    std::vector<Strip> all;
    auto skin = juce::parseXML (loadResourceText ("skin.xml"));
    for (auto* c : skin->getChildIterator())
    {
        if (SkinXml::isTag (*c, "Display"))
            continue;
        auto* gfx = SkinXml::getChild (*c, "gfx");
        auto* pos = SkinXml::getChild (*c, "pos");
        Strip s;
        s.name = c->getStringAttribute ("name");
        s.tag = c->getTagName();
        s.frames = SkinXml::getInt (*gfx, "framesNum", 1);
        auto key = gfx->getStringAttribute ("resource");
        if (scale == 2)
            key = key.replace (".png", "@2x.png");
        loadResourceImage (key, s.image);
        s.bounds = { pos->getIntAttribute ("left") * scale, pos->getIntAttribute ("top") * scale,
                     s.image.getWidth(), s.image.getHeight() / s.frames };
        all.push_back (s);
    }
    return all;
}

bool samePixels (const juce::Image& a, const juce::Image& b)
{
    if (a.getBounds() != b.getBounds())
        return false;
    for (int y = 0; y < a.getHeight(); ++y)
        for (int x = 0; x < a.getWidth(); ++x)
            if (a.getPixelAt (x, y) != b.getPixelAt (x, y))
                return false;
    return true;
}

int pixelsDiffering (const juce::Image& a, const juce::Image& b)
{
    int n = 0;
    for (int y = 0; y < a.getHeight(); ++y)
        for (int x = 0; x < a.getWidth(); ++x)
            n += a.getPixelAt (x, y) != b.getPixelAt (x, y) ? 1 : 0;
    return n;
}

/** The direction of a knob's pointer, from the centre to the middle of its brightest pixels. */
double pointerAngle (const juce::Image& frame)
{
    double sx = 0.0, sy = 0.0, n = 0.0;
    for (int y = 0; y < frame.getHeight(); ++y)
        for (int x = 0; x < frame.getWidth(); ++x)
        {
            const auto c = frame.getPixelAt (x, y);
            if (c.getRed() > 200 && c.getGreen() > 200 && c.getBlue() > 200)
            {
                sx += x + 0.5;
                sy += y + 0.5;
                n += 1.0;
            }
        }
    if (n == 0.0)
        return std::nan ("");
    return std::atan2 (sx / n - frame.getWidth() / 2.0, -(sy / n - frame.getHeight() / 2.0));
}

class SkinArt : public ::testing::TestWithParam<int>
{
};
} // namespace

TEST_P (SkinArt, EveryFrameRepeatsTheBackgroundAtItsEdge)
{
    const int scale = GetParam();
    juce::Image background;
    ASSERT_TRUE (loadResourceImage (scale == 1 ? "Background.png" : "Background@2x.png", background));
    EXPECT_FALSE (background.hasAlphaChannel());
    for (const auto& s : strips (scale))
    {
        EXPECT_FALSE (s.image.hasAlphaChannel()) << s.name;
        const auto under = background.getClippedImage (s.bounds);
        for (int f = 0; f < s.frames; ++f)
        {
            const auto frame = s.frame (f);
            const int w = frame.getWidth(), h = frame.getHeight();
            int wrong = 0;
            for (int x = 0; x < w; ++x)
                wrong += (frame.getPixelAt (x, 0) != under.getPixelAt (x, 0))
                         + (frame.getPixelAt (x, h - 1) != under.getPixelAt (x, h - 1));
            for (int y = 0; y < h; ++y)
                wrong += (frame.getPixelAt (0, y) != under.getPixelAt (0, y))
                         + (frame.getPixelAt (w - 1, y) != under.getPixelAt (w - 1, y));
            EXPECT_EQ (wrong, 0) << s.name << " frame " << f;
        }
    }
}

INSTANTIATE_TEST_SUITE_P (Scales, SkinArt, ::testing::Values (1, 2));

TEST (SkinArtFrames, KnobsTurnOneWayAndMetersLightUpward)
{
    for (const auto& s : strips (1))
    {
        SCOPED_TRACE (s.name.toStdString());
        for (int f = 1; f < s.frames; ++f)
            EXPECT_FALSE (samePixels (s.frame (f), s.frame (f - 1)))
                << "frame " << f << " repeats the one before";

        if (s.tag == "Knob" || (s.tag == "Switch" && s.frames > 2))
        {
            // The pointer turns clockwise from frame to frame, once round at most.
            double previous = pointerAngle (s.frame (0));
            for (int f = 1; f < s.frames; ++f)
            {
                const double angle = pointerAngle (s.frame (f));
                EXPECT_GT (angle, previous) << "frame " << f;
                previous = angle;
            }
        }
        if (s.name.endsWith ("VUMeter"))
        {
            int lit = 0;
            for (int f = 1; f < s.frames; ++f)
            {
                const int now = pixelsDiffering (s.frame (f), s.frame (0));
                EXPECT_GT (now, lit) << "frame " << f;
                lit = now;
            }
        }
        if (s.tag == "ToggleButton")
        {
            for (int a = 0; a < s.frames; ++a)
                for (int b = a + 1; b < s.frames; ++b)
                {
                    EXPECT_FALSE (samePixels (s.frame (a), s.frame (b))) << a << " and " << b;
                }
        }
    }
}

TEST (SkinArtFrames, FontHasDistinctGlyphsAndTheirReversedCopies)
{
    juce::Image font;
    ASSERT_TRUE (loadResourceImage ("Fonts.png", font));
    constexpr int cellWidth = 7, cellHeight = 9, cells = 96;
    ASSERT_EQ (font.getWidth(), cellWidth);
    ASSERT_EQ (font.getHeight(), cellHeight * cells * 2);
    auto cell = [&font] (int i) {
        return font.getClippedImage ({ 0, i * cellHeight, cellWidth, cellHeight });
    };

    // Characters 33 to 126 all look different.
    for (int a = 1; a < cells - 1; ++a)
        for (int b = a + 1; b < cells - 1; ++b)
            EXPECT_FALSE (samePixels (cell (a), cell (b))) << (char) (32 + a) << " and " << (char) (32 + b);

    // The second half is the first with its two colours swapped.
    const auto ink = juce::Colour (0xffbef6ff), paper = juce::Colour (0xff232224);
    for (int i = 0; i < cells; ++i)
    {
        const auto normal = cell (i), reversed = cell (cells + i);
        for (int y = 0; y < cellHeight; ++y)
            for (int x = 0; x < cellWidth; ++x)
            {
                const auto c = normal.getPixelAt (x, y);
                ASSERT_TRUE (c == ink || c == paper) << "cell " << i;
                EXPECT_EQ (reversed.getPixelAt (x, y), c == ink ? paper : ink) << "cell " << i;
            }
    }
}
