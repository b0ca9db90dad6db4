#include "frame/Clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace
{
// Long enough for the message loop to deliver what is already posted.
constexpr int pumpMilliseconds = 50;

// The clock's fixed grid and gate: sixteenth notes, on for half a step.
constexpr double stepQuarters = 0.25;
constexpr double gateQuarters = 0.125;

void pump() { juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds); }

double samplesPerQuarter (double rate, double bpm)
{
    // Seconds per minute.
    return rate * 60.0 / bpm;
}

// What the family layer does at the head of a block while the host plays.
void feed (Clock& clock, double rate, double bpm, double ppq)
{
    clock.setSampleRate (rate);
    clock.setBpm (bpm);
    clock.setPosition (ppq);

    if (!clock.isRunning())
        clock.start (ppq);
}

// Ticks count times; the indices of the ticks that reported an edge.
std::vector<int> edgesOver (Clock& clock, int count)
{
    std::vector<int> edges;

    for (int i = 0; i < count; ++i)
        if (clock.tick())
            edges.push_back (i);

    return edges;
}

// Ticks until the clock reports an edge; the number of ticks before that one, or -1 within limit.
int ticksToNextEdge (Clock& clock, int limit)
{
    for (int i = 0; i < limit; ++i)
        if (clock.tick())
            return i;

    return -1;
}

// Whether a count of samples lies so near a whole number that the running position's rounding may
// put its edge on either side.
bool nearWhole (double samples) { return std::abs (samples - std::round (samples)) < 1.0e-6; }

struct Recorder : Clock::Listener
{
    Recorder (std::string nameToUse, std::vector<std::string>& logToUse)
        : name (std::move (nameToUse))
        , log (logToUse)
    {
    }

    void clockRunningChanged (Clock* clock) override
    {
        log.push_back (name + " running");
        lastClock = clock;
    }

    void clockEdge (Clock* clock) override
    {
        log.push_back (name + " edge");
        lastClock = clock;
    }

    std::string name;
    std::vector<std::string>& log;
    Clock* lastClock = nullptr;
};

TEST (Clock, StartsWithTheDocumentedValues)
{
    Clock clock;
    EXPECT_EQ (clock.getPosition(), 0.0);
    EXPECT_EQ (clock.getSampleRate(), 44100.0);
    EXPECT_EQ (clock.getBpm(), 0.0);
    EXPECT_EQ (clock.getStepsPerQuarter(), 4.0);
    EXPECT_EQ (clock.getGateRatio(), 0.5);
    EXPECT_EQ (clock.getSamplesToEdge(), 0);
    EXPECT_EQ (clock.getPhase(), -1);
    EXPECT_EQ (clock.getNextPhase(), 0);
    EXPECT_FALSE (clock.isRunning());
    EXPECT_TRUE (clock.isDirty());
    EXPECT_FALSE (clock.hasRunningChangePending());
    EXPECT_FALSE (clock.hasEdgePending());
    EXPECT_FALSE (clock.isGateOn());
    EXPECT_FALSE (clock.isGateOff());
}

TEST (Clock, At120BpmAStepLasts5512AndAHalfSamplesWithTheGateOnForHalf)
{
    Clock clock;
    feed (clock, 44100.0, 120.0, 0.0);

    // Two steps: the gate goes on at 0, off at 2756.25, on at 5512.5 and off at 8268.75, each edge on
    // the first whole sample at or past its time.
    const auto edges = edgesOver (clock, 11025);
    EXPECT_EQ (clock.getQuartersPerSample(), 1.0 / 22050.0);
    EXPECT_EQ (edges, (std::vector<int>{ 0, 2757, 5513, 8269 }));
    EXPECT_NEAR (clock.getPosition(), 2.0 * stepQuarters, 1.0e-12);
    EXPECT_TRUE (clock.isGateOff());
}

struct TimingCase
{
    double rate;
    double bpm;
    double ppq;
};

void PrintTo (const TimingCase& c, std::ostream* out)
{
    *out << c.rate << " Hz, " << c.bpm << " bpm, from " << c.ppq;
}

