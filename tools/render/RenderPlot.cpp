#include "RenderPlot.h"

#include "AverageSpectrum.h"

#include <cmath>

namespace
{
const juce::Colour background (0xff16181d);
const juce::Colour panelColour (0xff20232a);
const juce::Colour gridColour (0xff3a3f4b);
const juce::Colour textColour (0xffc8ccd4);
const juce::Colour inputColour (0xff8a93a6);
const juce::Colour outputColour (0xffff9f1c);

constexpr int left = 70, right = 20; // room for the level labels at the left
constexpr float labelHeight = 14.0f;
constexpr int labelPadding = 8, labelWidth = 80, titleWidth = 400; // pixels around and of the small texts
constexpr int maxTimeLabels = 10;                                  // under a waveform, so that none touch
constexpr double gridStepDb = 20.0, levelRoundingDb = 10.0;        // the spectrum's lines and its top
constexpr float curveThickness = 1.5f;
constexpr double lowestFrequency = 20.0; // the bottom of hearing
constexpr double spectrumFloor = -120.0; // about the noise floor of 20-bit audio

juce::Font labelFont() { return juce::Font (labelHeight); }

double peakOf (const juce::AudioBuffer<float>& buffer)
{
    return buffer.getNumSamples() > 0 ? buffer.getMagnitude (0, buffer.getNumSamples()) : 0.0;
}

/** A step of 1, 2 or 5 times a power of ten that cuts span into at most maxSteps parts. */
double niceStep (double span, int maxSteps)
{
    const double raw = span / maxSteps;
    const double power = std::pow (10.0, std::floor (std::log10 (raw)));
    for (double m : { 1.0, 2.0, 5.0, 10.0 })
        if (m * power >= raw)
            return m * power;
    return 10.0 * power;
}

void drawWaveform (juce::Graphics& g, juce::Rectangle<int> area, const juce::AudioBuffer<float>& buffer,
                   double scale, juce::Colour colour, const juce::String& title, double sampleRate)
{
    g.setColour (panelColour);
    g.fillRect (area);

    const float midY = (float) area.getCentreY();
    const float halfHeight = (float) area.getHeight() * 0.5f;
    auto yOf = [&] (double v) { return midY - (float) (v / scale) * halfHeight; };

    g.setColour (gridColour);
    g.drawHorizontalLine ((int) midY, (float) area.getX(), (float) area.getRight());
    g.setFont (labelFont());
    for (double level : { -1.0, 1.0 })
    {
        const float y = yOf (level);
        g.setColour (gridColour);
        g.drawHorizontalLine ((int) y, (float) area.getX(), (float) area.getRight());
        g.setColour (textColour);
        g.drawText (level > 0 ? "+1.0" : "-1.0", 0, (int) (y - labelHeight / 2), left - labelPadding,
                    (int) labelHeight, juce::Justification::centredRight);
    }

    const int numSamples = buffer.getNumSamples();
    const int columns = area.getWidth();
    g.setColour (colour);
    for (int x = 0; x < columns && numSamples > 0; ++x)
    {
        const int from = (int) ((juce::int64) x * numSamples / columns);
        const int to = juce::jmax (from + 1, (int) ((juce::int64) (x + 1) * numSamples / columns));
        if (from >= numSamples)
            break;
        float lo = 0.0f, hi = 0.0f;
        bool first = true;
        for (int c = 0; c < buffer.getNumChannels(); ++c)
        {
            const auto range = juce::FloatVectorOperations::findMinAndMax (
                buffer.getReadPointer (c, from), juce::jmin (to, numSamples) - from);
            lo = first ? range.getStart() : juce::jmin (lo, range.getStart());
            hi = first ? range.getEnd() : juce::jmax (hi, range.getEnd());
            first = false;
        }
        const float top = yOf (hi), bottom = yOf (lo);
        g.fillRect ((float) (area.getX() + x), top, 1.0f, juce::jmax (1.0f, bottom - top));
    }

    // Seconds along the bottom edge.
    const double seconds = sampleRate > 0.0 ? numSamples / sampleRate : 0.0;
    if (seconds > 0.0)
    {
        const double step = niceStep (seconds, maxTimeLabels);
        g.setColour (textColour);
        for (double t = 0.0; t <= seconds + 1.0e-9; t += step)
        {
            const int x = area.getX() + (int) std::lround (t / seconds * (columns - 1));
            g.drawText (juce::String (t, step < 1.0 ? 1 : 0) + " s", x - labelWidth / 2, area.getBottom() + 2,
                        labelWidth, (int) labelHeight, juce::Justification::centred);
        }
    }

    g.setColour (colour);
    g.drawText (title, area.getX() + labelPadding, area.getY() + labelPadding / 2, titleWidth,
                (int) labelHeight, juce::Justification::left);
}

void drawSpectrum (juce::Graphics& g, juce::Rectangle<int> area, const juce::AudioBuffer<float>& input,
                   const juce::AudioBuffer<float>& output, double sampleRate)
{
    g.setColour (panelColour);
    g.fillRect (area);

    const double nyquist = sampleRate / 2.0;
    const auto in = AverageSpectrum::measure (input);
    const auto out = AverageSpectrum::measure (output);

    double top = 0.0;
    for (const auto* levels : { &in, &out })
        for (double db : *levels)
            top = juce::jmax (top, std::ceil (db / levelRoundingDb) * levelRoundingDb);
    const double bottom = spectrumFloor;

    auto xOf = [&] (double hz)
    {
        return (float) area.getX()
               + (float) (std::log (hz / lowestFrequency) / std::log (nyquist / lowestFrequency))
                     * (float) area.getWidth();
    };
    auto hzAt = [&] (double x)
    { return lowestFrequency * std::pow (nyquist / lowestFrequency, (x - area.getX()) / area.getWidth()); };
    auto yOf = [&] (double db)
    {
        const double clamped = juce::jlimit (bottom, top, db);
        return (float) area.getY() + (float) ((top - clamped) / (top - bottom)) * (float) area.getHeight();
    };

    g.setFont (labelFont());
    for (double db = bottom; db <= top; db += gridStepDb)
    {
        const float y = yOf (db);
        g.setColour (gridColour);
        g.drawHorizontalLine ((int) y, (float) area.getX(), (float) area.getRight());
        g.setColour (textColour);
        g.drawText (juce::String ((int) db) + " dB", 0, (int) (y - labelHeight / 2), left - labelPadding,
                    (int) labelHeight, juce::Justification::centredRight);
    }
    // Lines at 1, 2 and 5 of each decade.
    for (double decade = 10.0; decade < nyquist; decade *= 10.0)
        for (double m : { 1.0, 2.0, 5.0 })
        {
            const double hz = decade * m;
            if (hz < lowestFrequency || hz > nyquist)
                continue;
            const float x = xOf (hz);
            g.setColour (gridColour);
            g.drawVerticalLine ((int) x, (float) area.getY(), (float) area.getBottom());
            g.setColour (textColour);
            g.drawText (hz >= 1000.0 ? juce::String (hz / 1000.0, 0) + "k" : juce::String ((int) hz),
                        (int) x - labelWidth / 2, area.getBottom() + 2, labelWidth, (int) labelHeight,
                        juce::Justification::centred);
        }

    const double binHz = AverageSpectrum::binFrequency (1, sampleRate);
    auto curve = [&] (const std::vector<double>& levels)
    {
        juce::Path path;
        for (int x = 0; x < area.getWidth(); ++x)
        {
            const double px = area.getX() + x;
            const double lo = hzAt (px - 0.5) / binHz, hi = hzAt (px + 0.5) / binHz;
            double db = AverageSpectrum::floorDecibels;
            if (hi - lo < 1.0)
            {
                // Narrower than a bin: between the two bins around the column's centre.
                const double b = hzAt (px) / binHz;
                const int b0 = juce::jlimit (0, AverageSpectrum::numBins - 1, (int) b);
                const int b1 = juce::jmin (b0 + 1, AverageSpectrum::numBins - 1);
                const double f = b - b0;
                db = levels[(size_t) b0] * (1.0 - f) + levels[(size_t) b1] * f;
            }
            else
            {
                for (int b = (int) std::ceil (lo); b <= (int) hi && b < AverageSpectrum::numBins; ++b)
                    db = juce::jmax (db, levels[(size_t) b]);
            }
            const float y = yOf (db);
            if (x == 0)
                path.startNewSubPath ((float) px, y);
            else
                path.lineTo ((float) px, y);
        }
        return path;
    };

    g.setColour (inputColour);
    g.strokePath (curve (in), juce::PathStrokeType (curveThickness));
    g.setColour (outputColour);
    g.strokePath (curve (out), juce::PathStrokeType (curveThickness));

    g.setColour (textColour);
    g.drawText ("Average spectrum (Hz)", area.getX() + labelPadding, area.getY() + labelPadding / 2,
                titleWidth, (int) labelHeight, juce::Justification::left);
}
} // namespace

