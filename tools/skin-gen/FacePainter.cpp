#include "FacePainter.h"

#include "common/EmbeddedFonts.h"

#include <cmath>

namespace
{
using Control = FaceLayout::Control;
using Look = FaceLayout::Look;

constexpr float pi = juce::MathConstants<float>::pi;

// The palette: a graphite panel, light grey print, and one cool accent that the display's own colours
// (FFBEF6FF on FF232224) set.
const juce::Colour faceTop (0xff33373c), faceBottom (0xff25282c);
const juce::Colour barTop (0xff1f2225), barBottom (0xff191b1e);
const juce::Colour grooveDark (0xff111214), grooveLight (0xff41464c);
const juce::Colour captionInk (0xffc3cad1), scaleInk (0xff98a1aa), headerInk (0xff9aa3ac);
const juce::Colour accent (0xff79e0f2), accentDim (0xff2f5d66);
const juce::Colour well (0xff131517), wellRim (0xff4a5057);
const juce::Colour capTop (0xff5a6068), capBottom (0xff30343a), capFace (0xff43484f);
const juce::Colour pointerInk (0xffeef7fa);
const juce::Colour lampDark (0xff22272b), lampRim (0xff0c0d0e);
const juce::Colour meterGreen (0xff5fd68a), meterAmber (0xfff2c65a), meterRed (0xfff0604f);

// Knob geometry, in pixels from the centre: the printed scale, the lit arc, the well and the body.
constexpr float scaleInner = 15.2f, scaleOuter = 17.0f;
constexpr float arcRadius = 13.6f, arcWidth = 1.6f;
constexpr float wellRadius = 12.6f, bodyRadius = 11.2f, capRadius = 7.6f;
constexpr float pointerInner = 3.6f, pointerOuter = 10.0f;
constexpr float detentRadius = 15.3f, detentDot = 0.9f;
// A knob sweeps 300 degrees, centred on twelve o'clock; the five-way filter type 240, so that its five
// names stand clear of its neighbours.
constexpr float knobSweep = 300.0f * pi / 180.0f;
constexpr float typeSweep = 240.0f * pi / 180.0f;

// Text sizes: captions under the controls, scale figures, section headers.
constexpr float captionHeight = 8.5f, scaleHeight = 7.5f, headerHeight = 7.5f;

// The meter: eleven lamps from the bottom; the dB value at which each lights, from the meter's 30 dB span
// with 0 dB at 0.8 of it, and a lamp lit from half a step below its place.
constexpr int numLamps = 11;
constexpr float lampPitch = 7.4f, lampHeight = 5.4f, lampBottom = 84.0f, lampWidth = 12.0f;
float lampThresholdDb (int lamp) { return (((float) lamp - 0.5f) / (float) numLamps - 0.8f) * 30.0f; }

void text (juce::Graphics& g, const juce::String& s, juce::Rectangle<float> area, juce::Justification just,
           float height, bool bold, juce::Colour colour, float kerning = 0.0f)
{
    g.setColour (colour);
    g.setFont (EmbeddedFonts::make (height, bold).withExtraKerningFactor (kerning));
    g.drawText (s, area, just, false);
}

// A line cut into the panel: dark, with a light edge below or to the right.
void groove (juce::Graphics& g, float x1, float y1, float x2, float y2)
{
    const bool horizontal = y1 == y2;
    g.setColour (grooveDark);
    g.drawLine (x1, y1, x2, y2, 1.0f);
    g.setColour (grooveLight.withAlpha (0.5f));
    if (horizontal)
        g.drawLine (x1, y1 + 1.0f, x2, y2 + 1.0f, 1.0f);
    else
        g.drawLine (x1 + 1.0f, y1, x2 + 1.0f, y2, 1.0f);
}

juce::Point<float> polar (juce::Point<float> centre, float radius, float angle)
{
    return centre.getPointOnCircumference (radius, angle);
}

float sweepOf (const Control& c)
{
    return c.look == Look::steppedKnob && c.frames == 5 ? typeSweep : knobSweep;
}

float angleOf (const Control& c, int frame)
{
    const float sweep = sweepOf (c);
    return -sweep / 2.0f + sweep * (float) frame / (float) (c.frames - 1);
}

juce::Point<float> knobCentre (const Control& c) { return c.bounds.toFloat().getCentre(); }

// A recessed well with a rim light on its lower edge.
void recess (juce::Graphics& g, juce::Rectangle<float> r, float corner)
{
    g.setColour (well);
    g.fillRoundedRectangle (r, corner);
    g.setColour (grooveDark);
    g.drawRoundedRectangle (r.reduced (0.5f), corner, 1.0f);
    g.setColour (wellRim.withAlpha (0.6f));
    g.drawLine (r.getX() + corner, r.getBottom() - 0.5f, r.getRight() - corner, r.getBottom() - 0.5f, 1.0f);
}

//==============================================================================
// Knobs

void paintKnobStatic (juce::Graphics& g, const Control& c)
{
    const auto centre = knobCentre (c);
    const float sweep = sweepOf (c);

    if (c.look == Look::knob)
    {
        // Eleven marks, the two ends and the middle a little longer and brighter.
        for (int i = 0; i <= 10; ++i)
        {
            const float angle = -sweep / 2.0f + sweep * (float) i / 10.0f;
            const bool major = i == 0 || i == 5 || i == 10;
            g.setColour (major ? scaleInk.brighter (0.3f) : scaleInk.withAlpha (0.8f));
            g.drawLine (juce::Line<float> (polar (centre, major ? scaleInner - 0.6f : scaleInner, angle),
                                           polar (centre, scaleOuter, angle)),
                        major ? 1.2f : 0.9f);
        }
    }
    else
    {
        for (int i = 0; i < c.frames; ++i)
        {
            g.setColour (scaleInk);
            const auto p = polar (centre, detentRadius, angleOf (c, i));
            g.fillEllipse (juce::Rectangle<float> (detentDot * 2.0f, detentDot * 2.0f).withCentre (p));
        }
    }

    g.setColour (well);
    g.fillEllipse (juce::Rectangle<float> (wellRadius * 2.0f, wellRadius * 2.0f).withCentre (centre));

    const auto body = juce::Rectangle<float> (bodyRadius * 2.0f, bodyRadius * 2.0f).withCentre (centre);
    g.setGradientFill (juce::ColourGradient (capTop, body.getX(), body.getY(), capBottom, body.getX(),
                                             body.getBottom(), false));
    g.fillEllipse (body);
    g.setColour (juce::Colours::white.withAlpha (0.18f));
    g.drawEllipse (body.reduced (0.5f), 0.8f);

    const auto cap = juce::Rectangle<float> (capRadius * 2.0f, capRadius * 2.0f).withCentre (centre);
    g.setGradientFill (juce::ColourGradient (capBottom, cap.getX(), cap.getY(), capFace, cap.getX(),
                                             cap.getBottom(), false));
    g.fillEllipse (cap);

    // Captions under the knob, the ends of the scale beside its lower corners.
    const auto b = c.bounds.toFloat();
    if (c.caption != nullptr)
        text (g, c.caption, { b.getX() - 12.0f, b.getBottom() + 0.5f, b.getWidth() + 24.0f, 9.0f },
              juce::Justification::centredTop, captionHeight, true, captionInk);
    if (c.lowText != nullptr)
        text (g, c.lowText, { b.getX() - 30.0f, b.getBottom() - 9.0f, 32.0f, 9.0f },
              juce::Justification::bottomRight, scaleHeight, false, scaleInk);
    if (c.highText != nullptr)
        text (g, c.highText, { b.getRight() - 2.0f, b.getBottom() - 9.0f, 32.0f, 9.0f },
              juce::Justification::bottomLeft, scaleHeight, false, scaleInk);

    // Named detents stand just outside the scale, each beside its own dot.
    for (int i = 0; i < (int) c.detents.size(); ++i)
    {
        const juce::String name (c.detents[(size_t) i]);
        if (name.isEmpty())
            continue;
        const float angle = angleOf (c, i);
        const auto at = polar (centre, scaleOuter + 1.5f, angle);
        const float s = std::sin (angle);
        const auto just = s < -0.3f  ? juce::Justification::centredRight
                          : s > 0.3f ? juce::Justification::centredLeft
                                     : juce::Justification::centredBottom;
        auto area = juce::Rectangle<float> (24.0f, 8.0f);
        if (just == juce::Justification::centredRight)
            area = area.withRightX (at.x).withCentre ({ area.getCentreX(), at.y }).withRightX (at.x);
        else if (just == juce::Justification::centredLeft)
            area = area.withX (at.x).withCentre ({ area.getCentreX(), at.y }).withX (at.x);
        else
            area = area.withCentre (at).withBottomY (at.y + 1.0f);
        text (g, name, area, just, scaleHeight, false, scaleInk);
    }
}

void paintKnobFrame (juce::Graphics& g, const Control& c, int frame)
{
    const auto centre = knobCentre (c);
    const float angle = angleOf (c, frame);
    const float start = -sweepOf (c) / 2.0f;

    if (c.look == Look::knob && frame > 0)
    {
        juce::Path arc;
        arc.addCentredArc (centre.x, centre.y, arcRadius, arcRadius, 0.0f, start, angle, true);
        g.setColour (accent);
        g.strokePath (
            arc, juce::PathStrokeType (arcWidth, juce::PathStrokeType::curved, juce::PathStrokeType::butt));
    }
    if (c.look == Look::steppedKnob)
    {
        g.setColour (accent);
        const auto p = polar (centre, detentRadius, angle);
        g.fillEllipse (juce::Rectangle<float> (detentDot * 2.4f, detentDot * 2.4f).withCentre (p));
    }

    const juce::Line<float> pointer (polar (centre, pointerInner, angle),
                                     polar (centre, pointerOuter, angle));
    g.setColour (juce::Colours::black.withAlpha (0.45f));
    g.drawLine ({ pointer.getStart().translated (0.0f, 0.8f), pointer.getEnd().translated (0.0f, 0.8f) },
                2.4f);
    g.setColour (pointerInk);
    g.drawLine (pointer, 1.7f);
}

//==============================================================================
// Lever

juce::Rectangle<float> leverArea (const Control& c) { return c.bounds.toFloat(); }

void paintLeverStatic (juce::Graphics& g, const Control& c)
{
    const auto b = leverArea (c);
    const auto centre = b.getCentre();
    text (g, "PRE", b.withHeight (9.0f).translated (0.0f, 1.0f), juce::Justification::centred, scaleHeight,
          true, scaleInk);
    text (g, "POST", b.withTrimmedTop (b.getHeight() - 10.0f).translated (0.0f, -1.0f),
          juce::Justification::centred, scaleHeight, true, scaleInk);

    // The plate and nut the bat stands in.
    const auto plate = juce::Rectangle<float> (17.0f, 36.0f).withCentre (centre);
    recess (g, plate, 4.0f);
    const auto nut = juce::Rectangle<float> (11.0f, 11.0f).withCentre (centre);
    g.setGradientFill (
        juce::ColourGradient (capTop, nut.getX(), nut.getY(), capBottom, nut.getX(), nut.getBottom(), false));
    g.fillEllipse (nut);
    g.setColour (grooveDark);
    g.drawEllipse (nut, 0.8f);
}

void paintLeverFrame (juce::Graphics& g, const Control& c, int frame)
{
    const auto b = leverArea (c);
    const auto centre = b.getCentre();
    const bool up = frame == 1; // frame 1 is up: the filter before the crusher
    const float tipY = centre.y + (up ? -13.0f : 13.0f);

    juce::Path bat;
    bat.startNewSubPath (centre.x - 2.0f, centre.y);
    bat.lineTo (centre.x - 3.2f, tipY);
    bat.lineTo (centre.x + 3.2f, tipY);
    bat.lineTo (centre.x + 2.0f, centre.y);
    bat.closeSubPath();
    g.setGradientFill (
        juce::ColourGradient (pointerInk, centre.x - 3.0f, 0.0f, capBottom, centre.x + 3.5f, 0.0f, false));
    g.fillPath (bat);
    const auto knobEnd = juce::Rectangle<float> (8.0f, 8.0f).withCentre ({ centre.x, tipY });
    g.setGradientFill (juce::ColourGradient (pointerInk, knobEnd.getX(), knobEnd.getY(), capFace,
                                             knobEnd.getRight(), knobEnd.getBottom(), false));
    g.fillEllipse (knobEnd);
    g.setColour (grooveDark);
    g.drawEllipse (knobEnd, 0.6f);

    // The position in force reads in the accent.
    if (up)
        text (g, "PRE", b.withHeight (9.0f).translated (0.0f, 1.0f), juce::Justification::centred,
              scaleHeight, true, accent);
    else
        text (g, "POST", b.withTrimmedTop (b.getHeight() - 10.0f).translated (0.0f, -1.0f),
              juce::Justification::centred, scaleHeight, true, accent);
}

//==============================================================================
// Buttons

juce::Rectangle<float> buttonWell (const Control& c)
{
    return c.bounds.toFloat()
        .reduced (3.0f, 2.0f)
        .withTrimmedBottom (c.look == Look::lampButton ? 4.0f : 1.0f);
}

void paintButtonStatic (juce::Graphics& g, const Control& c)
{
    recess (g, buttonWell (c), 4.0f);
    if (c.caption != nullptr)
    {
        const auto b = c.bounds.toFloat();
        text (g, c.caption, { b.getX() - 20.0f, b.getBottom() - 3.5f, b.getWidth() + 40.0f, 9.0f },
              juce::Justification::centredTop, captionHeight, true, captionInk);
    }
}

void paintIcon (juce::Graphics& g, FaceLayout::Icon icon, juce::Point<float> centre, juce::Colour ink)
{
    g.setColour (ink);
    juce::Path p;
    switch (icon)
    {
        case FaceLayout::Icon::gear:
        {
            constexpr int teeth = 8;
            for (int i = 0; i < teeth; ++i)
            {
                const float a = 2.0f * pi * (float) i / (float) teeth;
                juce::Path tooth;
                tooth.addRectangle (-1.6f, -7.6f, 3.2f, 3.4f);
                p.addPath (tooth, juce::AffineTransform::rotation (a).translated (centre));
            }
            p.addEllipse (juce::Rectangle<float> (11.6f, 11.6f).withCentre (centre));
            p.addEllipse (juce::Rectangle<float> (4.4f, 4.4f).withCentre (centre));
            p.setUsingNonZeroWinding (false);
            break;
        }
        case FaceLayout::Icon::previous:
            p.addTriangle (centre.x + 3.5f, centre.y - 5.5f, centre.x + 3.5f, centre.y + 5.5f,
                           centre.x - 4.5f, centre.y);
            break;
        case FaceLayout::Icon::next:
            p.addTriangle (centre.x - 3.5f, centre.y - 5.5f, centre.x - 3.5f, centre.y + 5.5f,
                           centre.x + 4.5f, centre.y);
            break;
        case FaceLayout::Icon::list:
            for (int i = -1; i <= 1; ++i)
            {
                const float y = centre.y + (float) i * 4.0f;
                p.addEllipse (centre.x - 6.5f, y - 1.1f, 2.2f, 2.2f);
                p.addRoundedRectangle (centre.x - 2.5f, y - 1.0f, 9.0f, 2.0f, 1.0f);
            }
            break;
        case FaceLayout::Icon::none:
            break;
    }
    g.fillPath (p);
}

void paintButtonFrame (juce::Graphics& g, const Control& c, int frame)
{
    const bool lamp = c.look == Look::lampButton;
    const bool pressed = (frame & 1) != 0;
    const bool lit = lamp && frame >= 2;

    auto cap = buttonWell (c).reduced (2.0f);
    if (pressed)
        cap = cap.translated (0.0f, 1.0f).withTrimmedBottom (1.0f);
    const auto top = pressed ? capFace : capTop;
    const auto bottom = pressed ? capBottom.darker (0.2f) : capBottom;
    g.setGradientFill (
        juce::ColourGradient (top, cap.getX(), cap.getY(), bottom, cap.getX(), cap.getBottom(), false));
    g.fillRoundedRectangle (cap, 3.0f);
    g.setColour (juce::Colours::white.withAlpha (pressed ? 0.08f : 0.2f));
    g.drawLine (cap.getX() + 3.0f, cap.getY() + 0.5f, cap.getRight() - 3.0f, cap.getY() + 0.5f, 1.0f);
    g.setColour (grooveDark);
    g.drawRoundedRectangle (cap, 3.0f, 0.8f);

    if (lamp)
    {
        const auto lampArea = juce::Rectangle<float> (cap.getWidth() - 10.0f, 4.0f)
                                  .withCentre ({ cap.getCentreX(), cap.getY() + 7.0f });
        g.setColour (lampRim);
        g.fillRoundedRectangle (lampArea.expanded (1.0f), 2.5f);
        if (lit)
        {
            g.setColour (accent.withAlpha (0.35f));
            g.fillRoundedRectangle (lampArea.expanded (1.0f), 2.5f);
            g.setGradientFill (juce::ColourGradient (juce::Colours::white, lampArea.getCentreX(),
                                                     lampArea.getY(), accent, lampArea.getCentreX(),
                                                     lampArea.getBottom(), false));
        }
        else
        {
            g.setColour (lampDark);
        }
        g.fillRoundedRectangle (lampArea, 2.0f);
    }
    else
    {
        paintIcon (g, c.icon, cap.getCentre(), pressed ? accent : captionInk);
    }
}

//==============================================================================
// Meters and lamps

juce::Rectangle<float> lampOf (const Control& c, int lamp)
{
    const auto b = c.bounds.toFloat();
    const bool left = juce::String (c.name).startsWith ("Left");
    const float x = left ? b.getX() + 3.0f : b.getRight() - 3.0f - lampWidth;
    const float bottom = b.getY() + lampBottom - (float) (lamp - 1) * lampPitch;
    return { x, bottom - lampHeight, lampWidth, lampHeight };
}

juce::Colour lampColour (int lamp)
{
    // Green up to the lamp below 0 dB, amber at 0 dB, red above.
    return lamp <= 8 ? meterGreen : lamp == 9 ? meterAmber : meterRed;
}

void paintMeterStatic (juce::Graphics& g, const Control& c)
{
    const auto b = c.bounds.toFloat();
    const bool left = juce::String (c.name).startsWith ("Left");
    const auto column =
        juce::Rectangle<float> (lampWidth + 4.0f, lampBottom - 2.0f)
            .withPosition (left ? b.getX() + 1.0f : b.getRight() - 3.0f - lampWidth - 2.0f, b.getY() + 3.0f);
    recess (g, column, 2.0f);
    for (int lamp = 1; lamp <= numLamps; ++lamp)
    {
        const auto r = lampOf (c, lamp);
        g.setColour (lampColour (lamp).withMultipliedSaturation (0.35f).withMultipliedBrightness (0.28f));
        g.fillRoundedRectangle (r, 1.2f);
        // A mark at every lamp, on the side of the scale.
        const float y = r.getCentreY();
        const float x = left ? column.getRight() + 1.0f : column.getX() - 4.0f;
        g.setColour (scaleInk);
        g.drawLine (x, y, x + 3.0f, y, 0.9f);
    }
}

void paintMeterScale (juce::Graphics& g, const Control& leftMeter, const Control& rightMeter)
{
    // The threshold of every other lamp, between the two columns; the top one and 0 dB's neighbour
    // included.
    const float x = leftMeter.bounds.getRight() - 16.0f;
    for (int lamp = numLamps; lamp >= 1; lamp -= 2)
    {
        const float y =
            (lampOf (leftMeter, lamp).getCentreY() + lampOf (rightMeter, lamp).getCentreY()) / 2.0f;
        const float db = lampThresholdDb (lamp);
        const auto label = (db > 0.0f ? "+" : "") + juce::String (db, 1);
        text (g, label, { x, y - 4.5f, 32.0f, 9.0f }, juce::Justification::centred, 7.0f, false,
              lamp >= 9 ? captionInk : scaleInk);
    }
    text (g, "dB", { x, leftMeter.bounds.toFloat().getBottom() - 3.0f, 32.0f, 9.0f },
          juce::Justification::centred, 7.0f, true, scaleInk);
}

void paintMeterFrame (juce::Graphics& g, const Control& c, int frame)
{
    for (int lamp = 1; lamp <= frame; ++lamp)
    {
        const auto r = lampOf (c, lamp);
        g.setColour (lampColour (lamp));
        g.fillRoundedRectangle (r, 1.2f);
        g.setColour (juce::Colours::white.withAlpha (0.35f));
        g.fillRoundedRectangle (r.withHeight (1.6f).reduced (1.5f, 0.0f).translated (0.0f, 0.6f), 0.8f);
    }
}

juce::Rectangle<float> lampLens (const Control& c) { return c.bounds.toFloat().reduced (4.0f, 4.0f); }

void paintLampStatic (juce::Graphics& g, const Control& c)
{
    recess (g, c.bounds.toFloat().reduced (2.0f, 2.0f), 3.0f);
    g.setColour (lampDark);
    g.fillRoundedRectangle (lampLens (c), 2.0f);
    const bool left = juce::String (c.name).startsWith ("Left");
    const auto b = c.bounds.toFloat();
    text (g, left ? "LEFT" : "RIGHT", { b.getX() - 6.0f, b.getBottom() + 2.0f, b.getWidth() + 12.0f, 10.0f },
          juce::Justification::centredTop, captionHeight + 0.5f, true, captionInk, 0.06f);
}

void paintLampFrame (juce::Graphics& g, const Control& c, int frame)
{
    if (frame == 0)
        return;
    const auto lens = lampLens (c);
    g.setGradientFill (juce::ColourGradient (juce::Colours::white, lens.getCentreX(), lens.getY(), accent,
                                             lens.getCentreX(), lens.getBottom(), false));
    g.fillRoundedRectangle (lens, 2.0f);
}

//==============================================================================
// The panel

void paintPanel (juce::Graphics& g)
{
    const float w = (float) FaceLayout::width, h = (float) FaceLayout::height;
    g.setGradientFill (juce::ColourGradient (faceTop, 0.0f, 0.0f, faceBottom, 0.0f, h, false));
    g.fillRect (0.0f, 0.0f, w, h);

    // The top bar holds the preamp and the preset bar; the right column the master section.
    constexpr float barBottomY = 61.0f, masterX = 484.0f;
    g.setGradientFill (juce::ColourGradient (barTop, 0.0f, 0.0f, barBottom, 0.0f, barBottomY, false));
    g.fillRect (0.0f, 0.0f, masterX, barBottomY);
    groove (g, 0.0f, barBottomY, masterX, barBottomY);
    groove (g, masterX, 0.0f, masterX, h);
    groove (g, 68.0f, 6.0f, 68.0f, barBottomY - 6.0f);

    // Between the two channel rows.
    groove (g, 10.0f, 131.5f, masterX - 10.0f, 131.5f);

    // Section titles over the first row.
    auto header = [&g] (const juce::String& s, float x1, float x2)
    {
        const float y = 69.0f;
        const auto font = EmbeddedFonts::make (headerHeight, true).withExtraKerningFactor (0.12f);
        const float tw = font.getStringWidthFloat (s) + 8.0f;
        const float mid = (x1 + x2) / 2.0f;
        g.setColour (headerInk.withAlpha (0.45f));
        g.drawLine (x1, y, mid - tw / 2.0f, y, 0.8f);
        g.drawLine (mid + tw / 2.0f, y, x2, y, 0.8f);
        text (g, s, { mid - tw / 2.0f, y - 5.0f, tw, 10.0f }, juce::Justification::centred, headerHeight,
              true, headerInk, 0.12f);
    };
    header ("CRUSHER", 84.0f, 258.0f);
    header ("FILTER", 300.0f, 470.0f);

    // The brand, top right.
    text (g, "VANTRICE", { masterX + 6.0f, 8.0f, w - masterX - 12.0f, 18.0f }, juce::Justification::centred,
          17.0f, true, captionInk, 0.16f);
    text (g, "HIGH QUALITY BIT CRUSHER", { masterX + 6.0f, 27.0f, w - masterX - 12.0f, 9.0f },
          juce::Justification::centred, 6.5f, false, accent.withAlpha (0.85f), 0.1f);

    // The preset window and its title.
    const juce::Rectangle<float> window (127.0f, 25.0f, 159.0f, 19.0f);
    recess (g, window, 3.0f);
    g.setColour (juce::Colour (FaceLayout::displayBackground));
    g.fillRect (130.0f, 28.0f, 153.0f, 13.0f);
    text (g, "PRESET", { 130.0f, 14.0f, 100.0f, 9.0f }, juce::Justification::centredLeft, headerHeight, true,
          headerInk, 0.12f);
}

const Control* findControl (const char* name)
{
    for (const auto& c : FaceLayout::getControls())
        if (juce::String (c.name) == name)
            return &c;
    return nullptr;
}
} // namespace