class ClockTiming : public ::testing::TestWithParam<TimingCase>
{
};

TEST_P (ClockTiming, EdgesFallOnTheFirstSampleAtOrPastEachGridTime)
{
    const auto c = GetParam();
    const double q = samplesPerQuarter (c.rate, c.bpm);
    const double line = std::floor (c.ppq / stepQuarters) * stepQuarters;
    ASSERT_LT (c.ppq - line, gateQuarters) << "the start must lie in the on part of its step";

    // Six steps: gate on at each line, off half a step later.
    constexpr int numEdges = 12;
    std::vector<double> times{ 0.0 };

    for (int k = 1; k <= numEdges; ++k)
        times.push_back ((line + k * gateQuarters - c.ppq) * q);

    Clock clock;
    feed (clock, c.rate, c.bpm, c.ppq);
    const auto edges = edgesOver (clock, static_cast<int> (std::ceil (times.back())) + 2);
    ASSERT_EQ (edges.size(), times.size());

    for (size_t k = 0; k < times.size(); ++k)
    {
        const double t = times[k];

        if (nearWhole (t))
        {
            EXPECT_GE (edges[k], static_cast<int> (std::round (t))) << "edge " << k;
            EXPECT_LE (edges[k], static_cast<int> (std::round (t)) + 1) << "edge " << k;
        }
        else
        {
            EXPECT_EQ (edges[k], static_cast<int> (std::ceil (t))) << "edge " << k << " at " << t;
        }
    }
}

INSTANTIATE_TEST_SUITE_P (
    Tempi, ClockTiming,
    ::testing::Values (TimingCase{ 44100.0, 120.0, 0.0 }, TimingCase{ 44100.0, 120.0, 0.125 / 22050.0 },
                       TimingCase{ 48000.0, 93.0, 1.01 }, TimingCase{ 96000.0, 140.0, 2.3 },
                       TimingCase{ 22050.0, 60.0, 7.0 }, TimingCase{ 44100.0, 177.7, 12.1 }));

TEST (Clock, PhasesAlternateFromOnAtEachEdge)
{
    Clock clock;
    feed (clock, 44100.0, 120.0, 0.0);

    for (int k = 0; k < 8; ++k)
    {
        ASSERT_GE (ticksToNextEdge (clock, 6000), 0) << "edge " << k;
        EXPECT_TRUE (clock.isEdgeNow());
        EXPECT_EQ (clock.isGateOn(), k % 2 == 0) << "edge " << k;
        EXPECT_EQ (clock.isGateOff(), k % 2 == 1) << "edge " << k;
    }

    clock.tick();
    EXPECT_FALSE (clock.isEdgeNow());
}

class ClockFirstTick : public ::testing::TestWithParam<double>
{
};

TEST_P (ClockFirstTick, MakesAnEdgeIntoPhaseZeroWhereverThePositionIs)
{
    Clock clock;
    feed (clock, 44100.0, 120.0, GetParam());
    EXPECT_EQ (clock.getPhase(), -1);

    EXPECT_TRUE (clock.tick());
    EXPECT_EQ (clock.getPhase(), 0);
    EXPECT_TRUE (clock.isFirstEdge());
    EXPECT_TRUE (clock.isEdgeNow());
    EXPECT_TRUE (clock.hasEdgePending());

    ASSERT_GE (ticksToNextEdge (clock, 6000), 0);
    EXPECT_FALSE (clock.isFirstEdge());
    EXPECT_TRUE (clock.isGateOff());
}

// On a line, inside a gate, in the off part of a step and just before a line.
INSTANTIATE_TEST_SUITE_P (Positions, ClockFirstTick, ::testing::Values (0.0, 4.1, 0.2, 3.999));

TEST (Clock, StartingInTheOffPartOfAStepEndsTheFirstGateAtOnce)
{
    Clock clock;
    feed (clock, 44100.0, 120.0, 0.2);
    EXPECT_EQ (edgesOver (clock, 2), (std::vector<int>{ 0, 1 }));
    EXPECT_TRUE (clock.isGateOff());
}

