#include "windows/Column.h"

#include "windows/DefaultLookAndFeel.h"

namespace
{
constexpr float bodyCorner = 6.0f;
// The grip: three lines 13 pixels long, 2 pixels apart, the last 2 pixels inside the right edge.
constexpr int gripLength = 13, gripLines = 3, gripPitch = 2;
} // namespace

ColumnBrowser::Column::Column() = default;

ColumnBrowser::Column::~Column() = default;

void ColumnBrowser::Column::paint (juce::Graphics& g)
{
    auto body = getLocalBounds();
    if (hasGripStrip())
        body.removeFromRight (gripWidth);
    g.setColour (findColour (DefaultLookAndFeel::browserListColourId));
    g.fillRoundedRectangle (body.toFloat(), bodyCorner);
    const auto line = findColour (DefaultLookAndFeel::browserLineColourId);
    g.setColour (line);
    g.drawRoundedRectangle (body.toFloat().reduced (0.5f), bodyCorner, 1.0f);

    if (isResizable())
    {
        const int top = (getHeight() - gripLength) / 2;
        for (int i = 0; i < gripLines; ++i)
        {
            const int x = getWidth() - gripPitch * (gripLines - i);
            g.fillRect (x, top, 1, gripLength);
        }
    }
}

void ColumnBrowser::Column::mouseDown (const juce::MouseEvent& e)
{
    if (!isResizable() || e.x < getWidth() - gripWidth)
        return;
    resizing = true;
    widthAtDragStart = getWidth();
    repaint();
}

void ColumnBrowser::Column::mouseDrag (const juce::MouseEvent& e)
{
    if (!resizing)
        return;
    setSize (juce::jmax (smallestWidth, widthAtDragStart + e.getDistanceFromDragStartX()), getHeight());
    if (browser != nullptr)
        browser->layoutColumns();
}

void ColumnBrowser::Column::mouseUp (const juce::MouseEvent&)
{
    if (!resizing)
        return;
    resizing = false;
    repaint();
}
