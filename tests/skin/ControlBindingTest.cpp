#include "dsp/ParameterIndex.h"
#include "skin/GFXAnimation.h"
#include "support/PluginHarness.h"
#include "support/RepaintCounter.h"

#include <gtest/gtest.h>

namespace
{
constexpr int pumpMilliseconds = 30;
void pump() { juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds); }

/** What reaches the host, as JUCE's wrappers hear it. */
struct HostEar final : juce::AudioProcessorListener
{
    void audioProcessorParameterChanged (juce::AudioProcessor*, int index, float) override
    {
        changes.add (index);
    }
    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}
    void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int index) override
    {
        begins.add (index);
    }
    void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int index) override
    {
        ends.add (index);
    }
    juce::Array<int> changes, begins, ends;
};

struct ControlEar final : GUIController::Listener
{
    void controllerGestureBegan (GUIController*) override { ++begins; }
    void controllerGestureEnded (GUIController*) override { ++ends; }
    void controllerValueChanged (GUIController*) override { ++values; }
    int begins = 0, ends = 0, values = 0;
};

std::unique_ptr<juce::XmlElement> animationLinkedTo (std::initializer_list<const char*> names)
{
    juce::String text = "<Animation name=\"a\"><links>";
    for (auto* n : names)
        text << "<link as=\"connectedTo\" param=\"" << n << "\"/>";
    text << "<link as=\"watching\" param=\"FX\"/></links>"
         << "<gfx resource=\"LeftVUMeterAnimation.png\" framesNum=\"12\"/></Animation>";
    return juce::parseXML (text);
}

class ControlBinding : public ::testing::Test
{
protected:
    void load (GFXAnimation& control, std::initializer_list<const char*> names)
    {
        control.loadFromXml (*animationLinkedTo (names), plugin->getParameterManager(), plugin->getEvents(),
                             nullptr);
    }

    PluginHarness plugin;
};
} // namespace

TEST_F (ControlBinding, TheLastConnectionWinsAndOnlyItMovesTheControl)
{
    GFXAnimation control;
    load (control, { "Left Cutoff", "Output Volume" });
    auto& parameters = plugin->getParameterManager();
    EXPECT_EQ (control.getParameter(), parameters.getParameter (ParameterIndex::outputVolume));
    pump();
    const int shown = control.getCurrentFrame();

    parameters.setNormalizedValue (ParameterIndex::leftCutoff,
                                   1.0f - parameters.getNormalizedValue (ParameterIndex::leftCutoff));
    pump();
    EXPECT_EQ (control.getCurrentFrame(), shown) << "no longer on the first parameter's list";
    parameters.setNormalizedValue (ParameterIndex::outputVolume, 1.0f);
    pump();
    EXPECT_EQ (control.getCurrentFrame(), 11);
    parameters.setNormalizedValue (ParameterIndex::fx, 0.0f); // linked "as" something else: nothing
    pump();
    EXPECT_EQ (control.getCurrentFrame(), 11);
}

TEST_F (ControlBinding, AHostWriteReachesTheControlSilently)
{
    GFXAnimation control;
    load (control, { "Left Cutoff" });
    ControlEar controlEar;
    control.addListener (&controlEar);
    HostEar hostEar;
    plugin->addListener (&hostEar);

    plugin->getParameters()[ParameterIndex::leftCutoff]->setValueNotifyingHost (0.5f);
    hostEar.changes.clear(); // the host's own write, as JUCE echoes it to its listeners
    plugin->getParameters()[ParameterIndex::leftCutoff]->setValue (0.25f);
    pump();

    EXPECT_EQ (control.getCurrentFrame(), 3); // floor(11 x 0.25 + 0.5)
    EXPECT_EQ (controlEar.values, 0);
    EXPECT_TRUE (hostEar.changes.isEmpty());
    plugin->removeListener (&hostEar);
}

TEST_F (ControlBinding, AGestureReachesTheHostOnceAndThenTheControlsListeners)
{
    GFXAnimation control;
    load (control, { "Left Cutoff" });
    ControlEar controlEar;
    control.addListener (&controlEar);
    HostEar hostEar;
    plugin->addListener (&hostEar);

    control.beginGesture();
    control.endGesture();
    pump();
    EXPECT_EQ (hostEar.begins, juce::Array<int> (ParameterIndex::leftCutoff));
    EXPECT_EQ (hostEar.ends, juce::Array<int> (ParameterIndex::leftCutoff));
    EXPECT_EQ (controlEar.begins, 1);
    EXPECT_EQ (controlEar.ends, 1);

    GFXAnimation unbound;
    unbound.addListener (&controlEar);
    unbound.beginGesture();
    EXPECT_EQ (controlEar.begins, 1) << "a control without a parameter sends no gesture";
    plugin->removeListener (&hostEar);
}

TEST_F (ControlBinding, AListenerLeavingDuringAWalkSkipsNobody)
{
    GFXAnimation control;
    load (control, { "Left Cutoff" });

    struct Leaving final : GUIController::Listener
    {
        void controllerGestureBegan (GUIController* c) override
        {
            ++calls;
            if (leave)
                c->removeListener (this);
        }
        int calls = 0;
        bool leave = false;
    };
    Leaving first, middle, last;
    middle.leave = true;
    for (auto* l : { &first, &middle, &last })
        control.addListener (l);

    control.beginGesture();
    EXPECT_EQ (first.calls, 1);
    EXPECT_EQ (middle.calls, 1);
    EXPECT_EQ (last.calls, 1);
    control.beginGesture();
    EXPECT_EQ (middle.calls, 1) << "gone";
    EXPECT_EQ (first.calls, 2);
}

TEST (GFXAnimation, RepaintsOnlyWhenItsFrameChangesAndGoesBackToRest)
{
    GFXAnimation led;
    led.setStrip (juce::Image (juce::Image::RGB, 10, 20, true), 2);
    led.setVisible (true);
    auto& repaints = RepaintCounter::attach (led);

    led.setFrameValue (0.2f); // still frame 0
    led.setFrameValue (-3.0f);
    EXPECT_EQ (repaints.count, 0);
    led.setFrameValue (0.6f);
    led.setFrameValue (7.0f); // held to the last frame: no change
    EXPECT_EQ (repaints.count, 1);
    EXPECT_EQ (led.getCurrentFrame(), 1);

    led.returnToRestAfter (20);
    juce::MessageManager::getInstance()->runDispatchLoopUntil (100);
    EXPECT_EQ (led.getCurrentFrame(), 0);
    EXPECT_EQ (repaints.count, 2);
}
