#include "windows/ComboBoxEx.h"

#include "common/EmbeddedFonts.h"
#include "common/ListenerWalk.h"

namespace
{
const juce::Colour field (0xffe3e3e3), divider (0xffbfbfbf);
constexpr float corner = 4.0f, textHeight = 13.0f;
constexpr int textInset = 4, arrowRoom = 13;
constexpr float arrowHalf = 3.0f, arrowCentreFromRight = 4.0f + 3.5f;
} // namespace

ComboBoxEx::ComboBoxEx (const juce::String& name)
    : juce::Component (name)
{
    menu.addListener (this);
    addChildComponent (menu.getComponent());
    update();
}

void ComboBoxEx::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void ComboBoxEx::setSelectedId (int id)
{
    selectedId = id;
    update();
}

void ComboBoxEx::update()
{
    auto* item = menu.findItem (selectedId);
    const auto newText = item != nullptr && item->text.isNotEmpty() ? item->text : juce::String ("---");
    const bool enabled = item != nullptr && item->enabled;
    menu.setItemTicked (selectedId, true, true);
    if (newText != text || enabled != selectedEnabled)
    {
        text = newText;
        selectedEnabled = enabled;
        repaint();
    }
}

void ComboBoxEx::menuItemSelected (PopupMenuEx*, int id, bool)
{
    if (id == selectedId)
        return;
    selectedId = id;
    update();
    callListenersBackwards (listeners, [this] (Listener& l) { l.comboBoxChanged (this); });
}

void ComboBoxEx::mouseDown (const juce::MouseEvent&)
{
    menu.getComponent().showAt (PseudoModalComponent::atPoint, { 0, getHeight() }, this);
}

void ComboBoxEx::paint (juce::Graphics& g)
{
    const auto bounds = getLocalBounds().toFloat();
    g.setColour (field);
    g.fillRoundedRectangle (bounds, corner);
    g.setColour (juce::Colours::white);
    g.drawRoundedRectangle (bounds, corner, 1.0f);
    g.setColour (juce::Colours::black);
    auto font = EmbeddedFonts::make (textHeight);
    if (!selectedEnabled)
        font = font.italicised();
    g.setFont (font);
    g.drawText (text, textInset, 0, getWidth(), getHeight(), juce::Justification::centredLeft, false);
    g.setColour (divider);
    g.drawVerticalLine (getWidth() - arrowRoom, 2.0f, (float) getHeight() - 2.0f);
    const float cx = (float) getWidth() - arrowCentreFromRight, cy = (float) getHeight() / 2.0f;
    juce::Path arrow;
    arrow.addTriangle (cx - arrowHalf, cy - arrowHalf, cx + arrowHalf, cy - arrowHalf, cx, cy + arrowHalf);
    g.setColour (juce::Colours::black);
    g.fillPath (arrow);
}
