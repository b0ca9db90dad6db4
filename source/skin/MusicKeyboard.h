#pragma once

#include "skin/GUIController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A keyboard of the 128 MIDI notes, of which a range shows, played with the mouse: a press sounds the
    key under the pointer, a drag moves the note from key to key, the release ends it. A key drawn from a
    strip shows its neighbours' presses too, where its picture covers them. */
class MusicKeyboard : public GUIController, public juce::Component
{
public:
    static constexpr int numKeys = 128;

    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void noteOn (MusicKeyboard*, int note) = 0;
        virtual void noteOff (MusicKeyboard*, int note) = 0;
    };

    /** One key; its strip, if any, holds a picture for every combination of the neighbours it covers,
        first with the key up, then pressed. */
    class Key final : public juce::Component
    {
    public:
        Key (MusicKeyboard& owner, int note);
        void paint (juce::Graphics& g) override;
        /** The frame its strip shows now. */
        int getFrame() const;
        bool isBlack() const noexcept;

        MusicKeyboard& keyboard;
        const int note;
        bool pressed = false;
        juce::Image strip;
        int framesNum = 1;
        int frameWidth = 0, frameHeight = 0;
        int left = 0, right = 0; // neighbouring notes the picture covers
        bool placedBySkin = false;
    };

    explicit MusicKeyboard (const juce::String& name = {});

    void addKeyboardListener (Listener* listener);
    void removeKeyboardListener (Listener* listener);

    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;

    Key* getKey (int note) const noexcept
    {
        return juce::isPositiveAndBelow (note, numKeys) ? keys[note] : nullptr;
    }
    bool isPressed (int note) const noexcept;
    int getFirstKey() const noexcept { return firstKey; }
    int getLastKey() const noexcept { return lastKey; }

    void resized() override;
    void mouseDown (const juce::MouseEvent& e) override;
    void mouseDrag (const juce::MouseEvent& e) override;
    void mouseUp (const juce::MouseEvent& e) override;

private:
    Key* keyAt (juce::Point<int> position) const;
    void press (Key* key);
    void release();
    void repaintAround (int note);

    juce::OwnedArray<Key> keys;
    int firstKey = 0, lastKey = numKeys - 1;
    bool mouseEnabled = true;
    Key* pressedKey = nullptr;
    juce::Array<Listener*> keyboardListeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MusicKeyboard)
};
