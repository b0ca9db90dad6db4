#include "DialogImages.h"

namespace
{
constexpr float pi = juce::MathConstants<float>::pi;

// The dialogs' own grey look: light tiles and buttons with a mid-grey rim and dark glyphs.
const juce::Colour tileTop (0xfff5f5f5), tileBottom (0xffcbcbcb), tileDownTop (0xffbdbdbd),
    tileDownBottom (0xffd9d9d9);
const juce::Colour rim (0xff6e6e6e), glyphInk (0xff363636), glyphDownInk (0xff1c1c1c), paper (0xffffffff);
const juce::Colour boxTop (0xffffffff), boxBottom (0xffe1e1e1);
const juce::Colour discLight (0xffffb24a), discDark (0xffe0701a), discRim (0xffa8500f);
constexpr float shadowAlpha = 0.35f, highlightAlpha = 0.5f, overlayAlpha = 0.35f;
// The browser's glyphs: black on a plain row, white on a selected one; a folder's back is lighter.
const juce::Colour plainGlyphInk (0xff000000), selectedGlyphInk (0xffffffff);
constexpr float backAlpha = 0.6f;

// The sizes the look and feel expects: text button caps and middles (normal, large), the check box and
// radio images, the title bar's disc, the shadow strips, and the browser's glyphs.
constexpr int capWidth = 15, normalMiddle = 31, normalHeight = 28, largeMiddle = 44, largeHeight = 32;
constexpr int boxWidth = 15, boxHeight = 14, discSide = 24, shadowLength = 40, shadowDepth = 10,
              glyphSide = 16;
// Glyphs are designed on a 16 by 16 grid.
constexpr float grid = 16.0f;

juce::Image canvas (int width, int height, int scale)
{
    return juce::Image (juce::Image::ARGB, width * scale, height * scale, true);
}

struct Pen
{
    Pen (juce::Image& image, int scale)
        : g (image)
    {
        g.addTransform (juce::AffineTransform::scale ((float) scale));
    }
    juce::Graphics g;
};

void outline (juce::Graphics& g, const juce::Path& p, float width)
{
    g.strokePath (p,
                  juce::PathStrokeType (width, juce::PathStrokeType::curved, juce::PathStrokeType::rounded));
}

/** A sheet of paper with a folded corner, white with a dark outline. */
void sheet (juce::Graphics& g, juce::Rectangle<float> r, juce::Colour ink)
{
    juce::Path p;
    const float fold = r.getWidth() * 0.3f;
    p.startNewSubPath (r.getX(), r.getY());
    p.lineTo (r.getRight() - fold, r.getY());
    p.lineTo (r.getRight(), r.getY() + fold);
    p.lineTo (r.getRight(), r.getBottom());
    p.lineTo (r.getX(), r.getBottom());
    p.closeSubPath();
    g.setColour (paper);
    g.fillPath (p);
    g.setColour (ink);
    outline (g, p, 1.1f);
}

void arrowArc (juce::Path& p, float cx, float cy, float radius, float from, float to)
{
    p.addCentredArc (cx, cy, radius, radius, 0.0f, from, to, true);
}

juce::Image tile (int index, int side, bool down, int scale)
{
    auto image = canvas (side, side, scale);
    Pen pen (image, scale);
    auto& g = pen.g;
    const auto s = (float) side;
    const float corner = s * 0.18f;
    // A soft shadow below the tile, then the tile, pressed a pixel lower and darker when down.
    g.setColour (juce::Colours::black.withAlpha (0.18f));
    g.fillRoundedRectangle (1.0f, 2.5f, s - 2.0f, s - 3.0f, corner);
    auto body = juce::Rectangle<float> (1.0f, 1.0f, s - 2.0f, s - 3.5f).translated (0.0f, down ? 1.0f : 0.0f);
    g.setGradientFill (juce::ColourGradient (down ? tileDownTop : tileTop, 0.0f, body.getY(),
                                             down ? tileDownBottom : tileBottom, 0.0f, body.getBottom(),
                                             false));
    g.fillRoundedRectangle (body, corner);
    g.setColour (rim);
    g.drawRoundedRectangle (body.reduced (0.5f), corner, 1.0f);
    DialogImages::paintGlyph (g, index, body.reduced (s * 0.22f), down ? glyphDownInk : glyphInk);
    return image;
}

juce::Image iconStrip (int side, bool down, int scale)
{
    juce::Image strip (juce::Image::ARGB, side * scale, side * scale * DialogImages::numIcons, true);
    juce::Graphics g (strip);
    for (int i = 0; i < DialogImages::numIcons; ++i)
        g.drawImageAt (tile (i, side, down, scale), 0, i * side * scale);
    return strip;
}

/** A whole text button of `middle` pixels between its caps, to be cut into its three slices. */
juce::Image wholeButton (int middle, int height, bool down, int scale)
{
    const int width = capWidth * 2 + middle;
    auto image = canvas (width, height, scale);
    Pen pen (image, scale);
    auto& g = pen.g;
    // Four rows free above; the button proper; below it a soft white edge.
    const auto body = juce::Rectangle<float> (1.0f, 4.0f, (float) width - 2.0f, (float) height - 7.0f);
    const float corner = body.getHeight() * 0.45f;
    g.setColour (juce::Colours::white.withAlpha (highlightAlpha));
    g.fillRoundedRectangle (body.translated (0.0f, 1.5f), corner);
    g.setGradientFill (juce::ColourGradient (down ? tileDownTop : tileTop, 0.0f, body.getY(),
                                             down ? tileDownBottom : tileBottom, 0.0f, body.getBottom(),
                                             false));
    g.fillRoundedRectangle (body, corner);
    g.setColour (rim);
    g.drawRoundedRectangle (body.reduced (0.5f), corner, 1.0f);
    return image;
}

juce::Image overlay (int middle, int height, int scale)
{
    auto image = canvas (middle, height, scale);
    Pen pen (image, scale);
    // A shine across the upper part of the button proper.
    pen.g.setColour (juce::Colours::white.withAlpha (overlayAlpha));
    pen.g.fillRect (0.0f, 5.0f, (float) middle, ((float) height - 7.0f) * 0.4f);
    return image;
}

void addButtonSet (std::vector<SkinImages::Picture>& pictures, const juce::String& name, int middle,
                   int height, int scale)
{
    for (const bool down : { false, true })
    {
        const auto whole = wholeButton (middle, height, down, scale);
        const juce::String state = down ? "Down" : "";
        const int cap = capWidth * scale, mid = middle * scale, h = height * scale;
        pictures.push_back (
            { name + state + "Left.png", whole.getClippedImage ({ 0, 0, cap, h }).createCopy() });
        pictures.push_back (
            { name + state + "Middle.png", whole.getClippedImage ({ cap, 0, mid, h }).createCopy() });
        pictures.push_back (
            { name + state + "Right.png", whole.getClippedImage ({ cap + mid, 0, cap, h }).createCopy() });
    }
    pictures.push_back ({ name + "Overlay.png", overlay (middle, height, scale) });
}

juce::Image box (bool radio, bool on, int scale)
{
    auto image = canvas (boxWidth, boxHeight, scale);
    Pen pen (image, scale);
    auto& g = pen.g;
    const auto area = juce::Rectangle<float> (1.5f, 1.0f, 12.0f, 12.0f);
    g.setGradientFill (
        juce::ColourGradient (boxTop, 0.0f, area.getY(), boxBottom, 0.0f, area.getBottom(), false));
    if (radio)
        g.fillEllipse (area);
    else
        g.fillRoundedRectangle (area, 3.0f);
    g.setColour (rim);
    if (radio)
        g.drawEllipse (area.reduced (0.5f), 1.0f);
    else
        g.drawRoundedRectangle (area.reduced (0.5f), 3.0f, 1.0f);
    if (on)
    {
        g.setColour (juce::Colours::black);
        if (radio)
        {
            g.fillEllipse (area.withSizeKeepingCentre (5.0f, 5.0f));
        }
        else
        {
            juce::Path tick;
            tick.startNewSubPath (4.5f, 7.0f);
            tick.lineTo (6.8f, 9.6f);
            tick.lineTo (11.0f, 4.0f);
            outline (g, tick, 1.8f);
        }
    }
    return image;
}

juce::Image disc (int scale)
{
    auto image = canvas (discSide, discSide, scale);
    Pen pen (image, scale);
    auto& g = pen.g;
    const auto area = juce::Rectangle<float> (2.0f, 2.0f, 20.0f, 20.0f);
    g.setGradientFill (juce::ColourGradient (discLight, 9.0f, 7.0f, discDark, 16.0f, 20.0f, true));
    g.fillEllipse (area);
    g.setColour (discRim);
    g.drawEllipse (area.reduced (0.5f), 1.0f);
    return image;
}

/** A shadow strip, darkest at the window's edge: the top one at its top, and so on. */
juce::Image shadow (int side, int scale)
{
    const bool horizontal = side == 0 || side == 1;
    const int width = horizontal ? shadowLength : shadowDepth,
              height = horizontal ? shadowDepth : shadowLength;
    juce::Image image (juce::Image::ARGB, width * scale, height * scale, true);
    const int depth = shadowDepth * scale;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
        {
            const int fromEdge = side == 0   ? y
                                 : side == 1 ? image.getHeight() - 1 - y
                                 : side == 2 ? x
                                             : image.getWidth() - 1 - x;
            const float share = 1.0f - ((float) fromEdge + 0.5f) / (float) depth;
            image.setPixelAt (x, y, juce::Colours::black.withAlpha (shadowAlpha * share * share));
        }
    return image;
}

/** A closed folder: the back with its tab a little lighter than the front flap, so that it reads in black
    on a plain row and in white on a selected one. */
juce::Image folderGlyph (juce::Colour ink, int scale)
{
    auto image = canvas (glyphSide, glyphSide, scale);
    Pen pen (image, scale);
    auto& g = pen.g;
    g.setColour (ink.withMultipliedAlpha (backAlpha));
    g.fillRoundedRectangle (1.0f, 2.5f, 6.0f, 3.0f, 1.0f);
    g.fillRoundedRectangle (1.0f, 4.0f, 14.0f, 10.0f, 1.2f);
    juce::Path flap;
    flap.startNewSubPath (2.6f, 6.5f);
    flap.lineTo (15.0f, 6.5f);
    flap.lineTo (13.6f, 14.0f);
    flap.lineTo (1.0f, 14.0f);
    flap.closeSubPath();
    g.setColour (ink);
    g.fillPath (flap);
    return image;
}

/** Two eighth notes joined by a beam, in black for a plain row and in white for a selected one. */
juce::Image noteGlyph (juce::Colour ink, int scale)
{
    auto image = canvas (glyphSide, glyphSide, scale);
    Pen pen (image, scale);
    auto& g = pen.g;
    g.setColour (ink);
    constexpr float headWidth = 4.6f, headHeight = 3.4f, tilt = -0.35f, stem = 1.2f;
    const juce::Point<float> heads[] = { { 4.0f, 12.6f }, { 11.6f, 11.2f } };
    for (const auto head : heads)
    {
        g.fillEllipse (juce::Rectangle<float> (headWidth, headHeight)
                           .withCentre (head)
                           .transformedBy (juce::AffineTransform::rotation (tilt, head.x, head.y)));
        const float x = head.x + headWidth / 2.0f - stem;
        g.fillRect (x, head.y - 9.0f, stem, 9.0f);
    }
    // The beam runs from stem top to stem top, as thick as two stems.
    const float left = heads[0].x + headWidth / 2.0f - stem, right = heads[1].x + headWidth / 2.0f;
    juce::Path beam;
    beam.startNewSubPath (left, heads[0].y - 9.0f);
    beam.lineTo (right, heads[1].y - 9.0f);
    beam.lineTo (right, heads[1].y - 9.0f + 2.0f * stem);
    beam.lineTo (left, heads[0].y - 9.0f + 2.0f * stem);
    beam.closeSubPath();
    g.fillPath (beam);
    return image;
}
} // namespace