TEST (Clock, ABeginningBeforeZeroWaitsForZero)
{
    Clock clock;
    const double ppq = -0.1003;
    feed (clock, 44100.0, 120.0, ppq);

    const auto edges = edgesOver (clock, 3000);
    ASSERT_FALSE (edges.empty());
    EXPECT_EQ (edges.front(), static_cast<int> (std::ceil (-ppq * 22050.0)));
    EXPECT_TRUE (clock.isGateOn());
}

TEST (Clock, TickOnAStoppedClockDoesNothing)
{
    Clock clock;
    clock.setBpm (120.0);
    clock.setPosition (3.0);

    EXPECT_FALSE (clock.tick());
    EXPECT_EQ (clock.getPosition(), 3.0);
    EXPECT_EQ (clock.getPhase(), -1);
    EXPECT_FALSE (clock.hasEdgePending());

    feed (clock, 44100.0, 120.0, 3.0);
    edgesOver (clock, 100);
    clock.stop();
    clock.setPosition (5.0);

    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE (clock.tick());

    EXPECT_EQ (clock.getPosition(), 5.0);
    EXPECT_EQ (clock.getPhase(), -1);
    EXPECT_FALSE (clock.isRunning());
}

struct SetterCase
{
    const char* name;
    void (Clock::*set) (double);
    double (Clock::*get)() const noexcept;
    double other;
};

void PrintTo (const SetterCase& c, std::ostream* out) { *out << c.name; }

class ClockSetter : public ::testing::TestWithParam<SetterCase>
{
};

TEST_P (ClockSetter, StoresOnlyAChangedValueAndMarksItDirty)
{
    const auto c = GetParam();
    Clock clock;
    feed (clock, 44100.0, 120.0, 1.0);

    // The first tick makes the first edge, the second settles on the next one.
    clock.tick();
    clock.tick();
    ASSERT_FALSE (clock.isDirty());

    const double same = (clock.*c.get)();
    (clock.*c.set) (same);
    EXPECT_FALSE (clock.isDirty());
    EXPECT_EQ ((clock.*c.get)(), same);

    (clock.*c.set) (c.other);
    EXPECT_TRUE (clock.isDirty());
    EXPECT_EQ ((clock.*c.get)(), c.other);
}

INSTANTIATE_TEST_SUITE_P (
    Setters, ClockSetter,
    ::testing::Values (SetterCase{ "SampleRate", &Clock::setSampleRate, &Clock::getSampleRate, 48000.0 },
                       SetterCase{ "Bpm", &Clock::setBpm, &Clock::getBpm, 121.0 },
                       SetterCase{ "Position", &Clock::setPosition, &Clock::getPosition, 7.5 }),
    [] (const ::testing::TestParamInfo<SetterCase>& testCase) { return std::string (testCase.param.name); });

TEST (Clock, StartAndStopResetThePositionAndPhase)
{
    Clock clock;
    clock.setBpm (120.0);

    clock.start (2.5);
    EXPECT_TRUE (clock.isRunning());
    EXPECT_TRUE (clock.isDirty());
    EXPECT_TRUE (clock.hasRunningChangePending());
    EXPECT_EQ (clock.getPosition(), 2.5);
    EXPECT_EQ (clock.getPhase(), -1);
    pump();
    EXPECT_FALSE (clock.hasRunningChangePending());

    edgesOver (clock, 10);
    EXPECT_EQ (clock.getPhase(), 0);

    // Starting a running clock only moves it.
    clock.start (6.0);
    EXPECT_FALSE (clock.hasRunningChangePending());
    EXPECT_EQ (clock.getPosition(), 6.0);
    EXPECT_EQ (clock.getPhase(), 0);

    clock.stop();
    EXPECT_FALSE (clock.isRunning());
    EXPECT_TRUE (clock.isDirty());
    EXPECT_TRUE (clock.hasRunningChangePending());
    EXPECT_EQ (clock.getPosition(), 0.0);
    EXPECT_EQ (clock.getPhase(), -1);
    pump();

    clock.stop();
    EXPECT_FALSE (clock.hasRunningChangePending());
}

