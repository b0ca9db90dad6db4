#include "ContactSheet.h"

#include "DialogImages.h"
#include "FaceLayout.h"
#include "FacePainter.h"
#include "KitImages.h"
#include "SkinImages.h"

#include "common/EmbeddedFonts.h"

namespace
{
// The sheet's own layout: a margin, room for numbers under each frame and for a name over each strip.
constexpr int margin = 12, numberRoom = 12, nameRoom = 16, sheetWidth = 1400;
const juce::Colour sheetBackground (0xffe9ebee), sheetInk (0xff202326);

int frameForValue (const FaceLayout::Control& c, float value)
{
    // The editor's rule: floor((n - 1) x v + 0.5) in single precision.
    return (int) std::floor ((float) (c.frames - 1) * juce::jlimit (0.0f, 1.0f, value) + 0.5f);
}
} // namespace

juce::Image ContactSheet::render (int scale)
{
    const auto pictures = SkinImages::render (scale);
    const auto background = pictures.front().image;

    // Lay out first, to know the height.
    struct Placed
    {
        juce::String name;
        juce::Image strip;
        int frames, x, y;
    };
    std::vector<Placed> placed;
    int y = margin;
    for (const auto& c : FaceLayout::getControls())
    {
        if (c.look == FaceLayout::Look::display)
            continue;
        const auto strip = SkinImages::renderStrip (c, background, scale);
        const int w = c.bounds.getWidth() * scale + 4, h = c.bounds.getHeight() * scale;
        const int perRow = juce::jmax (1, (sheetWidth - 2 * margin) / w);
        placed.push_back ({ c.name, strip, c.frames, margin, y + nameRoom });
        const int rows = (c.frames + perRow - 1) / perRow;
        y += nameRoom + rows * (h + numberRoom) + margin;
    }
    // The kit's strips, each frame as the controls cut it.
    const int kitFrames[] = {
        11, 2, 12, 19, 13, 11, 1 << (KitImages::whiteKeyLeft + KitImages::whiteKeyRight + 1), 2, 9, 3, 13
    };
    int k = 0;
    for (const auto& picture : KitImages::render())
    {
        const int frames = kitFrames[k++];
        const int w = picture.image.getWidth() + 4, h = picture.image.getHeight() / frames;
        const int perRow = juce::jmax (1, (sheetWidth - 2 * margin) / w);
        placed.push_back ({ picture.key, picture.image, frames, margin, y + nameRoom });
        y += nameRoom + ((frames + perRow - 1) / perRow) * (h + numberRoom) + margin;
    }
    // The dialogs' pictures, each whole, in a row that wraps, on the sheet's light ground.
    const int dialogTop = y;
    std::vector<std::pair<SkinImages::Picture, juce::Point<int>>> dialogs;
    {
        int x = margin, rowHeight = 0;
        y += nameRoom;
        for (auto& picture : DialogImages::render (scale))
        {
            const int w = picture.image.getWidth() + 8, h = picture.image.getHeight() + numberRoom;
            if (x + w > sheetWidth - margin)
            {
                x = margin;
                y += rowHeight;
                rowHeight = 0;
            }
            dialogs.push_back ({ picture, { x, y } });
            x += w;
            rowHeight = juce::jmax (rowHeight, h);
        }
        y += rowHeight + margin;
    }
    const int faceTop = y;
    const int faceScale = scale * 2; // the faces twice as large, to look at closely
    const int faceHeight = FaceLayout::height * faceScale;
    const int totalHeight = faceTop + 2 * (faceHeight + nameRoom + margin);

    juce::Image sheet (juce::Image::RGB, sheetWidth, totalHeight, true);
    juce::Graphics g (sheet);
    g.fillAll (sheetBackground);
    g.setFont (EmbeddedFonts::make (11.0f, true));

    for (const auto& p : placed)
    {
        const int fw = p.strip.getWidth(), fh = p.strip.getHeight() / p.frames;
        const int perRow = juce::jmax (1, (sheetWidth - 2 * margin) / (fw + 4));
        g.setColour (sheetInk);
        g.setFont (EmbeddedFonts::make (11.0f, true));
        g.drawText (p.name, p.x, p.y - nameRoom, 400, nameRoom, juce::Justification::centredLeft);
        g.setFont (EmbeddedFonts::make (9.0f));
        for (int f = 0; f < p.frames; ++f)
        {
            const int fx = p.x + (f % perRow) * (fw + 4);
            const int fy = p.y + (f / perRow) * (fh + numberRoom);
            g.drawImage (p.strip, fx, fy, fw, fh, 0, f * fh, fw, fh);
            g.setColour (sheetInk);
            g.drawText (juce::String (f), fx, fy + fh, fw, numberRoom, juce::Justification::centred);
        }
    }

    g.setColour (sheetInk);
    g.setFont (EmbeddedFonts::make (11.0f, true));
    g.drawText ("Dialogs", margin, dialogTop, 400, nameRoom, juce::Justification::centredLeft);
    for (const auto& [picture, at] : dialogs)
        g.drawImageAt (picture.image, at.x, at.y);

    for (int pass = 0; pass < 2; ++pass)
    {
        const int top = faceTop + pass * (faceHeight + nameRoom + margin);
        g.setColour (sheetInk);
        g.setFont (EmbeddedFonts::make (11.0f, true));
        g.drawText (pass == 0 ? "Face at the parameters' defaults" : "Face at every maximum", margin, top,
                    400, nameRoom, juce::Justification::centredLeft);
        juce::Graphics::ScopedSaveState state (g);
        g.setOrigin (margin, top + nameRoom);
        g.addTransform (juce::AffineTransform::scale ((float) faceScale));
        FacePainter::paintFace (g,
                                [pass] (const FaceLayout::Control& c)
                                {
                                    if (pass == 1)
                                        return c.frames - 1;
                                    return frameForValue (c, c.defaultValue);
                                });
    }
    return sheet;
}
