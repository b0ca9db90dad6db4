#pragma once

#include <juce_graphics/juce_graphics.h>

/** A screenshot in X's window dump format, as `xwd` writes it, turned into an image that can be saved as
    PNG. Takes true-colour dumps of 24 or 32 bits per pixel, which is what a 24-bit X screen gives. */
class XwdImage
{
public:
    explicit XwdImage (const juce::File& file);

    bool isValid() const noexcept { return image.isValid(); }
    const juce::String& getError() const noexcept { return error; }
    const juce::Image& getImage() const noexcept { return image; }

    bool writePng (const juce::File& file) const;

    /** The number of different colours in the picture. */
    int countColours() const;

    /** "WIDTHxHEIGHT, N colours". */
    juce::String describe() const;

private:
    bool read (const juce::MemoryBlock& data);

    juce::Image image;
    juce::String error;
};
