#include "XmlText.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <strings.h>

std::unique_ptr<juce::XmlElement> XmlText::parse (const juce::String& text)
{
    if (!isValidUtf8 (text.toRawUTF8(), text.getNumBytesAsUTF8()) || hasInstructionInContent (text)
        || hasForeignReference (text))
        return nullptr;
    return juce::XmlDocument::parse (text);
}

std::unique_ptr<juce::XmlElement> XmlText::parse (const void* data, size_t size)
{
    const auto* bytes = static_cast<const juce::uint8*> (data);
    if (bytes == nullptr || size == 0 || size > (size_t) std::numeric_limits<int>::max())
        return nullptr;
    // UTF-16 behind its mark is converted by JUCE, which checks it as it goes; anything else must be
    // UTF-8 before JUCE turns it into text at all.
    const bool utf16 =
        size >= 2 && ((bytes[0] == 0xFF && bytes[1] == 0xFE) || (bytes[0] == 0xFE && bytes[1] == 0xFF));
    if (utf16)
        return parse (juce::String::createStringFromData (data, (int) size));
    if (!isValidUtf8 (static_cast<const char*> (data), size))
        return nullptr;
    return parse (juce::String::fromUTF8 (static_cast<const char*> (data), (int) size));
}

std::unique_ptr<juce::XmlElement> XmlText::parse (const juce::File& file)
{
    juce::MemoryBlock bytes;
    if (!file.existsAsFile() || !file.loadFileAsData (bytes))
        return nullptr;
    return parse (bytes.getData(), bytes.getSize());
}

std::unique_ptr<juce::XmlElement> XmlText::fromBinary (const void* data, int sizeInBytes)
{
    // JUCE's chunk: a magic number, the text's length, then the text.
    constexpr int headerSize = 8;
    if (data == nullptr || sizeInBytes <= headerSize)
        return nullptr;
    constexpr juce::uint32 magic = 0x21324356; // JUCE's copyXmlToBinary
    if (juce::ByteOrder::littleEndianInt (data) != magic)
        return nullptr;
    const auto length = (int) juce::ByteOrder::littleEndianInt (juce::addBytesToPointer (data, 4));
    if (length <= 0)
        return nullptr;
    const auto* text = static_cast<const char*> (data) + headerSize;
    const auto size = (size_t) juce::jmin (sizeInBytes - headerSize, length);
    if (!isValidUtf8 (text, size))
        return nullptr;
    return parse (juce::String::fromUTF8 (text, (int) size));
}

bool XmlText::hasForeignReference (const juce::String& text)
{
    // JUCE reads the five named references without regard to case, as these comparisons do.
    static constexpr const char* named[] = { "amp;", "quot;", "apos;", "lt;", "gt;" };
    for (const char* p = std::strchr (text.toRawUTF8(), '&'); p != nullptr; p = std::strchr (p + 1, '&'))
    {
        const char* name = p + 1;
        if (std::any_of (std::begin (named), std::end (named),
                         [name] (const char* n) { return strncasecmp (name, n, std::strlen (n)) == 0; }))
            continue;
        if (*name != '#')
            return true;
        const char* digits = name + 1;
        const bool hex = *digits == 'x' || *digits == 'X';
        if (hex)
            ++digits;
        const char* end = digits;
        while (hex ? juce::CharacterFunctions::getHexDigitValue ((juce::juce_wchar) (unsigned char) *end) >= 0
                   : (*end >= '0' && *end <= '9'))
            ++end;
        if (end == digits || *end != ';')
            return true;
    }
    return false;
}

bool XmlText::hasInstructionInContent (const juce::String& text)
{
    // The root starts at the first "<" that opens neither a declaration, an instruction nor a comment.
    const auto* t = text.toRawUTF8();
    const char* root = nullptr;
    for (const char* p = std::strchr (t, '<'); p != nullptr; p = std::strchr (p + 1, '<'))
        if (p[1] != '?' && p[1] != '!')
        {
            root = p;
            break;
        }
    return root != nullptr && std::strstr (root, "<?") != nullptr;
}

bool XmlText::isValidUtf8 (const char* data, size_t size)
{
    if (data == nullptr)
        return true;
    const int limit = (int) juce::jmin (size, (size_t) std::numeric_limits<int>::max());
    return juce::CharPointer_UTF8::isValidString (data, limit);
}
