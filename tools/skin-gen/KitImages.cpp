#include "KitImages.h"

#include "common/EmbeddedFonts.h"

namespace
{
// The kit shares the face's look: dark cells, light glyphs in the face's accent.
const juce::Colour cellColour (0xff15171a), unlitColour (0xff2a2f35), glyphColour (0xff79e0f2);
const juce::Colour whiteKey (0xffe9ecef), whiteKeyDown (0xffb9c0c7), blackKey (0xff1d2024),
    blackKeyDown (0xff4b525a);
const juce::Colour keyEdge (0xff0c0d0e), neighbourShade (0x40000000);

constexpr int digitWidth = 9, digitHeight = 14, signWidth = 7;
constexpr int whiteKeyWidth = 12, whiteKeyHeight = 40, blackKeyWidth = 8, blackKeyHeight = 26;
constexpr int noteCellWidth = 10, noteCellHeight = 16;

/** A strip of cells, each showing its text (an empty text: the unlit cell). */
juce::Image glyphStrip (const juce::StringArray& glyphs, int width, int height)
{
    juce::Image strip (juce::Image::RGB, width, height * glyphs.size(), true);
    juce::Graphics g (strip);
    g.setFont (EmbeddedFonts::make ((float) height - 2.0f, true));
    for (int i = 0; i < glyphs.size(); ++i)
    {
        const juce::Rectangle<int> cell (0, i * height, width, height);
        g.setColour (cellColour);
        g.fillRect (cell);
        g.setColour (glyphs[i].isEmpty() ? unlitColour : glyphColour);
        g.drawText (glyphs[i].isEmpty() ? juce::String ("8") : glyphs[i], cell, juce::Justification::centred,
                    false);
    }
    return strip;
}

juce::StringArray digitsFrom (int first, int last)
{
    juce::StringArray glyphs;
    for (int d = first; d <= last; ++d)
        glyphs.add (juce::String (d));
    return glyphs;
}

/** A key's strip: a picture for every combination of its covered neighbours' presses (the highest
    neighbour the highest bit), first with the key up, then pressed. */
juce::Image keyStrip (bool black, int left, int right)
{
    const int width = black ? blackKeyWidth : whiteKeyWidth, height = black ? blackKeyHeight : whiteKeyHeight;
    const int combinations = 1 << (left + right);
    juce::Image strip (juce::Image::RGB, width, height * combinations * 2, true);
    juce::Graphics g (strip);
    for (int frame = 0; frame < combinations * 2; ++frame)
    {
        const bool pressed = frame >= combinations;
        const int bits = frame % combinations;
        const auto area = juce::Rectangle<int> (0, frame * height, width, height).toFloat();
        g.setColour (black ? (pressed ? blackKeyDown : blackKey) : (pressed ? whiteKeyDown : whiteKey));
        g.fillRect (area);
        // A pressed neighbour throws a shade on the edge beside it: the low bits are the notes below.
        for (int n = 0; n < left + right; ++n)
            if ((bits >> n) & 1)
            {
                const bool below = n < left;
                g.setColour (neighbourShade);
                g.fillRect (below ? area.withWidth (3.0f) : area.withTrimmedLeft (area.getWidth() - 3.0f));
            }
        g.setColour (keyEdge);
        g.drawRect (area, 1.0f);
    }
    return strip;
}
} // namespace

std::vector<SkinImages::Picture> KitImages::render()
{
    auto withBlank = [] (juce::StringArray glyphs)
    {
        glyphs.insert (0, {});
        return glyphs;
    };
    const auto digits = withBlank (digitsFrom (0, 9));
    auto padded = [&] (juce::StringArray glyphs, int frames)
    {
        while (glyphs.size() < frames)
            glyphs.add ("?");
        return glyphs;
    };
    const juce::StringArray letters ("C", "D", "E", "F", "G", "A", "B");
    juce::StringArray banks;
    for (char bank = 'A'; bank <= 'J'; ++bank)
        banks.add (juce::String::charToString (bank));

    std::vector<SkinImages::Picture> kit;
    kit.push_back ({ "KitDigit.png", glyphStrip (digits, digitWidth, digitHeight) });
    kit.push_back ({ "KitSign.png", glyphStrip ({ "", "-" }, signWidth, digitHeight) });
    // The pattern digits: the first shows the note mark or a bank, the second a tens digit, a letter or the
    // bank's separator, the third a digit, a sharp or a natural, the fourth a digit.
    auto first = withBlank (banks);
    first.add ("N");
    auto second = withBlank (digitsFrom (0, 9));
    second.addArray (letters);
    second.add (":");
    auto third = withBlank (digitsFrom (0, 9));
    third.addArray ({ "#", "-" });
    kit.push_back ({ "KitPatternFirst.png", glyphStrip (padded (first, 12), digitWidth, digitHeight) });
    kit.push_back ({ "KitPatternSecond.png", glyphStrip (padded (second, 19), digitWidth, digitHeight) });
    kit.push_back ({ "KitPatternThird.png", glyphStrip (padded (third, 13), digitWidth, digitHeight) });
    kit.push_back ({ "KitPatternFourth.png", glyphStrip (digits, digitWidth, digitHeight) });
    kit.push_back ({ "KitKeyWhite.png", keyStrip (false, whiteKeyLeft, whiteKeyRight) });
    kit.push_back ({ "KitKeyBlack.png", keyStrip (true, 0, 0) });
    auto notes = withBlank (letters);
    notes.add ("?");
    kit.push_back ({ "KitNotes.png", glyphStrip (notes, noteCellWidth, noteCellHeight) });
    kit.push_back ({ "KitTones.png", glyphStrip ({ "", "#", "-" }, noteCellWidth, noteCellHeight) });
    auto octaves = withBlank (digitsFrom (0, 10));
    octaves.add ("?");
    kit.push_back ({ "KitOctaves.png", glyphStrip (octaves, noteCellWidth, noteCellHeight) });
    return kit;
}
