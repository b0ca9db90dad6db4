#include "HostStateCodec.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace
{
// The bank chunk block of the 2.4 interface: magics and sizes are big-endian 32-bit words; the chunk's
// size stands at byte 156, after seven header words and 128 spare bytes, and the chunk follows it.
constexpr size_t vstChunkSizeOffset = 156;
constexpr size_t vstChunkOffset = 160;

// JUCE's VST3 wrapper follows the chunk with 8 zero bytes, its private data, the private data's size
// (64-bit little-endian) and this identifier.
constexpr const char* jucePrivateDataIdentifier = "JUCEPrivateData";

const char* const vst3ComponentTag = "IComponent";
const char* const lv2StateKey = "StateString>";

bool hasMagic (const juce::MemoryBlock& block, size_t offset, const char* magic)
{
    return block.getSize() >= offset + 4 && std::memcmp (block.begin() + offset, magic, 4) == 0;
}

juce::MemoryBlock slice (const juce::MemoryBlock& block, size_t start, size_t end)
{
    return juce::MemoryBlock (block.begin() + start, end - start);
}

std::unique_ptr<juce::XmlElement> readVst3Document (const juce::MemoryBlock& hostState)
{
    auto xml = juce::AudioProcessor::getXmlFromBinary (hostState.getData(), (int) hostState.getSize());
    if (xml == nullptr || !xml->hasTagName ("VST3PluginState"))
        return nullptr;
    return xml;
}

bool readComponentState (const juce::XmlElement& document, juce::MemoryBlock& result)
{
    if (auto* component = document.getChildByName (vst3ComponentTag))
        return result.fromBase64Encoding (component->getAllSubText());
    return false;
}
} // namespace

HostStateCodec::Span HostStateCodec::findVstChunk (const juce::MemoryBlock& hostState)
{
    Span span;
    if (hostState.getSize() < vstChunkOffset || !hasMagic (hostState, 0, "CcnK")
        || !hasMagic (hostState, 8, "FBCh"))
        return span;
    const auto size = (size_t) juce::ByteOrder::bigEndianInt (hostState.begin() + vstChunkSizeOffset);
    if (vstChunkOffset + size > hostState.getSize())
        return span;
    span.start = vstChunkOffset;
    span.end = vstChunkOffset + size;
    span.found = true;
    return span;
}

HostStateCodec::Span HostStateCodec::findVst3Chunk (const juce::MemoryBlock& componentState)
{
    Span span;
    span.found = true;
    span.end = componentState.getSize();

    const auto identifierSize = std::strlen (jucePrivateDataIdentifier);
    const auto size = componentState.getSize();
    if (size < identifierSize + 2 * sizeof (juce::int64)
        || std::memcmp (componentState.begin() + size - identifierSize, jucePrivateDataIdentifier,
                        identifierSize)
               != 0)
        return span;

    const auto privateSize = (size_t) juce::ByteOrder::littleEndianInt64 (
        componentState.begin() + size - identifierSize - sizeof (juce::int64));
    const auto trailer = identifierSize + 2 * sizeof (juce::int64) + privateSize;
    if (trailer > size)
    {
        span.found = false;
        return span;
    }
    span.end = size - trailer;
    return span;
}

HostStateCodec::Span HostStateCodec::findLv2Chunk (const juce::String& turtle)
{
    Span span;
    const auto key = turtle.indexOf (lv2StateKey);
    if (key < 0)
        return span;
    const auto open = turtle.indexOfChar (key, '"');
    if (open < 0)
        return span;

    // A short literal, or a long one in three quotes.
    const bool longLiteral = turtle.substring (open, open + 3) == "\"\"\"";
    const auto start = open + (longLiteral ? 3 : 1);
    const auto end = longLiteral ? turtle.indexOf (start, "\"\"\"") : turtle.indexOfChar (start, '"');
    if (end < 0)
        return span;
    span.start = (size_t) start;
    span.end = (size_t) end;
    span.found = true;
    return span;
}

juce::MemoryBlock HostStateCodec::extractChunk (const juce::String& formatName,
                                                const juce::MemoryBlock& hostState)
{
    if (formatName == "VST")
    {
        const auto span = findVstChunk (hostState);
        return span.found ? slice (hostState, span.start, span.end) : juce::MemoryBlock();
    }

    if (formatName == "VST3")
    {
        juce::MemoryBlock component;
        const auto document = readVst3Document (hostState);
        if (document == nullptr || !readComponentState (*document, component))
            return {};
        const auto span = findVst3Chunk (component);
        return span.found ? slice (component, 0, span.end) : juce::MemoryBlock();
    }

    if (formatName == "LV2")
    {
        const auto turtle = hostState.toString();
        const auto span = findLv2Chunk (turtle);
        juce::MemoryBlock chunk;
        if (!span.found || !chunk.fromBase64Encoding (turtle.substring ((int) span.start, (int) span.end)))
            return {};
        return chunk;
    }

    return {};
}

juce::MemoryBlock HostStateCodec::replaceChunk (const juce::String& formatName,
                                                const juce::MemoryBlock& hostState,
                                                const juce::MemoryBlock& chunk)
{
    if (formatName == "VST")
    {
        if (!findVstChunk (hostState).found)
            return {};
        juce::MemoryBlock result (hostState.begin(), vstChunkOffset);
        const auto size = juce::ByteOrder::swapIfLittleEndian ((juce::uint32) chunk.getSize());
        result.copyFrom (&size, (int) vstChunkSizeOffset, sizeof (size));
        result.append (chunk.getData(), chunk.getSize());
        return result;
    }

    if (formatName == "VST3")
    {
        juce::MemoryBlock component;
        auto document = readVst3Document (hostState);
        if (document == nullptr || !readComponentState (*document, component))
            return {};
        const auto span = findVst3Chunk (component);
        if (!span.found)
            return {};

        juce::MemoryBlock replaced (chunk);
        replaced.append (component.begin() + span.end, component.getSize() - span.end);
        auto* element = document->getChildByName (vst3ComponentTag);
        element->deleteAllChildElements();
        element->addTextElement (replaced.toBase64Encoding());

        juce::MemoryBlock result;
        juce::AudioProcessor::copyXmlToBinary (*document, result);
        return result;
    }

    if (formatName == "LV2")
    {
        const auto turtle = hostState.toString();
        const auto span = findLv2Chunk (turtle);
        if (!span.found)
            return {};
        const auto replaced = turtle.substring (0, (int) span.start) + chunk.toBase64Encoding()
                              + turtle.substring ((int) span.end);
        return juce::MemoryBlock (replaced.toRawUTF8(), replaced.getNumBytesAsUTF8());
    }

    return {};
}
