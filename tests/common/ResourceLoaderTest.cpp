#include "common/ResourceLoader.h"

#include <gtest/gtest.h>

namespace
{
// A key names a file by name and type, split at the last point, without regard to case.
TEST (ResourceLoader, KeysMatchByNameAndTypeIgnoringCase)
{
    const std::tuple<const char*, const char*, bool> cases[] = {
        { "SKIN.XML", "skin.xml", true },
        { "A.B.PNG", "a.b.png", true },
        { "a.b.png", "a.png", false },
        { "a.b.png", "b.png", false },
        { "skin.xml", "skin.png", false },
        { "skin.xml", "skins.xml", false },
        { "skin", "skin", false },
        { ".xml", ".xml", false },
        { "skin.", "skin.", false },
        { "skin.xml.bak", "skin.xml", false },
        { "skin.xml", "skin.xml.bak", false },
    };
    for (const auto& [key, fileName, matches] : cases)
        EXPECT_EQ (resourceKeyMatches (key, fileName), matches) << key << " / " << fileName;
}

TEST (ResourceLoader, GivesTheWholeBlockOrNothing)
{
    const auto data = loadResourceData ("Parameters.Xml");
    ASSERT_NE (data, nullptr);
    const auto text = loadResourceText ("PARAMETERS.xml");
    EXPECT_EQ (text.getNumBytesAsUTF8(), data->getSize());
    EXPECT_TRUE (text.trimEnd().endsWith ("</PluginParameters>"));
    for (const auto* key :
         { "missing.xml", "parameters", "parameters.xml.bak", "resources/parameters.xml", "" })
        EXPECT_EQ (loadResourceData (key), nullptr) << key;

    // An image that isn't there leaves the one given alone; a block that doesn't decode gives none.
    juce::Image image (juce::Image::ARGB, 4, 4, true);
    const auto before = image;
    EXPECT_FALSE (loadResourceImage ("missing.png", image));
    EXPECT_TRUE (image == before);
    EXPECT_TRUE (loadResourceImage ("parameters.xml", image));
    EXPECT_FALSE (image.isValid());
}
} // namespace