void FacePainter::paintStatic (juce::Graphics& g)
{
    paintPanel (g);
    for (const auto& c : FaceLayout::getControls())
    {
        switch (c.look)
        {
            case Look::knob:
            case Look::steppedKnob:
                paintKnobStatic (g, c);
                break;
            case Look::lever:
                paintLeverStatic (g, c);
                break;
            case Look::lampButton:
            case Look::pushButton:
                paintButtonStatic (g, c);
                break;
            case Look::meter:
                paintMeterStatic (g, c);
                break;
            case Look::lamp:
                paintLampStatic (g, c);
                break;
            case Look::display:
                break;
        }
    }
    if (auto* leftMeter = findControl ("LeftVUMeter"))
        if (auto* rightMeter = findControl ("RightVUMeter"))
            paintMeterScale (g, *leftMeter, *rightMeter);
}

void FacePainter::paintControl (juce::Graphics& g, const FaceLayout::Control& c, int frame)
{
    switch (c.look)
    {
        case Look::knob:
        case Look::steppedKnob:
            paintKnobFrame (g, c, frame);
            break;
        case Look::lever:
            paintLeverFrame (g, c, frame);
            break;
        case Look::lampButton:
        case Look::pushButton:
            paintButtonFrame (g, c, frame);
            break;
        case Look::meter:
            paintMeterFrame (g, c, frame);
            break;
        case Look::lamp:
            paintLampFrame (g, c, frame);
            break;
        case Look::display:
            break;
    }
}

void FacePainter::paintFace (juce::Graphics& g,
                             const std::function<int (const FaceLayout::Control&)>& frameOf)
{
    paintStatic (g);
    for (const auto& c : FaceLayout::getControls())
        paintControl (g, c, frameOf (c));
}
