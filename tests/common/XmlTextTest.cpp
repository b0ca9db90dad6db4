#include "common/XmlText.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace
{
std::unique_ptr<juce::XmlElement> parseBytes (const std::string& bytes)
{
    return XmlText::parse (bytes.data(), bytes.size());
}

struct RefusedText
{
    const char* name;
    std::string bytes;
};

std::ostream& operator<< (std::ostream& out, const RefusedText& text) { return out << text.name; }

// Text JUCE's parser would misread (past the end of its text, forever, or into bytes that aren't UTF-8),
// and text that isn't shaped as we write documents.
const RefusedText refusedTexts[] = {
    { "StrayLeadByte", "<Preset name=\"a\xff\"/>" },
    { "CutOffSequence", "<Preset name=\"a\"/>\xc3" },
    { "StrayContinuation", "<Preset>\x8a</Preset>" },
    { "InstructionBeforeText", "<EventsMap>e<e a=\"1\"><?xml version=\"1.0\"?>\x18t</e></EventsMap>" },
    { "InstructionInContent", "<a><?pi?>text</a>" },
    { "ReferenceAtTheEnd", "<a><b>text &#X" },
    { "UnclosedReference", "<a v=\"&#12\"/>" },
    { "ReferenceWithoutDigits", "<a>&#;</a>" },
    { "ReferenceBeyondUnicode", "<a v=\"&#x7FFFFFFF;\"/>" },
    { "ReferenceToASurrogate", "<a v=\"&#xD800;\"/>" },
    { "ReferenceToZero", "<a>&#0;</a>" },
    { "MoreDigitsThanJuceReads", "<a>&#x000000041;</a>" },
    { "UnknownReferenceHoldingElements", "<a>e&<b>x&#xCC;y</a>" },
    { "UnknownNamedReference", "<a v=\"&nbsp;\"/>" },
    { "LoneAmpersand", "<a>&</a>" },
    { "CrossedEndTags", "<a><b></a></b>" },
    { "MisnamedEndTag", "<a><b></bb></a>" },
    { "UnquotedAttribute", "<a x=1/>" },
    { "SpaceBeforeTheName", "< a/>" },
    { "DocumentType", "<!DOCTYPE a [<!ENTITY e \"<b/>\">]><a>&e;</a>" },
    { "UnclosedComment", "<a><!-- unclosed </a>" },
    { "UnclosedRoot", "<a>text" },
};

class XmlTextRefuses : public ::testing::TestWithParam<RefusedText>
{
};

TEST_P (XmlTextRefuses, TextThatIsNotAPlainDocument) { EXPECT_EQ (parseBytes (GetParam().bytes), nullptr); }

INSTANTIATE_TEST_SUITE_P (Texts, XmlTextRefuses, ::testing::ValuesIn (refusedTexts),
                          [] (const ::testing::TestParamInfo<RefusedText>& paramInfo)
                          { return std::string (paramInfo.param.name); });

// What our documents and the ones people edit may hold: a prolog and comments before the root, a UTF-8
// mark, references to characters and the five named entities, character data, and anything after the
// root, which JUCE doesn't read.
TEST (XmlText, ReadsEverythingAPlainDocumentMayHold)
{
    const std::pair<std::string, const char*> texts[] = {
        { "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a note -->\n<a v=\"Caf\xc3\xa9\"/>",
          "Caf\xc3\xa9" },
        { "\xef\xbb\xbf<?xml version=\"1.0\"?><a v=\"x\"/>", "x" },
        { "<a v=\"&#65;&#x42;&amp;&QUOT;&apos;&lt;&gt;\"/>", "AB&\"'<>" },
        { "<a v='1>0'><!-- & --><![CDATA[<&>]]><b/></a> trailing <&", "1>0" },
    };
    for (const auto& [text, value] : texts)
    {
        const auto xml = parseBytes (text);
        ASSERT_NE (xml, nullptr) << text;
        EXPECT_EQ (xml->getStringAttribute ("v"), juce::String (juce::CharPointer_UTF8 (value))) << text;
    }
    EXPECT_EQ (parseBytes ("<a>&#x10FFFF;<![CDATA[<&>]]></a>")->getAllSubText(),
               juce::String::charToString (0x10FFFF) + "<&>");
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
    EXPECT_EQ (XmlText::parse (juce::File ("/nonexistent/vantrice/none.xml")), nullptr);
}

} // namespace
