#include "frame/XmlText.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <gtest/gtest.h>

#include <string>

namespace
{
std::unique_ptr<juce::XmlElement> parseBytes (const std::string& bytes)
{
    return XmlText::parse (bytes.data(), bytes.size());
}

TEST (XmlText, ReadsWellFormedDocumentsWithTheirProlog)
{
    const auto xml =
        parseBytes ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a note -->\n"
                    "<Preset name=\"Caf\xc3\xa9\"><param name=\"Preamp\" value=\"0.5\"/></Preset>");
    ASSERT_NE (xml, nullptr);
    EXPECT_EQ (xml->getStringAttribute ("name"), juce::String (juce::CharPointer_UTF8 ("Caf\xc3\xa9")));
    EXPECT_EQ (xml->getNumChildElements(), 1);
}

TEST (XmlText, RefusesTextThatJucesParserMisreads)
{
    // Bytes that aren't UTF-8: a stray lead byte, a cut-off sequence at the end, a stray continuation.
    EXPECT_EQ (parseBytes ("<Preset name=\"a\xff\"/>"), nullptr);
    EXPECT_EQ (parseBytes ("<Preset name=\"a\"/>\xc3"), nullptr);
    EXPECT_EQ (parseBytes ("<Preset>\x8a</Preset>"), nullptr);
    // An instruction followed by text inside the root would never end.
    EXPECT_EQ (parseBytes ("<EventsMap>e<e a=\"1\"><?xml version=\"1.0\"?>\x18t</e></EventsMap>"), nullptr);
    EXPECT_EQ (XmlText::parse (juce::String ("<a><?pi?>text</a>")), nullptr);
    // A character reference that the text ends in, that isn't closed, or that names no character.
    EXPECT_EQ (parseBytes ("<a><b>text &#X"), nullptr);
    EXPECT_EQ (parseBytes ("<a v=\"&#12\"/>"), nullptr);
    EXPECT_EQ (parseBytes ("<a>&#;</a>"), nullptr);
    EXPECT_EQ (parseBytes ("<a v=\"&#x7FFFFFFF;\"/>"), nullptr);
    EXPECT_EQ (parseBytes ("<a v=\"&#xD800;\"/>"), nullptr);
    EXPECT_EQ (parseBytes ("<a>&#0;</a>"), nullptr);
    EXPECT_EQ (parseBytes ("<a>&#x000000041;</a>"), nullptr);
    // An unknown reference, which JUCE would parse as elements up to the ";" inside it.
    EXPECT_EQ (parseBytes ("<a>e&<b>x&#xCC;y</a>"), nullptr);
    EXPECT_EQ (parseBytes ("<a v=\"&nbsp;\"/>"), nullptr);
    EXPECT_EQ (parseBytes ("<a>&</a>"), nullptr);
}

TEST (XmlText, ReadsReferencesToCharactersAndTheFiveNamedEntities)
{
    const auto xml = parseBytes ("<a v=\"&#65;&#x42;&amp;&QUOT;&apos;\">&lt;&#x10FFFF;&gt;</a>");
    ASSERT_NE (xml, nullptr);
    EXPECT_EQ (xml->getStringAttribute ("v"), "AB&\"'");
    EXPECT_EQ (xml->getAllSubText(), juce::String ("<") + juce::String::charToString (0x10FFFF) + ">");
}

TEST (XmlText, WalksOnlyDocumentsShapedAsWeWriteThem)
{
    // Comments, character data and a ">" in an attribute are ours to read; nothing after the root is read.
    ASSERT_NE (parseBytes ("<a x='1>0'><!-- & --><![CDATA[<&>]]><b/></a> trailing <&"), nullptr);
    EXPECT_EQ (parseBytes ("<a x='1>0'><![CDATA[<&>]]></a>")->getAllSubText(), "<&>");
    EXPECT_EQ (parseBytes ("<a><b></a></b>"), nullptr);
    EXPECT_EQ (parseBytes ("<a><b></bb></a>"), nullptr);
    EXPECT_EQ (parseBytes ("<a x=1/>"), nullptr);
    EXPECT_EQ (parseBytes ("< a/>"), nullptr);
    EXPECT_EQ (parseBytes ("<!DOCTYPE a [<!ENTITY e \"<b/>\">]><a>&e;</a>"), nullptr);
    EXPECT_EQ (parseBytes ("<a><!-- unclosed </a>"), nullptr);
    EXPECT_EQ (parseBytes ("<a>text"), nullptr);
}

TEST (XmlText, RefusesNestingDeeperThanAReaderShouldRecurse)
{
    const auto nested = [] (int depth)
    {
        std::string text;
        for (int i = 0; i < depth; ++i)
            text += "<e>";
        for (int i = 0; i < depth; ++i)
            text += "</e>";
        return text;
    };
    EXPECT_NE (parseBytes (nested (256)), nullptr);
    EXPECT_EQ (parseBytes (nested (257)), nullptr);
    // A file of a million levels must not take the host's stack with it.
    EXPECT_EQ (parseBytes (nested (1000000)), nullptr);
}

TEST (XmlText, ReadsUtf8FilesWithOrWithoutTheirMark)
{
    const auto xml = parseBytes ("\xef\xbb\xbf<?xml version=\"1.0\"?><MidiCCMap/>");
    ASSERT_NE (xml, nullptr);
    EXPECT_TRUE (xml->hasTagName ("MidiCCMap"));
}

TEST (XmlText, ReadsUtf16FilesBehindTheirMark)
{
    const juce::String text ("<MidiCCMap><assign CC=\"7\" param=\"FX\"/></MidiCCMap>");
    juce::MemoryOutputStream out;
    out.writeByte ((char) 0xFF);
    out.writeByte ((char) 0xFE);
    for (auto c : text)
        out.writeShort ((short) c);
    const auto xml = XmlText::parse (out.getData(), out.getDataSize());
    ASSERT_NE (xml, nullptr);
    EXPECT_TRUE (xml->hasTagName ("MidiCCMap"));
}

TEST (XmlText, ReadsChunksAsJuceWritesThemAndRefusesDamagedOnes)
{
    juce::XmlElement state ("PluginState");
    state.setAttribute ("application", "Vantrice");
    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (state, chunk);

    const auto read = XmlText::fromBinary (chunk.getData(), (int) chunk.getSize());
    ASSERT_NE (read, nullptr);
    EXPECT_TRUE (read->isEquivalentTo (&state, false));

    EXPECT_EQ (XmlText::fromBinary (chunk.getData(), 8), nullptr);
    EXPECT_EQ (XmlText::fromBinary (nullptr, 100), nullptr);
    auto wrongMagic = chunk;
    static_cast<char*> (wrongMagic.getData())[0] ^= 1;
    EXPECT_EQ (XmlText::fromBinary (wrongMagic.getData(), (int) wrongMagic.getSize()), nullptr);
    auto brokenText = chunk;
    static_cast<char*> (brokenText.getData())[10] = (char) 0xFF;
    EXPECT_EQ (XmlText::fromBinary (brokenText.getData(), (int) brokenText.getSize()), nullptr);
}

TEST (XmlText, AMissingFileDoesNotParse)
{
    EXPECT_EQ (XmlText::parse (juce::File ("/nonexistent/vantrice/none.xml")), nullptr);
}
} // namespace
