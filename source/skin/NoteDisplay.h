#pragma once

#include "skin/GUIController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A MIDI note in three cells (letter, sharp or natural, octave), changed by a vertical drag of 20 pixels
    a semitone. */
class NoteDisplay : public GUIController, public juce::Component
{
public:
    explicit NoteDisplay (const juce::String& name = {});

    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void updateFromParameter (Parameter* changed) override;
    void blinkChanged() override { repaint(); }

    int getNote() const noexcept { return note; }
    /** The frames the three cells show now: letter, sharp or natural, octave. */
    void getFrames (int& letterFrame, int& toneFrame, int& octaveFrame) const;

    void mouseDown (const juce::MouseEvent& e) override;
    void mouseDrag (const juce::MouseEvent& e) override;
    void mouseUp (const juce::MouseEvent& e) override;
    void paint (juce::Graphics& g) override;

private:
    struct Cell
    {
        juce::Image strip;
        int frames = 1;
        juce::Rectangle<int> area;
    };

    void drawCell (juce::Graphics& g, const Cell& cell, int frame, const juce::String& text) const;

    int note = 0;
    int dragStartNote = 0;
    double dragStep = 1.0;
    int pixelsPerStep = 20;
    bool dragging = false;
    int cellWidth = 10, cellHeight = 16;
    Cell notes, tones, octaves;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (NoteDisplay)
};