TEST (Clock, ListenersHearStartAndStopOnTheMessageThreadLastFirst)
{
    std::vector<std::string> log;
    Recorder first ("first", log), second ("second", log);
    Clock clock;
    clock.addListener (&first);
    clock.addListener (&second);
    clock.addListener (&first);

    clock.start (0.0);
    EXPECT_TRUE (log.empty());
    pump();
    EXPECT_EQ (log, (std::vector<std::string>{ "second running", "first running" }));
    EXPECT_EQ (first.lastClock, &clock);
    EXPECT_EQ (second.lastClock, &clock);

    log.clear();
    clock.stop();
    clock.removeListener (&second);
    pump();
    EXPECT_EQ (log, (std::vector<std::string>{ "first running" }));
}

TEST (Clock, EdgesReachTheListenersCoalesced)
{
    std::vector<std::string> log;
    Recorder first ("first", log), second ("second", log);
    Clock clock;
    clock.addListener (&first);
    clock.addListener (&second);
    feed (clock, 44100.0, 120.0, 0.0);

    ASSERT_EQ (edgesOver (clock, 6000).size(), 3u);
    EXPECT_TRUE (clock.hasEdgePending());
    EXPECT_TRUE (log.empty());
    pump();
    EXPECT_EQ (log,
               (std::vector<std::string>{ "second running", "first running", "second edge", "first edge" }));
    EXPECT_FALSE (clock.hasEdgePending());
    EXPECT_FALSE (clock.hasRunningChangePending());

    // Ticks without an edge tell nobody.
    log.clear();
    ASSERT_TRUE (edgesOver (clock, 100).empty());
    pump();
    EXPECT_TRUE (log.empty());
}

struct Remover : Clock::Listener
{
    explicit Remover (Clock& clockToUse)
        : clock (clockToUse)
    {
    }

    void clockRunningChanged (Clock*) override
    {
        ++calls;
        clock.removeListener (this);
    }

    Clock& clock;
    int calls = 0;
};

TEST (Clock, AListenerMayRemoveItselfWhileBeingTold)
{
    std::vector<std::string> log;
    Clock clock;
    Recorder first ("first", log), last ("last", log);
    Remover remover (clock);
    clock.addListener (&first);
    clock.addListener (&remover);
    clock.addListener (&last);

    clock.start (0.0);
    pump();
    EXPECT_EQ (remover.calls, 1);
    EXPECT_EQ (log, (std::vector<std::string>{ "last running", "first running" }));

    log.clear();
    clock.stop();
    pump();
    EXPECT_EQ (remover.calls, 1);
    EXPECT_EQ (log, (std::vector<std::string>{ "last running", "first running" }));
}

// A jump of the host's position to a fraction of a step past the line at 2 quarters, from a clock
// with its gate on or off.
struct JumpCase
{
    const char* name;
    bool fromGateOn;
    double fraction;
    bool edgeAtOnce;
    bool gateOnAfterJump;
    double targetQuarters; // of the next edge, past the jump's line
};

void PrintTo (const JumpCase& c, std::ostream* out) { *out << c.name; }

class ClockJump : public ::testing::TestWithParam<JumpCase>
{
};

TEST_P (ClockJump, FollowsTheGridFromWhereItLands)
{
    const auto c = GetParam();
    constexpr double line = 2.0;
    const double q = samplesPerQuarter (44100.0, 120.0);
    const double target = line + c.fraction * stepQuarters;

    Clock clock;
    feed (clock, 44100.0, 120.0, 0.0);
    ASSERT_TRUE (clock.tick());

    if (!c.fromGateOn)
    {
        ASSERT_GE (ticksToNextEdge (clock, 6000), 0);
    }

    ASSERT_EQ (clock.isGateOn(), c.fromGateOn);

    clock.setPosition (target);
    EXPECT_EQ (clock.tick(), c.edgeAtOnce);
    EXPECT_EQ (clock.isGateOn(), c.gateOnAfterJump);
    EXPECT_EQ (clock.isGateOff(), !c.gateOnAfterJump);

    const double samples = (line + c.targetQuarters - target) * q;
    ASSERT_FALSE (nearWhole (samples));
    EXPECT_EQ (ticksToNextEdge (clock, 20000) + 1, static_cast<int> (std::ceil (samples)));
    EXPECT_EQ (clock.isGateOn(), !c.gateOnAfterJump);
}

