#include "parameters/BoolParameter.h"
#include "parameters/EnumParameter.h"
#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"
#include "parameters/NoteParameter.h"
#include "parameters/StringParameter.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace
{
// Long enough for the messages already posted on this thread to be delivered.
constexpr int pumpMilliseconds = 20;

void pumpMessages() { juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds); }

struct Recorder : Parameter::Listener
{
    void parameterChanged (Parameter* parameter) override
    {
        values.push_back (parameter->getValue());

        if (onChange)
            onChange (parameter);
    }

    std::vector<float> values;
    std::function<void (Parameter*)> onChange;
};

std::vector<std::unique_ptr<Parameter>> oneOfEachClass()
{
    std::vector<std::unique_ptr<Parameter>> all;
    all.push_back (std::make_unique<FloatParameter> (0, "float", 0.0f, 1.0f, 0.5f));
    all.push_back (std::make_unique<IntParameter> (1, "int", 0, 10, 5));
    all.push_back (std::make_unique<EnumParameter> (2, "enum", "a;b;c", "b"));
    all.push_back (std::make_unique<NoteParameter> (3, "note", 60));
    all.push_back (std::make_unique<BoolParameter> (4, "bool", 1));
    all.push_back (std::make_unique<StringParameter> (5, "string", "text"));
    return all;
}

// A setter that surely changes the value of each class above.
void change (Parameter& parameter, bool notify)
{
    parameter.setNormalizedValue (parameter.getNormalizedValue() > 0.5f ? 0.0f : 1.0f, notify);
}

TEST (ParameterNotification, UnchangedValueTellsNobody)
{
    for (auto& parameter : oneOfEachClass())
    {
        SCOPED_TRACE (parameter->getName());
        Recorder immediate, deferred;
        parameter->addImmediateListener (&immediate);
        parameter->addDeferredListener (&deferred);

        parameter->setFrom (*parameter->clone(), true);
        parameter->setStringValue (parameter->getStringValue(), true);

        EXPECT_TRUE (immediate.values.empty());
        EXPECT_FALSE (parameter->isUpdatePending());
        pumpMessages();
        EXPECT_TRUE (deferred.values.empty());
    }
}

TEST (ParameterNotification, ChangeWithoutNotifyStoresSilently)
{
    for (auto& parameter : oneOfEachClass())
    {
        SCOPED_TRACE (parameter->getName());
        Recorder immediate;
        parameter->addImmediateListener (&immediate);
        const auto before = parameter->getStringValue();

        change (*parameter, false);

        EXPECT_NE (parameter->getStringValue(), before);
        EXPECT_TRUE (immediate.values.empty());
        EXPECT_FALSE (parameter->isUpdatePending());
    }
}

TEST (ParameterNotification, ChangeCallsEachImmediateListenerOnceAndTriggersOneUpdate)
{
    for (auto& parameter : oneOfEachClass())
    {
        SCOPED_TRACE (parameter->getName());
        Recorder first, second, deferred;
        parameter->addImmediateListener (&first);
        parameter->addImmediateListener (&second);
        parameter->addDeferredListener (&deferred);

        change (*parameter, true);

        EXPECT_EQ (first.values.size(), 1u);
        EXPECT_EQ (second.values.size(), 1u);
        EXPECT_TRUE (deferred.values.empty());
        EXPECT_TRUE (parameter->isUpdatePending());
        pumpMessages();
        EXPECT_EQ (deferred.values.size(), 1u);
    }
}

TEST (ParameterNotification, ListenersAreAddedOnceAndNullIsIgnored)
{
    FloatParameter parameter (0, "p", 0, 1, 0);
    Recorder recorder;
    parameter.addImmediateListener (&recorder);
    parameter.addImmediateListener (&recorder);
    parameter.addImmediateListener (nullptr);
    parameter.addDeferredListener (nullptr);

    parameter.setValue (1.0f, true);

    EXPECT_EQ (recorder.values.size(), 1u);
    EXPECT_EQ (parameter.getImmediateListeners().size(), 1);
    pumpMessages();
}

TEST (ParameterNotification, ImmediateListenersRunFromLastToFirst)
{
    FloatParameter parameter (0, "p", 0, 1, 0);
    std::vector<int> order;
    Recorder listeners[3];

    for (int i = 0; i < 3; ++i)
    {
        listeners[i].onChange = [&order, i] (Parameter*) { order.push_back (i); };
        parameter.addImmediateListener (&listeners[i]);
    }

    parameter.setValue (1.0f, true);
    EXPECT_EQ (order, (std::vector<int>{ 2, 1, 0 }));
    pumpMessages();
}

struct RemovalCase
{
    int remover;
    int removed;
};

