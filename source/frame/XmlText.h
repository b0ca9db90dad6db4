#pragma once

#include <juce_core/juce_core.h>

#include <memory>

/** Parses documents that come from outside: files, host chunks, foreign text. JUCE's parser trusts its
    text to be UTF-8 and reads past the end of text that isn't, it steps past the end of a character
    reference that isn't closed, it parses an unknown reference that starts with "<" as elements, cut off
    at the next ";" (even one that closes a reference inside it), and it never finishes a processing
    instruction followed by text inside an element. Our documents have none of these, so such text
    counts as not parsing. */
class XmlText
{
public:
    static std::unique_ptr<juce::XmlElement> parse (const juce::String& text);
    /** Bytes as a file holds them: UTF-8, or UTF-16 behind its byte order mark. */
    static std::unique_ptr<juce::XmlElement> parse (const void* data, size_t size);
    /** Reads the file as JUCE does, byte order marks included; a missing file doesn't parse. */
    static std::unique_ptr<juce::XmlElement> parse (const juce::File& file);
    /** A processor's binary chunk: JUCE's header followed by the text. */
    static std::unique_ptr<juce::XmlElement> fromBinary (const void* data, int sizeInBytes);

    /** Whether an ampersand starts anything but one of the five named references ("&amp;" and its
        kin) or a character reference with its digits and closing ";". */
    static bool hasForeignReference (const juce::String& text);

    /** Whether a processing instruction ("<?") stands anywhere behind the start of the root element. */
    static bool hasInstructionInContent (const juce::String& text);

    /** Whether the bytes up to `size` or the first zero byte are whole UTF-8 characters. */
    static bool isValidUtf8 (const char* data, size_t size);
};