INSTANTIATE_TEST_SUITE_P (
    Jumps, ClockJump,
    ::testing::Values (
        JumpCase{ "OnIntoOffPartEndsGate", true, 0.7, true, false, stepQuarters },
        JumpCase{ "OnJustBeforeLineKeepsGateOverIt", true, 0.997, false, true, stepQuarters + gateQuarters },
        JumpCase{ "OnOutsideToleranceBeforeLineEndsGate", true, 0.994, true, false, stepQuarters },
        JumpCase{ "OnWithinOnPartKeepsGate", true, 0.3, false, true, gateQuarters },
        JumpCase{ "OffIntoOnPartWaitsForNextLine", false, 0.21, false, false, stepQuarters },
        JumpCase{ "OffJustAfterLineStartsGate", false, 0.003, true, true, gateQuarters },
        JumpCase{ "OffOutsideToleranceAfterLineWaits", false, 0.006, false, false, stepQuarters },
        JumpCase{ "OffWithinOffPartWaits", false, 0.8, false, false, stepQuarters }),
    [] (const ::testing::TestParamInfo<JumpCase>& testCase) { return std::string (testCase.param.name); });

TEST (Clock, NearerToPreviousStepComparesTheDistancesToTheTwoLines)
{
    struct Case
    {
        double position;
        bool nearerToPrevious;
    };

    const Case cases[] = {
        { 2.0, false },  { 2.01, true },  { 2.1, true },  { 2.125, false },
        { 2.13, false }, { 2.24, false }, { -0.2, true }, { -0.05, false },
    };

    Clock clock;

    for (const auto& c : cases)
    {
        clock.setPosition (c.position);
        EXPECT_EQ (clock.isNearerToPreviousStep(), c.nearerToPrevious) << c.position;
    }
}

TEST (Clock, WithoutATempoARunningClockHoldsUntilOneArrives)
{
    Clock clock;
    clock.start (1.0);

    EXPECT_TRUE (edgesOver (clock, 20000).empty());
    EXPECT_EQ (clock.getPosition(), 1.0);
    EXPECT_EQ (clock.getPhase(), -1);

    clock.setBpm (120.0);
    EXPECT_TRUE (clock.tick());
    EXPECT_TRUE (clock.isFirstEdge());
    edgesOver (clock, 100);
    ASSERT_TRUE (clock.isGateOn());

    // The tempo drops away inside a gate: the gate stays on and the position stays put.
    const double held = clock.getPosition();
    clock.setBpm (0.0);
    EXPECT_TRUE (edgesOver (clock, 20000).empty());
    EXPECT_EQ (clock.getPosition(), held);
    EXPECT_TRUE (clock.isGateOn());

    // Back at tempo, the gate ends where the grid says.
    clock.setBpm (120.0);
    const double samples = (1.0 + gateQuarters - held) * samplesPerQuarter (44100.0, 120.0);
    ASSERT_FALSE (nearWhole (samples));
    EXPECT_EQ (ticksToNextEdge (clock, 6000), static_cast<int> (std::ceil (samples)));
    EXPECT_TRUE (clock.isGateOff());
}

TEST (Clock, ASampleRateOfZeroHoldsLikeATempoOfZero)
{
    Clock clock;
    feed (clock, 0.0, 120.0, 1.0);
    EXPECT_TRUE (edgesOver (clock, 1000).empty());
    EXPECT_EQ (clock.getPosition(), 1.0);

    clock.setSampleRate (44100.0);
    EXPECT_TRUE (clock.tick());
}
} // namespace
