#pragma once

#include "skin/GUIController.h"

#include <juce_graphics/juce_graphics.h>

/** A control drawn from a frame strip: frames stand one above the other, frame 0 on top, each of the
    strip's full width. */
class BaseGFXController : public GUIController
{
public:
    /** The frame a normalised value shows on a strip of `numFrames`: floor((n - 1) x v + 0.5) with v held
        to 0 to 1, worked out in single precision up to the floor. */
    static int frameForValue (float value, int numFrames) noexcept;

    /** Links and actions, then the strip, then the size (only without a strip), then the position. */
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;

    /** Reads the child `gfx`: its frame count (at least 1, so that nothing divides by zero) and strip. */
    void loadGfx (const juce::XmlElement& element);
    void loadSize (const juce::XmlElement& element);
    void loadPos (const juce::XmlElement& element);

    /** Takes a strip of `frames` frames and works out the frame size from it. */
    void setStrip (const juce::Image& image, int frames);

    const juce::Image& getStrip() const noexcept { return strip; }
    int getNumFrames() const noexcept { return framesNum; }
    int getFrameWidth() const noexcept { return frameWidth; }
    int getFrameHeight() const noexcept { return frameHeight; }
    int getLeft() const noexcept { return left; }
    int getTop() const noexcept { return top; }

    /** The component follows the new frame size or position where a class wants it so. */
    virtual void frameSizeChanged() {}
    virtual void positionChanged() {}

protected:
    /** Draws frame `frame` of the strip at (0, 0) at the frame's size. On a screen of 1.5 pixels per point
        or more, the strip of twice the size is drawn instead, decoded the first time it is needed. */
    void drawFrame (juce::Graphics& g, int frame);

    /** The sharper strip for dense screens, if the skin has one; null otherwise. */
    const juce::Image& getDoubleStrip();

    juce::Image strip;
    juce::String stripKey; // where the strip came from, to find its double
    int framesNum = 1;
    int frameWidth = 0, frameHeight = 0;
    int left = 0, top = 0;

private:
    juce::Image doubleStrip;
    bool doubleStripLooked = false;
};