// Four listeners, walked 3, 2, 1, 0. Whoever stays in the list is called exactly once; one removed before
// its turn isn't called.
TEST (ParameterNotification, ListenerRemovedDuringTheWalkSkipsNobody)
{
    const RemovalCase cases[] = {
        { 3, 3 }, { 2, 2 }, { 0, 0 }, { 3, 0 }, { 3, 1 }, { 2, 0 }, { 1, 3 }, { 0, 3 }, { 2, 3 },
    };

    for (const bool deferred : { false, true })
    {
        for (const auto& c : cases)
        {
            SCOPED_TRACE (juce::String (deferred ? "deferred, " : "immediate, ") + juce::String (c.remover)
                          + " removes " + juce::String (c.removed));
            FloatParameter parameter (0, "p", 0, 1, 0);
            Recorder listeners[4];

            for (auto& listener : listeners)
            {
                if (deferred)
                    parameter.addDeferredListener (&listener);
                else
                    parameter.addImmediateListener (&listener);
            }

            listeners[c.remover].onChange = [&] (Parameter* p)
            {
                if (deferred)
                    p->removeDeferredListener (&listeners[c.removed]);
                else
                    p->removeImmediateListener (&listeners[c.removed]);
            };

            parameter.setValue (1.0f, true);
            pumpMessages();

            for (int i = 0; i < 4; ++i)
            {
                const bool removedBeforeItsTurn = (i == c.removed && i < c.remover);
                EXPECT_EQ (listeners[i].values.size(), removedBeforeItsTurn ? 0u : 1u) << "listener " << i;
            }
        }
    }
}

TEST (ParameterNotification, BurstGivesEveryImmediateCallAndOneDeferredCallWithTheLatestValue)
{
    IntParameter parameter (0, "p", 0, 1000, 0);
    Recorder immediate, deferred;
    parameter.addImmediateListener (&immediate);
    parameter.addDeferredListener (&deferred);

    for (int i = 1; i <= 100; ++i)
        parameter.setIntValue (i, true);

    ASSERT_EQ (immediate.values.size(), 100u);

    for (size_t i = 0; i < immediate.values.size(); ++i)
        EXPECT_FLOAT_EQ (immediate.values[i], (float) (i + 1));

    pumpMessages();
    EXPECT_EQ (deferred.values, (std::vector<float>{ 100.0f }));
}

TEST (ParameterNotification, BurstFromAnotherThreadReachesTheMessageThreadOnce)
{
    FloatParameter parameter (0, "p", 0, 1000, 0);
    Recorder deferred;
    parameter.addDeferredListener (&deferred);
    const auto messageThread = std::this_thread::get_id();
    std::thread::id seenOn;
    deferred.onChange = [&] (Parameter*) { seenOn = std::this_thread::get_id(); };

    std::thread writer (
        [&parameter]
        {
            for (int i = 1; i <= 500; ++i)
                parameter.setValue ((float) i, true);
        });
    writer.join();

    pumpMessages();
    EXPECT_EQ (deferred.values, (std::vector<float>{ 500.0f }));
    EXPECT_EQ (seenOn, messageThread);
}

TEST (ParameterNotification, SendChangeNotificationTellsEvenWithoutAChange)
{
    BoolParameter parameter (0, "p", 0);
    Recorder immediate, deferred;
    parameter.addImmediateListener (&immediate);
    parameter.addDeferredListener (&deferred);

    parameter.sendChangeNotification();

    EXPECT_EQ (immediate.values.size(), 1u);
    pumpMessages();
    EXPECT_EQ (deferred.values.size(), 1u);
}

TEST (ParameterNotification, RemovedDeferredListenerHearsNothingMore)
{
    FloatParameter parameter (0, "p", 0, 1, 0);
    Recorder deferred;
    parameter.addDeferredListener (&deferred);
    parameter.removeDeferredListener (&deferred);
    parameter.setValue (1.0f, true);
    pumpMessages();
    EXPECT_TRUE (deferred.values.empty());
}

TEST (ParameterClone, CopyIsIndependentAndHasNoListeners)
{
    for (auto& parameter : oneOfEachClass())
    {
        SCOPED_TRACE (parameter->getName());
        Recorder recorder;
        parameter->addImmediateListener (&recorder);
        parameter->addDeferredListener (&recorder);
        parameter->setAutomatable (true);

        const auto copy = parameter->clone();

        EXPECT_EQ (copy->getIndex(), parameter->getIndex());
        EXPECT_EQ (copy->getName(), parameter->getName());
        EXPECT_TRUE (copy->isAutomatable());
        EXPECT_EQ (copy->getStringValue(), parameter->getStringValue());
        EXPECT_FLOAT_EQ (copy->getNormalizedValue(), parameter->getNormalizedValue());
        EXPECT_TRUE (copy->getImmediateListeners().isEmpty());

        const auto before = parameter->getStringValue();
        change (*copy, true);
        EXPECT_EQ (parameter->getStringValue(), before);
        EXPECT_TRUE (recorder.values.empty());
        pumpMessages();
        EXPECT_TRUE (recorder.values.empty());
    }
}

TEST (ParameterClone, CopyKeepsRangeAndStyle)
{
    const FloatParameter floatParameter (0, "f", -3.0f, 7.0f, 2.0f);
    const auto floatCopy = floatParameter.clone();
    floatCopy->setNormalizedValue (1.0f, false);
    EXPECT_FLOAT_EQ (floatCopy->getValue(), 7.0f);

    const IntParameter intParameter (1, "i", -5, 5, 2);
    const auto intCopy = intParameter.clone();
    intCopy->setNormalizedValue (0.0f, false);
    EXPECT_EQ (intCopy->getIntValue(), -5);

    BoolParameter boolParameter (2, "b", 3);
    boolParameter.setBoolValue (true, false);
    EXPECT_EQ (boolParameter.clone()->getStringValue(), "yes");

    EXPECT_FALSE (FloatParameter (3, "f", 0, 1, 0).clone()->isAutomatable());
}
} // namespace
