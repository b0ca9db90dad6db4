#include "windows/PathComponent.h"

#include "common/ListenerWalk.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
// The field stands 4 pixels inside the button's height, and its text 4 pixels inside the field.
constexpr int fieldInset = 4, textInset = 4;
constexpr float fieldCorner = 4.0f, disabledStrength = 0.5f, markerOpacity = 0.5f;
// "Browse" takes the normal frame.
constexpr int browseStyle = 1;
} // namespace

PathComponent::PathComponent()
    : browseButton (std::make_unique<TextButtonEx> ("Browse", browseStyle))
{
    browseButton->juce::Button::addListener (this);
    addAndMakeVisible (*browseButton);
    setSize (getWidth(), browseButton->getHeight());
    measure();
}

PathComponent::~PathComponent() { browseButton->juce::Button::removeListener (this); }

void PathComponent::setPath (const juce::String& text, bool notify)
{
    if (text == path)
        return;
    path = text;
    measure();
    repaint (fieldArea);
    if (notify)
        callListenersBackwards (listeners, [this] (Listener& l) { l.pathChanged (this); });
}

void PathComponent::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void PathComponent::removeListener (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

void PathComponent::measure()
{
    pathWidth = juce::roundToInt (font.getStringWidthFloat (path));
    markerWidth = juce::roundToInt (font.getStringWidthFloat (marker));
}

void PathComponent::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        font = look->getNormalFont();
        measure();
        repaint();
    }
}

void PathComponent::resized()
{
    const int buttonWidth = browseButton->getWidth();
    fieldArea = { 0, fieldInset, juce::jmax (0, getWidth() - buttonWidth - buttonGap),
                  juce::jmax (0, getHeight() - 2 * fieldInset) };
    textArea = fieldArea.withTrimmedLeft (textInset).withWidth (
        juce::jmax (0, fieldArea.getWidth() - 2 * textInset));
    browseButton->setTopLeftPosition (getWidth() - buttonWidth, 0);
}

void PathComponent::paint (juce::Graphics& g)
{
    const float strength = isEnabled() ? 1.0f : disabledStrength;
    const auto outline = findColour (DefaultLookAndFeel::pathOutlineColourId);
    if (!outline.isTransparent())
    {
        g.setColour (findColour (DefaultLookAndFeel::pathFieldColourId).withMultipliedAlpha (strength));
        g.fillRoundedRectangle (fieldArea.toFloat(), fieldCorner);
        g.setColour (outline.withMultipliedAlpha (strength));
        g.drawRoundedRectangle (fieldArea.toFloat().reduced (0.5f), fieldCorner, 1.0f);
    }

    g.setColour (findColour (DefaultLookAndFeel::pathTextColourId).withMultipliedAlpha (strength));
    g.setFont (font);
    if (pathWidth <= fieldArea.getWidth() - 2 * textInset)
    {
        g.drawText (path, textArea, juce::Justification::centredLeft, false);
        return;
    }
    // Too wide: the start stays readable, cut at the right, and a faded marker says that there is more.
    auto rest = textArea;
    const auto markerArea = rest.removeFromRight (markerWidth);
    g.drawText (path, rest, juce::Justification::centredLeft, false);
    g.setOpacity (markerOpacity * strength);
    g.drawText (marker, markerArea, juce::Justification::centredLeft, false);
}

void PathComponent::enablementChanged()
{
    browseButton->setEnabled (isEnabled());
    repaint();
}

void PathComponent::childBoundsChanged (juce::Component* child)
{
    // The component is as high as its button, whose size comes with the look and feel.
    if (child == browseButton.get() && getHeight() != browseButton->getHeight())
        setSize (getWidth(), browseButton->getHeight());
    else if (child == browseButton.get())
        resized();
}

void PathComponent::buttonClicked (juce::Button* button)
{
    if (button != browseButton.get())
        return;
    FileDialog::Request request;
    request.mode = FileDialog::Mode::open;
    request.title = dialogTitle;
    request.startFolder = initialFile.isEmpty() ? juce::File() : juce::File (initialFile);
    request.patterns = wildcards;
    dialog = FileDialog::create();
    dialog->ask (*this, request,
                 [this] (const juce::File& chosen) { setPath (chosen.getFullPathName(), true); });
}
