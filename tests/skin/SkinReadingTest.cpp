#include "frame/EventsMap.h"
#include "parameters/ParameterManager.h"
#include "skin/GFXAnimation.h"
#include "skin/GFXPanel.h"
#include "skin/SkinFactory.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{
struct ReadingCase
{
    const char* name;
    const char* skin; // one Panel element
    std::function<void (GFXPanel&)> check;
};

void PrintTo (const ReadingCase& c, std::ostream* out) { *out << c.name; }

juce::Component* child (juce::Component& parent, const char* name)
{
    for (auto* c : parent.getChildren())
        if (c->getName() == name)
            return c;
    return nullptr;
}

const ReadingCase readingCases[] = {
    { "NamesInCapitals",
      R"(<PANEL NAME="p"><POS LEFT="2" TOP="3"/><SIZE WIDTH="100" HEIGHT="50"/><GFX TRANSPARENT="yes"/>
         <CONTROLS OFSX="10" OFSY="4"><ANIMATION NAME="a"><POS LEFT="5" TOP="6"/><SIZE WIDTH="20" HEIGHT="30"/>
         </ANIMATION></CONTROLS></PANEL>)",
      [] (GFXPanel& p)
      {
          EXPECT_EQ (p.getBounds(), juce::Rectangle<int> (2, 3, 100, 50));
          EXPECT_TRUE (p.isTransparent());
          auto* a = child (p, "a");
          ASSERT_NE (a, nullptr);
          EXPECT_EQ (a->getBounds(), juce::Rectangle<int> (15, 10, 20, 30)) << "moved by the offsets";
      } },
    { "OffsetsAddUpThroughNestedPanels",
      R"(<Panel name="outer"><controls ofsX="10"><Panel name="inner"><pos left="3" top="0"/>
         <size width="80" height="40"/><controls ofsX="7"><Animation name="a"><pos left="5" top="1"/>
         <size width="4" height="4"/></Animation></controls></Panel></controls></Panel>)",
      [] (GFXPanel& p)
      {
          auto* inner = child (p, "inner");
          ASSERT_NE (inner, nullptr);
          EXPECT_EQ (inner->getX(), 13);
          auto* a = child (*inner, "a");
          ASSERT_NE (a, nullptr);
          EXPECT_EQ (a->getX(), 12);
          EXPECT_EQ (a->getScreenX() - p.getScreenX(), 25);
      } },
    { "APanelMakesItsOwnControlsAndPassesOverUnknownOnes",
      R"(<Panel name="p"><controls><Gauge name="x"/><MusicKeyboard name="k"/><ParameterModulator name="m"/>
         <Animation name="a"/></controls></Panel>)",
      [] (GFXPanel& p)
      {
          ASSERT_EQ (p.getNumChildComponents(), 2);
          EXPECT_EQ (p.getChildComponent (0)->getName(), "k");
          EXPECT_EQ (p.getChildComponent (1)->getName(), "a");
      } },
    { "AStripLosesTheRowsItsFramesCantFill",
      R"(<Panel name="p"><controls><Animation name="a"><gfx resource="LeftVUMeterAnimation.png"
         framesNum="5"/></Animation></controls></Panel>)",
      [] (GFXPanel& p)
      {
          auto* a = dynamic_cast<GFXAnimation*> (child (p, "a"));
          ASSERT_NE (a, nullptr);
          EXPECT_EQ (a->getHeight(), 1068 / 5);
          EXPECT_EQ (a->getNumFrames(), 5);
      } },
    { "AFrameCountBelowOneCountsAsOne",
      R"(<Panel name="p"><controls><Animation name="a"><gfx resource="LeftChannelProcessLed.png"
         framesNum="0"/></Animation><Animation name="b"><gfx resource="NoSuchPicture.png" framesNum="-3"/>
         </Animation></controls></Panel>)",
      [] (GFXPanel& p)
      {
          auto* a = dynamic_cast<GFXAnimation*> (child (p, "a"));
          auto* b = dynamic_cast<GFXAnimation*> (child (p, "b"));
          ASSERT_TRUE (a != nullptr && b != nullptr);
          EXPECT_EQ (a->getNumFrames(), 1);
          EXPECT_EQ (a->getHeight(), 26);
          EXPECT_EQ (b->getNumFrames(), 1);
          b->setFrameValue (1.0f);
          juce::Image canvas (juce::Image::RGB, 20, 20, true);
          juce::Graphics g (canvas);
          b->paint (g); // the drawing without a strip divides by no frame count
      } },
    { "AStripSetsTheSizeAndASizeOnlyStandsWithoutOne",
      R"(<Panel name="p"><controls><Animation name="a"><gfx resource="LeftChannelProcessLed.png" framesNum="2"/>
         <size width="90" height="90"/></Animation></controls></Panel>)",
      [] (GFXPanel& p)
      {
          auto* a = child (p, "a");
          ASSERT_NE (a, nullptr);
          EXPECT_EQ (a->getBounds().getWidth(), 34);
          EXPECT_EQ (a->getBounds().getHeight(), 13);
      } },
};

class SkinReading : public ::testing::TestWithParam<ReadingCase>
{
protected:
    SkinReading() { events.addBuiltInEvents(); }
    ParameterManager parameters;
    EventsMap events;
};
} // namespace

TEST_P (SkinReading, FollowsTheFormatsRules)
{
    auto xml = juce::parseXML (GetParam().skin);
    ASSERT_NE (xml, nullptr);
    GFXPanel panel;
    panel.loadFromXml (*xml, parameters, events, nullptr);
    GetParam().check (panel);
}

INSTANTIATE_TEST_SUITE_P (Skins, SkinReading, ::testing::ValuesIn (readingCases),
                          [] (const ::testing::TestParamInfo<ReadingCase>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST (SkinFactory, MakesByTagIgnoringCaseAndKeepsPanelOnlyTagsInPanels)
{
    EXPECT_NE (SkinFactory::create ("animation", "a", SkinFactory::Place::root).controller, nullptr);
    EXPECT_NE (SkinFactory::create ("Panel", "p", SkinFactory::Place::root).controller, nullptr);
    EXPECT_EQ (SkinFactory::create ("Gauge", "g", SkinFactory::Place::root).controller, nullptr);
    for (const auto* panelOnly : { "NoteDisplay", "MusicKeyboard", "PitchBender", "ModWheel" })
        EXPECT_EQ (SkinFactory::create (panelOnly, "x", SkinFactory::Place::root).controller, nullptr)
            << panelOnly;
    EXPECT_EQ (SkinFactory::create ("ParameterModulator", "m", SkinFactory::Place::panel).controller,
               nullptr);

    const auto made = SkinFactory::create ("Animation", "named", SkinFactory::Place::panel);
    EXPECT_EQ (made.view->getName(), "named");
    EXPECT_EQ (SkinFactory::getTags().size(), 17);
}
