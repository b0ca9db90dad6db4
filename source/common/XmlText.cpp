#include "common/XmlText.h"

#include <array>
#include <cstring>
#include <limits>
#include <strings.h>
#include <utility>

namespace
{
// Far beyond our documents' four levels, and far within any thread's stack for JUCE's recursive reader.
constexpr int maxDepth = 256;

bool isSpace (char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool isNameChar (char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-'
           || c == ':' || c == '.';
}

const char* skipSpace (const char* p)
{
    while (isSpace (*p))
        ++p;
    return p;
}

const char* skipName (const char* p)
{
    while (isNameChar (*p))
        ++p;
    return p;
}

bool startsWith (const char* p, const char* prefix)
{
    return std::strncmp (p, prefix, std::strlen (prefix)) == 0;
}

// Past the first `closing` at or after p, or nullptr when the text has none.
const char* pastClosing (const char* p, const char* closing)
{
    const char* found = std::strstr (p, closing);
    return found == nullptr ? nullptr : found + std::strlen (closing);
}

// Past the reference that starts at p's "&": one of the five named ones, without regard to case as JUCE
// reads them, or a character reference to a character text can hold, with no more digits than JUCE
// reads (eight hexadecimal, twelve decimal). Anything else gives nullptr.
const char* pastReference (const char* p)
{
    static constexpr const char* named[] = { "amp;", "quot;", "apos;", "lt;", "gt;" };
    for (const char* name : named)
        if (strncasecmp (p + 1, name, std::strlen (name)) == 0)
            return p + 1 + std::strlen (name);
    if (p[1] != '#')
        return nullptr;
    const bool hex = p[2] == 'x' || p[2] == 'X';
    const char* digits = p + (hex ? 3 : 2);
    const int base = hex ? 16 : 10;
    const long maxDigits = hex ? 8 : 12;
    juce::int64 code = 0;
    const char* end = digits;
    for (;; ++end)
    {
        const int digit =
            hex ? juce::CharacterFunctions::getHexDigitValue ((juce::juce_wchar) (unsigned char) *end)
                : ((*end >= '0' && *end <= '9') ? *end - '0' : -1);
        if (digit < 0)
            break;
        if (end - digits == maxDigits)
            return nullptr;
        code = code * base + digit;
    }
    const bool isCharacter = code > 0 && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
    return (end != digits && *end == ';' && isCharacter) ? end + 1 : nullptr;
}

// Past a start tag's attributes and its ">" or "/>" (telling which in `empty`), or nullptr.
const char* pastAttributes (const char* p, bool& empty)
{
    for (;;)
    {
        p = skipSpace (p);
        if (*p == '>' || (p[0] == '/' && p[1] == '>'))
        {
            empty = *p == '/';
            return p + (empty ? 2 : 1);
        }
        const char* nameEnd = skipName (p);
        if (nameEnd == p)
            return nullptr;
        p = skipSpace (nameEnd);
        if (*p != '=')
            return nullptr;
        p = skipSpace (p + 1);
        const char quote = *p;
        if (quote != '"' && quote != '\'')
            return nullptr;
        for (++p; *p != quote;)
        {
            if (*p == 0)
                return nullptr;
            p = *p == '&' ? pastReference (p) : p + 1;
            if (p == nullptr)
                return nullptr;
        }
        ++p;
    }
}
// Whether the text walks cleanly as a plain document (see the class).
bool isPlainDocument (const juce::String& text)
{
    const char* p = text.toRawUTF8();
    for (;;)
    {
        p = skipSpace (p);
        if (startsWith (p, "<?"))
            p = pastClosing (p + 2, "?>");
        else if (startsWith (p, "<!--"))
            p = pastClosing (p + 4, "-->");
        else
            break;
        if (p == nullptr)
            return false;
    }
    if (*p != '<')
        return false;

    // The names of the elements open around p, to match their end tags against.
    std::array<std::pair<const char*, size_t>, maxDepth> open{};
    int depth = 0;
    for (;;)
    {
        const char* name = p + 1;
        const char* nameEnd = skipName (name);
        if (nameEnd == name || depth == maxDepth)
            return false;
        bool empty = false;
        p = pastAttributes (nameEnd, empty);
        if (p == nullptr)
            return false;
        if (!empty)
            open[(size_t) depth++] = { name, (size_t) (nameEnd - name) };

        // Content up to the next start tag; JUCE reads nothing after the root's end.
        for (;;)
        {
            if (depth == 0)
                return true;
            if (*p == 0)
                return false;
            if (*p == '&')
                p = pastReference (p);
            else if (*p != '<')
                ++p;
            else if (startsWith (p, "<!--"))
                p = pastClosing (p + 4, "-->");
            else if (startsWith (p, "<![CDATA["))
                p = pastClosing (p + 9, "]]>");
            else if (p[1] == '/')
            {
                const auto [openName, length] = open[(size_t) (depth - 1)];
                if (std::strncmp (p + 2, openName, length) != 0 || isNameChar (p[2 + length]))
                    return false;
                p = skipSpace (p + 2 + length);
                if (*p != '>')
                    return false;
                ++p;
                --depth;
            }
            else
                break;
            if (p == nullptr)
                return false;
        }
    }
}

// Whether the bytes up to `size` or the first zero byte are whole UTF-8 characters.
bool isValidUtf8 (const char* data, size_t size)
{
    if (data == nullptr)
        return true;
    const int limit = (int) juce::jmin (size, (size_t) std::numeric_limits<int>::max());
    return juce::CharPointer_UTF8::isValidString (data, limit);
}

// Text known to be UTF-8, walked before JUCE reads it.
std::unique_ptr<juce::XmlElement> parseValidText (const juce::String& text)
{
    return isPlainDocument (text) ? juce::XmlDocument::parse (text) : nullptr;
}

// Bytes that must be UTF-8 before JUCE turns them into text at all.
std::unique_ptr<juce::XmlElement> parseUtf8 (const char* text, size_t size)
{
    return isValidUtf8 (text, size) ? parseValidText (juce::String::fromUTF8 (text, (int) size)) : nullptr;
}
} // namespace

std::unique_ptr<juce::XmlElement> XmlText::parse (const juce::String& text)
{
    return isValidUtf8 (text.toRawUTF8(), text.getNumBytesAsUTF8()) ? parseValidText (text) : nullptr;
}

std::unique_ptr<juce::XmlElement> XmlText::parse (const void* data, size_t size)
{
    const auto* bytes = static_cast<const juce::uint8*> (data);
    if (bytes == nullptr || size == 0 || size > (size_t) std::numeric_limits<int>::max())
        return nullptr;
    // UTF-16 behind its mark is converted by JUCE, which checks it as it goes; anything else is UTF-8.
    const bool utf16 =
        size >= 2 && ((bytes[0] == 0xFF && bytes[1] == 0xFE) || (bytes[0] == 0xFE && bytes[1] == 0xFF));
    if (utf16)
        return parse (juce::String::createStringFromData (data, (int) size));
    // Editors that write UTF-8 may put its mark first, which JUCE would take for text before the root.
    const bool utf8Mark = size >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF;
    return parseUtf8 (static_cast<const char*> (data) + (utf8Mark ? 3 : 0), size - (utf8Mark ? 3 : 0));
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
    const auto size = (size_t) juce::jmin (sizeInBytes - headerSize, length);
    return parseUtf8 (static_cast<const char*> (data) + headerSize, size);
}

juce::Array<juce::XmlElement*> XmlText::childrenTagged (const juce::XmlElement& element, juce::StringRef tag)
{
    juce::Array<juce::XmlElement*> children;
    for (auto* child : element.getChildIterator())
        if (isTag (*child, tag))
            children.add (child);
    return children;
}