void DialogImages::paintGlyph (juce::Graphics& g, int index, juce::Rectangle<float> area, juce::Colour ink)
{
    juce::Graphics::ScopedSaveState state (g);
    g.addTransform (juce::AffineTransform::scale (area.getWidth() / grid, area.getHeight() / grid)
                        .translated (area.getX(), area.getY()));
    g.setColour (ink);
    juce::Path p;
    switch (index)
    {
        case 0: // cross
            p.startNewSubPath (4.0f, 4.0f);
            p.lineTo (12.0f, 12.0f);
            p.startNewSubPath (12.0f, 4.0f);
            p.lineTo (4.0f, 12.0f);
            outline (g, p, 2.4f);
            break;
        case 1: // two sheets
            sheet (g, { 6.0f, 1.5f, 8.0f, 10.0f }, ink);
            sheet (g, { 2.5f, 4.5f, 8.0f, 10.0f }, ink);
            break;
        case 2: // scissors
            p.addEllipse (2.5f, 10.0f, 4.0f, 4.0f);
            p.addEllipse (9.5f, 10.0f, 4.0f, 4.0f);
            p.startNewSubPath (6.0f, 10.5f);
            p.lineTo (11.5f, 1.5f);
            p.startNewSubPath (10.0f, 10.5f);
            p.lineTo (4.5f, 1.5f);
            outline (g, p, 1.4f);
            break;
        case 3: // clipboard with a sheet
            g.fillRoundedRectangle (2.5f, 2.5f, 11.0f, 12.5f, 1.5f);
            sheet (g, { 4.5f, 5.0f, 7.0f, 8.5f }, ink);
            g.setColour (ink);
            g.fillRoundedRectangle (5.5f, 1.0f, 5.0f, 3.0f, 1.0f);
            break;
        case 4: // sheet with a cross
            sheet (g, { 2.5f, 1.5f, 8.5f, 11.5f }, ink);
            p.startNewSubPath (9.5f, 9.5f);
            p.lineTo (14.0f, 14.0f);
            p.startNewSubPath (14.0f, 9.5f);
            p.lineTo (9.5f, 14.0f);
            outline (g, p, 1.8f);
            break;
        case 5: // triangle down
            p.addTriangle (3.5f, 5.0f, 12.5f, 5.0f, 8.0f, 11.5f);
            g.fillPath (p);
            break;
        case 6: // triangle up
            p.addTriangle (3.5f, 11.0f, 12.5f, 11.0f, 8.0f, 4.5f);
            g.fillPath (p);
            break;
        case 7: // triangle left
            p.addTriangle (11.0f, 3.5f, 11.0f, 12.5f, 4.5f, 8.0f);
            g.fillPath (p);
            break;
        case 8: // triangle right
            p.addTriangle (5.0f, 3.5f, 5.0f, 12.5f, 11.5f, 8.0f);
            g.fillPath (p);
            break;
        case 9: // plus
            g.fillRect (6.8f, 2.5f, 2.4f, 11.0f);
            g.fillRect (2.5f, 6.8f, 11.0f, 2.4f);
            break;
        case 10: // minus
            g.fillRect (2.5f, 6.8f, 11.0f, 2.4f);
            break;
        case 11: // folder with a sheet
            g.fillRoundedRectangle (1.5f, 3.0f, 6.0f, 3.0f, 1.0f);
            sheet (g, { 4.0f, 2.5f, 8.0f, 7.0f }, ink);
            g.setColour (ink);
            g.fillRoundedRectangle (1.5f, 5.5f, 13.0f, 8.5f, 1.2f);
            break;
        case 12: // waste bin
            g.fillRoundedRectangle (6.0f, 1.0f, 4.0f, 2.0f, 0.8f);
            g.fillRect (2.5f, 3.2f, 11.0f, 1.6f);
            p.startNewSubPath (4.0f, 5.5f);
            p.lineTo (5.0f, 14.5f);
            p.lineTo (11.0f, 14.5f);
            p.lineTo (12.0f, 5.5f);
            p.startNewSubPath (6.8f, 7.0f);
            p.lineTo (7.0f, 13.0f);
            p.startNewSubPath (9.2f, 7.0f);
            p.lineTo (9.0f, 13.0f);
            outline (g, p, 1.2f);
            break;
        case 13: // two arrows in a circle, each turning clockwise with its head at its end
        {
            const juce::Point<float> centre (8.0f, 8.0f);
            constexpr float radius = 5.2f;
            juce::Path heads;
            for (const float start : { 0.15f * pi, 1.15f * pi })
            {
                const float end = start + 0.62f * pi;
                arrowArc (p, centre.x, centre.y, radius, start, end);
                const auto at = centre.getPointOnCircumference (radius, end);
                const juce::Point<float> along (std::cos (end), std::sin (end)),
                    across (std::sin (end), -std::cos (end));
                const auto tip = at + along * 2.6f;
                const auto a = at + across * 2.3f, b = at - across * 2.3f;
                heads.addTriangle (tip.x, tip.y, a.x, a.y, b.x, b.y);
            }
            outline (g, p, 1.5f);
            g.fillPath (heads);
            break;
        }
        case 14: // gear wheel
        {
            constexpr int teeth = 8;
            for (int i = 0; i < teeth; ++i)
            {
                juce::Path tooth;
                tooth.addRectangle (-1.3f, -7.2f, 2.6f, 3.0f);
                p.addPath (tooth, juce::AffineTransform::rotation (2.0f * pi * (float) i / (float) teeth)
                                      .translated (8.0f, 8.0f));
            }
            p.addEllipse (2.8f, 2.8f, 10.4f, 10.4f);
            p.addEllipse (5.8f, 5.8f, 4.4f, 4.4f);
            p.setUsingNonZeroWinding (false);
            g.fillPath (p);
            break;
        }
        case 15: // open folder
            g.fillRoundedRectangle (1.5f, 3.0f, 6.0f, 3.0f, 1.0f);
            g.fillRoundedRectangle (1.5f, 4.5f, 12.0f, 9.5f, 1.2f);
            p.startNewSubPath (4.0f, 7.5f);
            p.lineTo (15.0f, 7.5f);
            p.lineTo (12.5f, 14.0f);
            p.lineTo (1.5f, 14.0f);
            p.closeSubPath();
            g.setColour (paper);
            g.fillPath (p);
            g.setColour (ink);
            outline (g, p, 1.1f);
            break;
        case 16: // floppy disk
            p.startNewSubPath (2.0f, 2.0f);
            p.lineTo (12.0f, 2.0f);
            p.lineTo (14.0f, 4.0f);
            p.lineTo (14.0f, 14.0f);
            p.lineTo (2.0f, 14.0f);
            p.closeSubPath();
            g.fillPath (p);
            g.setColour (paper);
            g.fillRect (4.5f, 2.0f, 6.0f, 4.0f);
            g.fillRect (4.0f, 8.5f, 8.0f, 5.5f);
            g.setColour (ink);
            g.fillRect (8.5f, 2.6f, 1.5f, 2.8f);
            break;
        default:
            break;
    }
}

