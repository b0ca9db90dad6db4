#include "skin/NoteDisplay.h"

#include "common/ResourceLoader.h"
#include "skin/SkinXml.h"

namespace
{
constexpr int semitones = 12, highestNote = 127;
constexpr int letterOf[semitones] = { 0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6 };
constexpr bool isSharp[semitones] = { false, true,  false, true,  false, false,
                                      true,  false, true,  false, true,  false };
const char* const letters[] = { "C", "D", "E", "F", "G", "A", "B" };
// The cells' strips: a blank and the seven letters (and one frame more), a blank, sharp and natural, a
// blank and the octaves.
constexpr int noteFrames = 9, toneFrames = 3, octaveFrames = 13;
constexpr int semitonePixels = 20;
constexpr float smallestHorizontalScale = 0.7f;
} // namespace

NoteDisplay::NoteDisplay (const juce::String& name)
    : juce::Component (name)
{
    notes.frames = noteFrames;
    tones.frames = toneFrames;
    octaves.frames = octaveFrames;
}

void NoteDisplay::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                               EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    if (!SkinXml::isTag (element, "NoteDisplay"))
        return;
    if (auto* size = SkinXml::getChild (element, "size"))
    {
        cellWidth = SkinXml::getInt (*size, "width", 0) / 3;
        cellHeight = SkinXml::getInt (*size, "height", 0);
    }
    for (auto* cell : { &notes, &tones, &octaves })
        cell->area = { 0, 0, cellWidth, cellHeight };
    if (auto* gfx = SkinXml::getChild (element, "gfx"))
    {
        const std::pair<const char*, Cell*> named[] = { { "notes", &notes },
                                                        { "tones", &tones },
                                                        { "octaves", &octaves } };
        for (const auto& [tag, cell] : named)
            if (auto* child = SkinXml::getChild (*gfx, tag))
            {
                juce::Image image;
                loadResourceImage (SkinXml::getAttribute (*child, "resource"), image);
                if (image.isValid())
                {
                    cell->strip = image;
                    cell->area.setSize (image.getWidth(), image.getHeight() / cell->frames);
                }
            }
    }
    tones.area.setX (notes.area.getRight());
    octaves.area.setX (tones.area.getRight());
    if (auto* pos = SkinXml::getChild (element, "pos"))
        setTopLeftPosition (SkinXml::getInt (*pos, "left", 0), SkinXml::getInt (*pos, "top", 0));
    // The three cells' heights add up, as the format has it, though they stand in a row.
    setSize (notes.area.getWidth() + tones.area.getWidth() + octaves.area.getWidth(),
             notes.area.getHeight() + tones.area.getHeight() + octaves.area.getHeight());
    repaint();
}

void NoteDisplay::updateFromParameter (Parameter* changed)
{
    const int newNote = juce::jlimit (0, highestNote, changed->getIntValue());
    if (newNote == note)
        return;
    note = newNote;
    repaint();
}

void NoteDisplay::getFrames (int& letterFrame, int& toneFrame, int& octaveFrame) const
{
    if (!isEnabled() || isBlinkedOff())
    {
        letterFrame = toneFrame = octaveFrame = 0;
        return;
    }
    letterFrame = letterOf[note % semitones] + 1;
    toneFrame = isSharp[note % semitones] ? 1 : 2;
    octaveFrame = note / semitones + 1;
}

void NoteDisplay::mouseDown (const juce::MouseEvent&)
{
    beginGesture();
    dragStartNote = note;
    dragStep = 1.0;
    pixelsPerStep = semitonePixels;
    dragging = true;
}

void NoteDisplay::mouseDrag (const juce::MouseEvent& e)
{
    if (!dragging)
        return;
    const int newNote =
        juce::jlimit (0, highestNote, dragStartNote + (e.getMouseDownY() - e.y) / pixelsPerStep);
    if (newNote == note)
        return;
    note = newNote;
    if (parameter != nullptr)
    {
        parameter->setIntValue (note, true);
        sendValueChanged();
    }
    repaint();
}

void NoteDisplay::mouseUp (const juce::MouseEvent&)
{
    if (!dragging)
        return;
    endGesture();
    dragging = false;
}

void NoteDisplay::drawCell (juce::Graphics& g, const Cell& cell, int frame, const juce::String& text) const
{
    if (cell.strip.isValid())
    {
        const int h = cell.area.getHeight();
        g.drawImage (cell.strip, cell.area.getX(), cell.area.getY(), cell.area.getWidth(), h, 0,
                     juce::jlimit (0, cell.frames - 1, frame) * h, cell.area.getWidth(), h);
        return;
    }
    g.setColour (juce::Colours::white);
    g.fillRect (cell.area);
    g.setColour (juce::Colours::black);
    g.drawFittedText (text, cell.area, juce::Justification::centred, 1, smallestHorizontalScale);
}

void NoteDisplay::paint (juce::Graphics& g)
{
    int letterFrame = 0, toneFrame = 0, octaveFrame = 0;
    getFrames (letterFrame, toneFrame, octaveFrame);
    const bool shown = letterFrame != 0;
    drawCell (g, notes, letterFrame, shown ? letters[letterFrame - 1] : "");
    drawCell (g, tones, toneFrame, shown ? (toneFrame == 1 ? "#" : "-") : "");
    drawCell (g, octaves, octaveFrame, shown ? juce::String (note / semitones) : juce::String());
}
