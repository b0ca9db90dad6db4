#include "skin/GFXDisplay.h"

#include "common/ListenerWalk.h"
#include "common/ResourceLoader.h"
#include "skin/SkinPictures.h"
#include "skin/SkinXml.h"
#include "skin/TextFieldLift.h"

namespace
{
// The caret blinks twice a second while typing, and the timer runs at half that until the first edit.
constexpr int caretBlink = 500, idleTick = 250;
constexpr int blank = ' ';
constexpr int highestCharacter = 127; // characters above show the font's first cell
} // namespace

GFXDisplay::GFXDisplay (const juce::String& name)
    : juce::Component (name)
{
    setOpaque (true);
    setWantsKeyboardFocus (editable);
    startTimer (idleTick);
}

GFXDisplay::~GFXDisplay()
{
    if (savedParent != nullptr)
        savedParent->removeComponentListener (this);
}

void GFXDisplay::setText (const juce::String& newText)
{
    text = newText;
    shownText = newText;
    repaint();
}

void GFXDisplay::setFont (const juce::String& key)
{
    juce::Image image;
    loadResourceImage (key, image);
    if (image.isNull())
        return;
    font = image;
    fontKey = key;
    updateFontMetrics();
}

void GFXDisplay::addDisplayListener (GFXDisplayListener* listener)
{
    if (listener != nullptr)
        displayListeners.addIfNotAlreadyThere (listener);
}

void GFXDisplay::removeDisplayListener (GFXDisplayListener* listener)
{
    displayListeners.removeFirstMatchingValue (listener);
}

void GFXDisplay::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                              EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    setText (SkinXml::getAttribute (element, "name"));
    setColour (
        juce::CaretComponent::caretColourId,
        juce::Colour ((juce::uint32) SkinXml::getAttribute (element, "caretColour", "0").getHexValue64()));
    setColour (juce::TextEditor::backgroundColourId,
               juce::Colour (
                   (juce::uint32) SkinXml::getAttribute (element, "backgroundColour", "0").getHexValue64()));
    setEnabled (SkinXml::getAttribute (element, "readonly", "no") != "yes");

    for (auto* child : element.getChildIterator())
    {
        if (SkinXml::isTag (*child, "gfx"))
        {
            setFont (SkinXml::getAttribute (*child, "resource"));
            fontHeight = SkinXml::getInt (*child, "fontHeight", 0);
            firstChar = (int) SkinXml::getAttribute (*child, "firstASCII", " ")[0];
        }
        else if (SkinXml::isTag (*child, "pos"))
        {
            setTopLeftPosition (SkinXml::getInt (*child, "left", 0), SkinXml::getInt (*child, "top", 0));
        }
        else if (SkinXml::isTag (*child, "size"))
        {
            setSize (SkinXml::getInt (*child, "width", 0), SkinXml::getInt (*child, "height", 0));
        }
    }
    updateFontMetrics();
}

void GFXDisplay::updateFromParameter (Parameter* changed) { setText (changed->getStringValue()); }

void GFXDisplay::blinkChanged()
{
    shownText = isBlinkedOff() ? juce::String() : text;
    repaint();
}

void GFXDisplay::updateFontMetrics()
{
    if (font.isValid())
    {
        charWidth = font.getWidth();
        // The strip holds every cell twice: the normal half, then the reversed one for the caret.
        lastChar = fontHeight < 1 ? firstChar : font.getHeight() / (fontHeight * 2) + firstChar - 1;
        numChars = lastChar - firstChar + 1;
    }
    repaint();
}

int GFXDisplay::getNumColumns() const noexcept { return charWidth > 0 ? getWidth() / charWidth : 0; }

int GFXDisplay::cellOf (juce::juce_wchar character) const noexcept
{
    const int c = (int) character;
    if (c > highestCharacter || c < firstChar)
        return 0;
    return juce::jmin (lastChar, c) - firstChar;
}

void GFXDisplay::paint (juce::Graphics& g)
{
    g.fillAll (findColour (juce::TextEditor::backgroundColourId));
    if (font.isNull())
    {
        g.setColour (juce::Colours::black);
        g.drawText (shownText, getLocalBounds(), juce::Justification::centredLeft, true);
        return;
    }
    if (charWidth < 1 || fontHeight < 1)
        return;

    const int y = (getHeight() - fontHeight) / 2;
    const int columns = getNumColumns();
    const int x0 = (getWidth() - columns * charWidth) / 2;
    const int caretIndex = hasKeyboardFocus (false) && caretOn ? caretPosition : -1;
    // The pixel font is drawn cell by cell, so it stays sharp; on a dense screen it is simply enlarged.
    g.setImageResamplingQuality (juce::Graphics::lowResamplingQuality);
    int index = scrollOffset;
    for (int column = 0; column < columns; ++column, ++index)
    {
        const auto character =
            index >= 0 && index < shownText.length() ? shownText[index] : (juce::juce_wchar) blank;
        int row = fontHeight * cellOf (character);
        if (index == caretIndex && editable)
            row += numChars * fontHeight;
        g.drawImage (font, x0 + column * charWidth, y, charWidth, fontHeight, 0, row, charWidth, fontHeight);
    }
}

