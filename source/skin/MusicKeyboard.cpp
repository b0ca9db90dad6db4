#include "skin/MusicKeyboard.h"

#include "common/ListenerWalk.h"
#include "common/ResourceLoader.h"
#include "skin/SkinXml.h"
#include "windows/DefaultLookAndFeel.h"

#include <cmath>

namespace
{
constexpr int semitones = 12;
constexpr bool blackNote[semitones] = { false, true,  false, true,  false, false,
                                        true,  false, true,  false, true,  false };
// A white key's width in units (one unit a note) and how far its left edge stands before its note's place.
constexpr float whiteWidth[semitones] = {
    1.6666f, 0, 1.6666f, 0, 1.6666f, 1.75f, 0, 1.75f, 0, 1.9f, 0, 1.75f
};
constexpr float whiteShift[semitones] = { 0, 0, 0.3333f, 0, 0.6666f, 0, 0, 0.25f, 0, 0.51f, 0, 0.75f };
// Keys reach 2 pixels above the control; black ones take 0.642 of its height.
constexpr int overhang = 2;
constexpr float blackDepth = 0.642f;
constexpr float blackCorner = 1.5f;
} // namespace

MusicKeyboard::Key::Key (MusicKeyboard& owner, int noteNumber)
    : juce::Component (juce::String::formatted ("Key No. %d", noteNumber))
    , keyboard (owner)
    , note (noteNumber)
{
    setInterceptsMouseClicks (false, false);
}

bool MusicKeyboard::Key::isBlack() const noexcept { return blackNote[note % semitones]; }

int MusicKeyboard::Key::getFrame() const
{
    // The neighbours' presses as bits: the highest note covered first, the lowest last.
    int n = 0;
    for (int other = note + right; other > note; --other)
        n = 2 * n + (keyboard.isPressed (other) ? 1 : 0);
    for (int other = note - 1; other >= note - left; --other)
        n = 2 * n + (keyboard.isPressed (other) ? 1 : 0);
    return n + (pressed ? framesNum / 2 : 0);
}

void MusicKeyboard::Key::paint (juce::Graphics& g)
{
    if (strip.isValid())
    {
        const int frame = juce::jlimit (0, framesNum - 1, getFrame());
        g.drawImage (strip, 0, 0, frameWidth, frameHeight, 0, frame * frameHeight, frameWidth, frameHeight);
        return;
    }
    const auto area = getLocalBounds().toFloat();
    if (isBlack())
    {
        g.setColour (findColour (pressed ? DefaultLookAndFeel::keyboardKeyDownColourId
                                         : DefaultLookAndFeel::keyboardBlackKeyColourId));
        g.fillRoundedRectangle (area, blackCorner);
        g.setColour (findColour (DefaultLookAndFeel::keyboardOutlineColourId));
        g.drawRoundedRectangle (area.reduced (0.5f), blackCorner, 1.0f);
    }
    else
    {
        g.setColour (findColour (pressed ? DefaultLookAndFeel::keyboardKeyOverColourId
                                         : DefaultLookAndFeel::keyboardWhiteKeyColourId));
        g.fillRect (area);
        g.setColour (findColour (DefaultLookAndFeel::keyboardOutlineColourId));
        g.drawRect (area, 1.0f);
    }
}

MusicKeyboard::MusicKeyboard (const juce::String& name)
    : juce::Component (name)
{
    // White keys first, so that the black ones stand above them.
    for (int note = 0; note < numKeys; ++note)
        keys.add (new Key (*this, note));
    for (const bool black : { false, true })
        for (auto* key : keys)
            if (key->isBlack() == black)
                addChildComponent (key);
}

void MusicKeyboard::addKeyboardListener (Listener* listener)
{
    if (listener != nullptr)
        keyboardListeners.addIfNotAlreadyThere (listener);
}

void MusicKeyboard::removeKeyboardListener (Listener* listener)
{
    keyboardListeners.removeFirstMatchingValue (listener);
}

bool MusicKeyboard::isPressed (int note) const noexcept
{
    auto* key = getKey (note);
    return key != nullptr && key->pressed;
}