std::vector<SkinImages::Picture> DialogImages::render (int scale)
{
    std::vector<SkinImages::Picture> pictures;
    for (const int side : { smallIcon, largeIcon })
        for (const bool down : { false, true })
            pictures.push_back ({ "Icons" + juce::String (side) + (down ? "Down" : "") + ".png",
                                  iconStrip (side, down, scale) });
    addButtonSet (pictures, "Button", normalMiddle, normalHeight, scale);
    addButtonSet (pictures, "LargeButton", largeMiddle, largeHeight, scale);
    pictures.push_back ({ "CheckOff.png", box (false, false, scale) });
    pictures.push_back ({ "CheckOn.png", box (false, true, scale) });
    pictures.push_back ({ "RadioOff.png", box (true, false, scale) });
    pictures.push_back ({ "RadioOn.png", box (true, true, scale) });
    pictures.push_back ({ "TitleDisc.png", disc (scale) });
    const char* const sides[] = { "Top", "Bottom", "Left", "Right" };
    for (int side = 0; side < 4; ++side)
        pictures.push_back ({ juce::String ("Shadow") + sides[side] + ".png", shadow (side, scale) });
    pictures.push_back ({ "FolderGlyph.png", folderGlyph (plainGlyphInk, scale) });
    pictures.push_back ({ "FolderGlyphSelected.png", folderGlyph (selectedGlyphInk, scale) });
    pictures.push_back ({ "NoteGlyph.png", noteGlyph (plainGlyphInk, scale) });
    pictures.push_back ({ "NoteGlyphSelected.png", noteGlyph (selectedGlyphInk, scale) });
    for (auto& picture : pictures)
        picture.key = SkinImages::keyAtScale (picture.key, scale);
    return pictures;
}
