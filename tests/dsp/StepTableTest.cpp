#include "dsp/StepTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

namespace
{
constexpr double pi = 3.14159265358979323846;

double row (int i) { return StepTable::values[i]; }

/** Level in dB, relative to DC, of the slope of the step at a fraction of the core rate. The slope is
    the first difference of the whole step (residual plus the ideal unit step) at 128 rows per sample,
    taken as 0 before row 0; it sums to 1, the height of the step.
*/
double slopeLevelDb (double fractionOfRate)
{
    std::complex<double> sum = 0.0;
    double previous = 0.0;

    for (int i = 0; i < StepTable::size; ++i)
    {
        const double step = row (i) + 1.0;
        sum +=
            (step - previous) * std::polar (1.0, -2.0 * pi * fractionOfRate * i / StepTable::rowsPerSample);
        previous = step;
    }

    return 20.0 * std::log10 (std::abs (sum));
}

} // namespace

// The table's values are the generator's (dsp.steptable_reproducible); what is checked here is that they
// make the band-limited step they are meant to be: the slope of the step is the given low pass, and far
// down above the band.
TEST (StepTable, SlopeIsTheGivenLowPass)
{
    struct Level
    {
        double fraction, db;
    };

    const Level given[] = { { 0.1, -0.07 },   { 0.2, -0.31 },  { 0.3, -1.12 },
                            { 0.35, -2.26 },  { 0.4, -5.14 },  { 0.44, -13.63 },
                            { 0.48, -31.43 }, { 0.5, -44.64 }, { 0.55, -74.47 } };

    EXPECT_NEAR (slopeLevelDb (0.0), 0.0, 1.0e-12);

    for (const auto& level : given)
    {
        const double measured = slopeLevelDb (level.fraction);
        if (level.fraction <= 0.5)
            EXPECT_NEAR (measured, level.db, 0.7) << "at " << level.fraction;
        else
            EXPECT_LT (measured, -60.0) << "at " << level.fraction;
    }
}

TEST (StepTable, SlopeStaysBelowMinus60dBAboveTheBand)
{
    // From 0.55 of the core rate to 4 times it, in steps finer than the table's resolution of 1/33.
    for (int k = 0; k <= 1380; ++k)
        ASSERT_LT (slopeLevelDb (0.55 + k * 0.0025), -60.0) << "at " << 0.55 + k * 0.0025;
}
