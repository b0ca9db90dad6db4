#pragma once

#include <juce_core/juce_core.h>

#include <memory>

/** Parses documents that come from outside: files, host chunks, foreign text. JUCE's parser trusts its
    text: it reads past the end of text that isn't UTF-8, steps past the end of a character reference
    that isn't closed, parses an unknown reference as elements, writes a reference to no character as
    bytes that aren't UTF-8, never finishes a processing instruction followed by text inside an
    element, and recurses once per level of nesting. So text must first walk cleanly as a plain
    document, the kind we write, which JUCE reads exactly and safely: a prolog of space, comments and
    instructions (the declaration among them), then one root element holding only elements (at most 256
    deep, each closed by its own name), text, comments and character data, with quoted attributes, and
    with references only to the five named entities or to characters. Anything else counts as not
    parsing. */
class XmlText final
{
public:
    static std::unique_ptr<juce::XmlElement> parse (const juce::String& text);
    /** Bytes as a file holds them: UTF-8 with or without its mark, or UTF-16 behind its mark. */
    static std::unique_ptr<juce::XmlElement> parse (const void* data, size_t size);
    /** Reads the file as JUCE does, byte order marks included; a missing file doesn't parse. */
    static std::unique_ptr<juce::XmlElement> parse (const juce::File& file);
    /** A processor's binary chunk: JUCE's header followed by the text. */
    static std::unique_ptr<juce::XmlElement> fromBinary (const void* data, int sizeInBytes);

    /** Tags of our documents compare exactly, as they are written. JUCE's hasTagName ignores case, and
        stops a debug build when only the case differs, so no reader of these documents uses it. */
    static bool isTag (const juce::XmlElement& element, juce::StringRef tag)
    {
        return element.getTagName() == tag;
    }
    /** The children with exactly this tag, in document order. */
    static juce::Array<juce::XmlElement*> childrenTagged (const juce::XmlElement& element,
                                                          juce::StringRef tag);
};
