#include "frame/Clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <vector>

// The family layer's clock, which this effect never makes: its timing (the cut of the runs at its edges
// is the family layer's test).
namespace
{
// The clock's fixed grid and gate: sixteenth notes, on for half a step.
constexpr double stepQuarters = 0.25;
constexpr double gateQuarters = 0.125;

double samplesPerQuarter (double rate, double bpm) { return rate * 60.0 / bpm; }

std::vector<int> edgesOver (Clock& clock, int count)
{
    std::vector<int> edges;
    for (int i = 0; i < count; ++i)
        if (clock.tick())
            edges.push_back (i);
    return edges;
}

// Whether a count of samples lies so near a whole number that the running position's rounding may
// put its edge on either side.
bool nearWhole (double samples) { return std::abs (samples - std::round (samples)) < 1.0e-6; }

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
    clock.setSampleRate (c.rate);
    clock.setBpm (c.bpm);
    clock.setPosition (c.ppq);
    clock.start (c.ppq);
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

} // namespace