void MusicKeyboard::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                 EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    if (!SkinXml::isTag (element, "MusicKeyboard"))
        return;
    if (auto* size = SkinXml::getChild (element, "size"))
        setSize (SkinXml::getInt (*size, "width", 0), SkinXml::getInt (*size, "height", 0));
    if (auto* pos = SkinXml::getChild (element, "pos"))
        setTopLeftPosition (SkinXml::getInt (*pos, "left", 0), SkinXml::getInt (*pos, "top", 0));
    mouseEnabled = SkinXml::getBool (element, "mouseEnabled", true);
    firstKey = juce::jlimit (0, numKeys - 1, SkinXml::getInt (element, "firstKey", firstKey));
    lastKey = juce::jlimit (0, numKeys - 1, SkinXml::getInt (element, "lastKey", lastKey));

    if (auto* list = SkinXml::getChild (element, "Keys"))
    {
        int note = firstKey;
        for (auto* child : list->getChildIterator())
        {
            if (!SkinXml::isTag (*child, "Key") || note >= numKeys)
                continue;
            auto* key = keys[note++];
            key->left = juce::jmax (0, SkinXml::getInt (*child, "left", 0));
            key->right = juce::jmax (0, SkinXml::getInt (*child, "right", 0));
            if (auto* gfx = SkinXml::getChild (*child, "gfx"))
            {
                juce::Image image;
                loadResourceImage (SkinXml::getAttribute (*gfx, "resource"), image);
                key->framesNum = juce::jmax (1, SkinXml::getInt (*gfx, "framesNum", 1));
                key->strip = image;
            }
            if (auto* size = SkinXml::getChild (*child, "size"))
            {
                key->frameWidth = SkinXml::getInt (*size, "width", 0);
                key->frameHeight = SkinXml::getInt (*size, "height", 0);
            }
            if (auto* pos = SkinXml::getChild (*child, "pos"))
            {
                key->placedBySkin = true;
                key->setBounds (SkinXml::getInt (*pos, "left", 0) - getX(),
                                SkinXml::getInt (*pos, "top", 0) - getY(), key->frameWidth, key->frameHeight);
            }
        }
    }
    resized();
}

void MusicKeyboard::resized()
{
    // A range that holds no note shows no keys.
    const int count = lastKey - firstKey + 1;
    const float unit = count > 0 ? (float) getWidth() / (float) count : 0.0f;
    float x = 0.0f;
    for (auto* key : keys)
    {
        const bool inRange = count > 0 && key->note >= firstKey && key->note <= lastKey;
        key->setVisible (inRange);
        if (!inRange)
            continue;
        if (!key->placedBySkin)
        {
            const int n = key->note % semitones;
            const float width = key->isBlack() ? 1.0f : whiteWidth[n];
            const float leftEdge = x - (key->isBlack() ? 0.0f : whiteShift[n]) * unit;
            const int height = key->isBlack()
                                   ? (int) std::lround (blackDepth * (float) getHeight()) + overhang
                                   : getHeight() + overhang;
            key->setBounds ((int) std::lround (leftEdge), -overhang, (int) std::lround (width * unit) + 1,
                            height);
        }
        x += unit;
    }
}

MusicKeyboard::Key* MusicKeyboard::keyAt (juce::Point<int> position) const
{
    // The topmost key under the pointer: the child list from its last entry.
    for (int i = getNumChildComponents(); --i >= 0;)
        if (auto* key = dynamic_cast<Key*> (getChildComponent (i)))
            if (key->isVisible() && key->getBounds().contains (position))
                return key;
    return nullptr;
}

void MusicKeyboard::repaintAround (int note)
{
    // A key's picture may show its neighbours: every key that covers the note draws again.
    for (auto* key : keys)
        if (note >= key->note - key->left && note <= key->note + key->right)
            key->repaint();
}

void MusicKeyboard::press (Key* key)
{
    if (key == nullptr)
        return;
    key->pressed = true;
    pressedKey = key;
    repaintAround (key->note);
    const int note = key->note;
    callListenersBackwards (keyboardListeners, [this, note] (Listener& l) { l.noteOn (this, note); });
}

void MusicKeyboard::release()
{
    if (pressedKey == nullptr)
        return;
    auto* key = pressedKey;
    key->pressed = false;
    pressedKey = nullptr;
    repaintAround (key->note);
    const int note = key->note;
    callListenersBackwards (keyboardListeners, [this, note] (Listener& l) { l.noteOff (this, note); });
}

void MusicKeyboard::mouseDown (const juce::MouseEvent& e)
{
    if (mouseEnabled)
        press (keyAt (e.getPosition()));
}

void MusicKeyboard::mouseDrag (const juce::MouseEvent& e)
{
    if (!mouseEnabled)
        return;
    auto* under = keyAt (e.getPosition());
    if (under == pressedKey)
        return;
    release();
    press (under);
}

void MusicKeyboard::mouseUp (const juce::MouseEvent&)
{
    if (mouseEnabled)
        release();
}