void GFXDisplay::updateScroll()
{
    const int columns = getNumColumns();
    const int lowest = caretPosition == 0 ? 0 : caretPosition - 1;
    if (columns - 1 + scrollOffset >= caretPosition + 1)
    {
        if (scrollOffset >= caretPosition)
            scrollOffset = lowest;
        return;
    }
    scrollOffset = 1 - columns + caretPosition + (caretPosition < shownText.length() ? 1 : 0);
    if (scrollOffset >= caretPosition)
        scrollOffset = lowest;
}

void GFXDisplay::focusGained (FocusChangeType)
{
    if (isOnDesktop() || editing)
    {
        repaint();
        return;
    }
    editing = true;
    scrollOffset = 0;
    caretPosition = text.length();
    updateScroll();
    startTimer (caretBlink);
    savedText = text;
    savedBounds = getBounds();
    savedParent = getParentComponent();
    if (savedParent != nullptr)
        savedParent->addComponentListener (this);

    // Leaving the parent takes the focus away for a moment; that is no end of the edit.
    lifting = true;
    TextFieldLift::lift (*this);
    lifting = false;
    if (!hasKeyboardFocus (false))
        grabKeyboardFocus();
    repaint();
}

void GFXDisplay::focusLost (FocusChangeType)
{
    if (lifting || !editing)
    {
        repaint();
        return;
    }
    endEdit();
}

void GFXDisplay::endEdit()
{
    editing = false;
    scrollOffset = 0;
    caretPosition = 0;
    updateScroll();
    stopTimer();
    if (savedParent != nullptr)
    {
        savedParent->removeComponentListener (this);
        if (isOnDesktop())
            TextFieldLift::putBack (*this, *savedParent, savedBounds);
    }
    if (hasKeyboardFocus (false))
        giveAwayKeyboardFocus();
    if (text != savedText)
        callListenersBackwards (displayListeners,
                                [this] (GFXDisplayListener& l) { l.displayTextChanged (this); });
    repaint();
}

bool GFXDisplay::keyPressed (const juce::KeyPress& key)
{
    const int code = key.getKeyCode();
    if (code == juce::KeyPress::returnKey)
    {
        if (editing)
            endEdit();
        return true;
    }
    if (code == juce::KeyPress::escapeKey)
    {
        if (editing)
        {
            setText (savedText);
            endEdit();
        }
        return true;
    }

    if (code == juce::KeyPress::backspaceKey)
    {
        if (caretPosition > 0)
        {
            text = text.substring (0, caretPosition - 1) + text.substring (caretPosition);
            --caretPosition;
        }
    }
    else if (code == juce::KeyPress::deleteKey)
    {
        text = text.substring (0, caretPosition) + text.substring (caretPosition + 1);
    }
    else if (code == juce::KeyPress::homeKey)
    {
        caretPosition = 0;
    }
    else if (code == juce::KeyPress::endKey)
    {
        caretPosition = text.length();
    }
    else if (code == juce::KeyPress::leftKey)
    {
        --caretPosition;
    }
    else if (code == juce::KeyPress::rightKey)
    {
        ++caretPosition;
    }
    else
    {
        // On X11 Ctrl and a letter carry the letter's key code but a control character: only a character
        // the font holds is typed.
        const auto character = (int) key.getTextCharacter();
        if (code >= firstChar && code <= lastChar && character >= firstChar && character <= lastChar)
        {
            text = text.substring (0, caretPosition)
                   + juce::String::charToString ((juce::juce_wchar) character)
                   + text.substring (caretPosition);
            ++caretPosition;
        }
    }
    shownText = text;
    caretPosition = juce::jlimit (0, text.length(), caretPosition);
    updateScroll();
    startTimer (caretBlink);
    caretOn = true;
    repaint();
    return true;
}

void GFXDisplay::timerCallback()
{
    auto* focused = juce::Component::getCurrentlyFocusedComponent();
    if (focused == this || isParentOf (focused))
    {
        caretOn = !caretOn;
        repaint();
    }
}

void GFXDisplay::componentVisibilityChanged (juce::Component& component)
{
    // The host closed the window while the field was lifted: the field goes with it.
    if (editing && !component.isShowing())
        endEdit();
}

void GFXDisplay::componentParentHierarchyChanged (juce::Component& component)
{
    if (editing && !component.isShowing())
        endEdit();
}
