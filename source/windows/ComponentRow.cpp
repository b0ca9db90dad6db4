#include "windows/ComponentRow.h"

void ComponentRow::setVertical (bool shouldBeVertical)
{
    if (vertical == shouldBeVertical)
        return;
    vertical = shouldBeVertical;
    layout();
}

void ComponentRow::setAlignment (int newAlignment)
{
    if (alignment == newAlignment)
        return;
    alignment = newAlignment;
    layout();
}

void ComponentRow::setGap (int newGap)
{
    if (gap == newGap)
        return;
    gap = newGap;
    layout();
}

void ComponentRow::layout()
{
    // Placing the children reports each move back here: one pass at a time.
    if (layingOut)
        return;
    const juce::ScopedValueSetter<bool> guard (layingOut, true);

    int length = 0, depth = 0;
    const int count = getNumChildComponents();
    for (auto* child : getChildren())
    {
        length += vertical ? child->getHeight() : child->getWidth();
        depth = juce::jmax (depth, vertical ? child->getWidth() : child->getHeight());
    }
    length += juce::jmax (0, count - 1) * gap;
    setSize (vertical ? depth : length, vertical ? length : depth);

    int along = 0;
    for (auto* child : getChildren())
    {
        const int own = vertical ? child->getWidth() : child->getHeight();
        const int across = alignment == centre ? (depth - own) / 2 : alignment == end ? depth - own : 0;
        child->setTopLeftPosition (vertical ? across : along, vertical ? along : across);
        along += (vertical ? child->getHeight() : child->getWidth()) + gap;
    }
}
