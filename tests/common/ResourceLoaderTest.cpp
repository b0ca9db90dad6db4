#include "common/ResourceLoader.h"

#include <gtest/gtest.h>

namespace
{
struct KeyCase
{
    const char* key;
    const char* fileName;
    bool matches;
};

TEST (ResourceLoader, KeySplitsAtTheLastPointAndIgnoresCase)
{
    const KeyCase cases[] = {
        { "skin.xml", "skin.xml", true },
        { "SKIN.XML", "skin.xml", true },
        { "Background.png", "BACKGROUND.PNG", true },
        { "a.b.png", "a.b.png", true },
        { "A.B.PNG", "a.b.png", true },
        { "a.b.png", "a.png", false },
        { "a.b.png", "b.png", false },
        { "skin.xml", "skin.png", false },
        { "skin.xml", "skins.xml", false },
        { "skin", "skin", false },
        { ".xml", ".xml", false },
        { "skin.", "skin.", false },
        { "", "", false },
        { "skin.xml.bak", "skin.xml", false },
        { "skin.xml", "skin.xml.bak", false },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (juce::String (c.key) + " / " + c.fileName);
        EXPECT_EQ (resourceKeyMatches (c.key, c.fileName), c.matches);
    }
}

TEST (ResourceLoader, EmbeddedParameterTableIsFoundUnderAnyCase)
{
    for (const auto* key : { "parameters.xml", "PARAMETERS.XML", "Parameters.Xml", "parameters.XML" })
    {
        SCOPED_TRACE (key);
        const auto data = loadResourceData (key);
        ASSERT_NE (data, nullptr);
        EXPECT_GT (data->getSize(), 0u);
        EXPECT_TRUE (loadResourceText (key).contains ("<PluginParameters"));
    }
}

TEST (ResourceLoader, TextIsTheWholeBlockAsUtf8)
{
    const auto data = loadResourceData ("parameters.xml");
    ASSERT_NE (data, nullptr);
    const auto text = loadResourceText ("parameters.xml");
    EXPECT_TRUE (text.startsWith ("<?xml"));
    EXPECT_EQ (text.getNumBytesAsUTF8(), data->getSize());
    EXPECT_TRUE (text.trimEnd().endsWith ("</PluginParameters>"));
}

TEST (ResourceLoader, MissingResourcesGiveNothing)
{
    for (const auto* key :
         { "missing.xml", "parameters", "parameters.xm", "parameters.xml.bak", "arameters.xml", ".xml", "",
           "xml", "resources/parameters.xml", "parameters_xml" })
    {
        SCOPED_TRACE (key);
        EXPECT_EQ (loadResourceData (key), nullptr);
        EXPECT_EQ (loadResourceText (key), "");
    }
}

TEST (ResourceLoader, MissingImageLeavesTheImageAlone)
{
    juce::Image image (juce::Image::ARGB, 4, 4, true);
    const auto before = image;
    EXPECT_FALSE (loadResourceImage ("missing.png", image));
    EXPECT_TRUE (image == before);
}

TEST (ResourceLoader, BlockThatDoesNotDecodeGivesANullImageButCountsAsFound)
{
    juce::Image image (juce::Image::ARGB, 4, 4, true);
    EXPECT_TRUE (loadResourceImage ("parameters.xml", image));
    EXPECT_FALSE (image.isValid());
}
} // namespace
