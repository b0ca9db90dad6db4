#include "MidiTestTable.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
std::unique_ptr<juce::XmlElement> parse (const juce::String& text)
{
    auto xml = juce::XmlDocument::parse (text);
    EXPECT_NE (xml, nullptr) << text;
    return xml;
}

std::map<int, juce::String> mapOf (const MidiControl& midi)
{
    std::map<int, juce::String> result;

    for (int number = 0; number < MidiControl::numControllers; ++number)
        if (auto* parameter = midi.getAssignedParameter (number))
            result[number] = parameter->getName();

    return result;
}

struct DocumentCase
{
    const char* label;
    const char* applicationName;
    const char* document;
    std::map<int, juce::String> expected;
};

const DocumentCase documentCases[] = {
    { "name matches",
      "Vantrice",
      R"(<MidiControlMap name="Vantrice"><assign CC="7" param="Preamp"/></MidiControlMap>)",
      { { 7, "Preamp" } } },
    { "application matches",
      "Vantrice",
      R"(<MidiControlMap name="Other" application="Vantrice"><assign CC="7" param="Preamp"/></MidiControlMap>)",
      { { 7, "Preamp" } } },
    { "older root",
      "Vantrice",
      R"(<MidiCCMap name="Vantrice"><assign CC="7" param="Preamp"/></MidiCCMap>)",
      { { 7, "Preamp" } } },
    { "another application",
      "Vantrice",
      R"(<MidiControlMap name="Other" application="Else"><assign CC="7" param="Preamp"/></MidiControlMap>)",
      {} },
    { "no name at all",
      "Vantrice",
      R"(<MidiControlMap><assign CC="7" param="Preamp"/></MidiControlMap>)",
      {} },
    { "name differs in case",
      "Vantrice",
      R"(<MidiControlMap name="vantrice"><assign CC="7" param="Preamp"/></MidiControlMap>)",
      {} },
    { "empty application name takes any map",
      "",
      R"(<MidiControlMap name="Other"><assign CC="7" param="Preamp"/></MidiControlMap>)",
      { { 7, "Preamp" } } },
    { "wrong root", "", R"(<MidiMap name="Vantrice"><assign CC="7" param="Preamp"/></MidiMap>)", {} },
    { "root differs in case", "", R"(<midicontrolmap><assign CC="7" param="Preamp"/></midicontrolmap>)", {} },
    { "bad rows are skipped",
      "Vantrice",
      R"(<MidiControlMap name="Vantrice">
          <assign CC="1" param="Preamp"/>
          <assign CC="2" param="No Such Parameter"/>
          <assign CC="3" param="Not Automatable"/>
          <assign CC="128" param="Left Bits"/>
          <assign CC="-1" param="Right Bits"/>
          <assign CC="abc" param="Left Cutoff"/>
          <assign CC="4294967300" param="Right Cutoff"/>
          <assign CC="5x" param="Left Frequency"/>
          <assign CC=" 9 " param="FX"/>
          <assign param="Output Volume"/>
          <assign CC="20"/>
          <Assign CC="21" param="Link Channels"/>
          <other CC="22" param="Right Frequency"/>
        </MidiControlMap>)",
      { { 0, "Output Volume" }, { 1, "Preamp" }, { 9, "FX" } } },
    { "later row of one parameter wins",
      "Vantrice",
      R"(<MidiControlMap name="Vantrice">
          <assign CC="1" param="Preamp"/><assign CC="2" param="Preamp"/></MidiControlMap>)",
      { { 2, "Preamp" } } },
    { "later row of one controller wins",
      "Vantrice",
      R"(<MidiControlMap name="Vantrice">
          <assign CC="1" param="Preamp"/><assign CC="1" param="FX"/></MidiControlMap>)",
      { { 1, "FX" } } },
    { "parameter names compare exactly",
      "Vantrice",
      R"(<MidiControlMap name="Vantrice"><assign CC="1" param="preamp"/><assign CC="2" param="Preamp "/></MidiControlMap>)",
      {} },
};

TEST (MidiMapFile, LoadingADocumentReplacesTheMap)
{
    for (const auto& c : documentCases)
    {
        SCOPED_TRACE (c.label);
        MidiTestTable table;
        table.midi.setApplicationName (c.applicationName);
        table.midi.assign (100, table.byName ("Right Bits"), false);
        table.midi.setLearnActive (true);

        table.midi.loadFromXml (*parse (c.document));

        EXPECT_EQ (mapOf (table.midi), c.expected);
        EXPECT_EQ (table.midi.getNumAssignments(), (int) c.expected.size());
        EXPECT_FALSE (table.midi.isLearnActive());
        pumpMessages();
    }
}

TEST (MidiMapFile, SavedFileReadsBackIntoAnotherInstance)
{
    juce::TemporaryFile file (".vtccmap");
    MidiTestTable source, target;
    source.midi.setApplicationName ("Vantrice");
    target.midi.setApplicationName ("Vantrice");
    source.midi.assign (64, source.byName ("Right Cutoff"), false);
    source.midi.assign (2, source.byName ("Link Channels"), false);
    source.midi.assign (0, source.byName ("Output Volume"), false);
    source.midi.assign (127, source.byName ("FX"), false);

    ASSERT_TRUE (source.midi.saveFile (file.getFile()));
    const auto text = file.getFile().loadFileAsString();
    EXPECT_TRUE (text.startsWith ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    EXPECT_LT (text.indexOf ("\"Link Channels\""), text.indexOf ("\"Right Cutoff\""));
    EXPECT_TRUE (text.contains (R"(<assign CC="0" param="Output Volume"/>)")) << text;

    EXPECT_TRUE (target.midi.loadFile (file.getFile()));
    EXPECT_EQ (mapOf (target.midi), mapOf (source.midi));
    pumpMessages();
}

TEST (MidiMapFile, UnreadableFilesChangeNothing)
{
    juce::TemporaryFile notXml (".vtccmap"), empty (".vtccmap"), truncated (".vtccmap"), binary (".vtccmap");
    notXml.getFile().replaceWithText ("this is no map");
    empty.getFile().replaceWithText ("");
    truncated.getFile().replaceWithText (R"(<MidiControlMap name="Vantrice"><assign CC="1" param="FX")");
    const char bytes[] = { '\x00', '\xff', '\xfe', '<', '\x01' };
    binary.getFile().replaceWithData (bytes, sizeof (bytes));

    MidiTestTable table;
    table.midi.assign (5, table.byName ("Preamp"), false);
    table.midi.setLearnActive (true);

    for (const auto& file :
         { notXml.getFile(), empty.getFile(), truncated.getFile(), binary.getFile(),
           juce::File::getSpecialLocation (juce::File::tempDirectory).getChildFile ("no such map") })
    {
        SCOPED_TRACE (file.getFullPathName());
        EXPECT_FALSE (table.midi.loadFile (file));
        EXPECT_EQ (mapOf (table.midi), (std::map<int, juce::String>{ { 5, "Preamp" } }));
        EXPECT_TRUE (table.midi.isLearnActive());
    }
}

} // namespace
