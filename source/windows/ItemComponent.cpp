#include "windows/ItemComponent.h"

#include "common/EmbeddedFonts.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/List.h"

namespace
{
constexpr float textHeight = 13.0f;
// The icon takes 19 pixels at the left (16 and a margin), the arrow 13 at the right; the list's vertical
// bar takes 3 more from a row that it overlaps.
constexpr int iconWidth = 19, arrowWidth = 13, barOverlap = 3;
constexpr float selectionCorner = 4.0f;
// The arrow of a row that leads on: a small triangle 12 pixels in from the right, 7 down.
constexpr float arrowLength = 7.0f, arrowHalf = 3.0f, arrowTop = 0.5f, arrowInset = 12.0f, arrowDrop = 7.0f;
const juce::Colour arrowOutline (0xff646464);
// Drop marks: translucent red, a frame of 2 on a row, a line between rows.
const juce::Colour dropMarkColour = juce::Colour (0xffff0000).withAlpha (0.75f);
constexpr float markCorner = 4.0f, markThickness = 2.0f;
} // namespace

ColumnBrowser::ListColumn::ItemComponent::ItemComponent (ListColumn& owner)
    : column (owner)
{
    setInterceptsMouseClicks (false, false);
    label.setFont (EmbeddedFonts::make (textHeight));
    label.setColour (juce::Label::textColourId, juce::Colours::black);
    label.addListener (this);
    addAndMakeVisible (label);
}

ColumnBrowser::ListColumn::ItemComponent::~ItemComponent() = default;

void ColumnBrowser::ListColumn::ItemComponent::update (int newRow, bool isRowSelected)
{
    row = newRow;
    // A list shows rows below its last item too; they stay empty.
    const bool exists = juce::isPositiveAndBelow (row, column.getNumItems());
    label.setText (exists ? column.getItemText (row) : juce::String());
    const auto normal = exists ? column.getItemImage (row, false) : juce::Image();
    const auto chosen = exists ? column.getItemImage (row, true) : juce::Image();
    const bool leadsOn = exists && column.hasChildren (row);

    if (isRowSelected != selected)
    {
        selected = isRowSelected;
        label.setColour (juce::Label::textColourId, selected ? juce::Colours::white : juce::Colours::black);
        repaint();
    }
    const auto iconArea = juce::Rectangle<int> (0, 0, iconWidth, getHeight());
    if (normal != normalImage)
    {
        normalImage = normal;
        if (!selected)
            repaint (iconArea);
    }
    if (chosen != selectedImage)
    {
        selectedImage = chosen;
        if (selected)
            repaint (iconArea);
    }
    if (leadsOn != hasChildrenFlag)
    {
        hasChildrenFlag = leadsOn;
        label.setFont (EmbeddedFonts::make (textHeight, hasChildrenFlag));
        resized();
        repaint();
    }
}

int ColumnBrowser::ListColumn::ItemComponent::usableWidth() const
{
    return getWidth() - (column.getList().getVerticalScrollBar().isVisible() ? barOverlap : 0);
}

void ColumnBrowser::ListColumn::ItemComponent::resized()
{
    auto area = juce::Rectangle<int> (0, 1, usableWidth(), juce::jmax (0, getHeight() - 2));
    area.removeFromLeft (iconWidth);
    if (hasChildrenFlag)
        area.removeFromRight (arrowWidth);
    label.setBounds (area.withWidth (juce::jmax (0, area.getWidth())));
}

void ColumnBrowser::ListColumn::ItemComponent::paint (juce::Graphics& g)
{
    const int w = usableWidth(), h = getHeight();
    if (selected)
    {
        g.setColour (findColour (DefaultLookAndFeel::browserSelectedRowColourId));
        g.fillRoundedRectangle (0.0f, 1.0f, (float) w, (float) (h - 2), selectionCorner);
    }

    if (hasChildrenFlag)
    {
        juce::Path arrow;
        arrow.addTriangle (0.0f, arrowTop, arrowLength, arrowTop + arrowHalf, 0.0f,
                           arrowTop + 2.0f * arrowHalf);
        arrow.applyTransform (juce::AffineTransform::translation ((float) w - arrowInset, arrowDrop));
        g.setColour (juce::Colours::white);
        g.fillPath (arrow);
        g.setColour (arrowOutline);
        g.strokePath (arrow, juce::PathStrokeType (1.0f));
    }

    const int dropRow = column.getDropRow(), dropMode = column.getDropMode();
    if (dropRow != -1)
    {
        g.setColour (dropMarkColour);
        if (dropMode == dropOnItem && row == dropRow)
            g.drawRoundedRectangle (0.0f, 0.0f, (float) w, (float) (h - 1), markCorner, markThickness);
        else if ((dropMode == dropBefore && row == dropRow - 1) || (dropMode == dropAfter && row == dropRow))
            g.drawHorizontalLine (h - 1, 0.0f, (float) w);
        else if ((dropMode == dropBefore && row == dropRow) || (dropMode == dropAfter && row == dropRow + 1))
            g.drawHorizontalLine (0, 0.0f, (float) w);
    }

    g.setOpacity (1.0f);
    g.drawImageAt (selected ? selectedImage : normalImage, 1, 1);
}

void ColumnBrowser::ListColumn::ItemComponent::textCommitted (ModalTextEditor* editor)
{
    // The label hears the commit after this listener, so the new text is the editor's.
    column.itemRenamed (row, editor->getText());
}
