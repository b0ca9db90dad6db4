#pragma once

#include <juce_graphics/juce_graphics.h>

// Every file that the plug-in needs at start is embedded in it at build time. A block is found by a key
// "name.type": the text in front of the last point is the name, the text behind it the type, and both
// compare without regard to case against the embedded file's own name. Nothing is read from disk.

// Whether key names the file fileName: both split at their last point, name and type equal ignoring
// case. A key without a point, or with an empty name or type, names no file.
bool resourceKeyMatches (const juce::String& key, const juce::String& fileName);

// The block's bytes as a new memory block, or null if there is no such block or it is empty.
std::unique_ptr<juce::MemoryBlock> loadResourceData (const juce::String& key);

// The block read as UTF-8 text, or the empty text.
juce::String loadResourceText (const juce::String& key);

// Decodes the block into image; a block under 5 bytes, or one that doesn't decode, gives a null image.
// Returns whether the block exists; a missing block leaves image as it was.
bool loadResourceImage (const juce::String& key, juce::Image& image);

// Decodes the block once per process through JUCE's image cache, which keeps pictures that are asked for
// often; a null image if there is no such block or it doesn't decode.
juce::Image loadCachedResourceImage (const juce::String& key);