juce::Image RenderPlot::draw (const juce::AudioBuffer<float>& input, const juce::AudioBuffer<float>& output,
                              double sampleRate, const juce::String& caption)
{
    juce::Image image (juce::Image::RGB, width, height, true, juce::SoftwareImageType());
    juce::Graphics g (image);
    g.fillAll (background);

    // From the top: a title line of 20 pixels, the two waveforms of 220 pixels and the spectrum of 320,
    // each panel with a line of labels under it.
    constexpr int titleY = 8, titleHeight = 20, legendWidth = 120;
    constexpr int waveformHeight = 220, spectrumHeight = 320, labelGap = 30;
    constexpr int inputY = 40, outputY = inputY + waveformHeight + labelGap;
    constexpr int spectrumY = outputY + waveformHeight + labelGap + 5;
    static_assert (spectrumY + spectrumHeight + labelGap <= height, "the panels fit the picture");

    g.setFont (juce::Font ((float) titleHeight * 0.8f, juce::Font::bold)); // a font's height is 4/5 letters
    g.setColour (textColour);
    g.drawText (caption, left, titleY, width - left - right - 2 * legendWidth, titleHeight,
                juce::Justification::left);
    g.setColour (inputColour);
    g.drawText ("input", width - right - 2 * legendWidth, titleY, legendWidth, titleHeight,
                juce::Justification::right);
    g.setColour (outputColour);
    g.drawText ("output", width - right - legendWidth, titleY, legendWidth, titleHeight,
                juce::Justification::right);

    // Both waveforms on one scale, so that a change of level shows.
    const double scale = juce::jmax (1.0, peakOf (input), peakOf (output));
    const int panelWidth = width - left - right;
    drawWaveform (g, { left, inputY, panelWidth, waveformHeight }, input, scale, inputColour, "Input",
                  sampleRate);
    drawWaveform (g, { left, outputY, panelWidth, waveformHeight }, output, scale, outputColour, "Output",
                  sampleRate);
    drawSpectrum (g, { left, spectrumY, panelWidth, spectrumHeight }, input, output, sampleRate);
    return image;
}
