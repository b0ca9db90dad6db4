#include "dsp/StepTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdio>

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

int firstRowAtOrAbove (double level)
{
    for (int i = 0; i < StepTable::size; ++i)
        if (row (i) >= level)
            return i;

    return -1;
}
} // namespace

TEST (StepTable, HasThirtyThreeSamplesOfRowsAndFiveToSpare)
{
    EXPECT_EQ (StepTable::size, 4229);
    EXPECT_EQ (StepTable::rowsPerSample, 128);
    EXPECT_EQ (StepTable::size, 33 * StepTable::rowsPerSample + 5);
}

TEST (StepTable, WholeSampleRowsAreTheGivenValuesExactly)
{
    const double wholeSamples[34] = {
        -1.0,
        -1.0,
        -0.9999589428966356,
        -0.9993231061620892,
        -0.9842990744562975,
        -0.867455246982614,
        -0.4711970017599679,
        0.07719499244979477,
        0.16777178849937213,
        -0.10486838544116328,
        -0.011914695349903526,
        0.06676876106570062,
        -0.06084682451742296,
        0.02958323646638572,
        0.0006812692998170444,
        -0.01843149696704116,
        0.0236767488454781,
        -0.020402393998929513,
        0.013567075743665225,
        -0.006445384153376366,
        0.0009814612394536404,
        0.002389376835056689,
        -0.0038332538761381985,
        0.003952569607554857,
        -0.0033102232413334542,
        0.002389055449818045,
        -0.001498632994894833,
        0.0007876053240687408,
        -0.0003200022740722508,
        5.3002396531720564e-05,
        4.293464158977578e-05,
        -5.7396183782087995e-05,
        1.8911821672018547e-05,
        0.0,
    };

    for (int n = 0; n <= 33; ++n)
        EXPECT_EQ (row (n * StepTable::rowsPerSample), wholeSamples[n]) << "sample " << n;
}

TEST (StepTable, IsExactlyMinusOneThroughRow134)
{
    for (int i = 0; i <= 134; ++i)
        ASSERT_EQ (row (i), -1.0) << "row " << i;

    // The rise begins right after: the next row already differs, however slightly.
    EXPECT_NE (row (135), -1.0);
    EXPECT_GT (row (135), -1.0);
}

TEST (StepTable, StaysWithinAThousandthOfMinusOneForThreeSamples)
{
    int lastRowInBand = -1;
    while (lastRowInBand + 1 < StepTable::size && std::abs (row (lastRowInBand + 1) + 1.0) <= 0.001)
        ++lastRowInBand;

    std::printf ("last row within 0.001 of -1.0: %d (%.3f samples)\n", lastRowInBand,
                 lastRowInBand / double (StepTable::rowsPerSample));

    EXPECT_GE (lastRowInBand, 3 * StepTable::rowsPerSample);
    EXPECT_LT (lastRowInBand, 4 * StepTable::rowsPerSample);
}

TEST (StepTable, CrossesTheMiddleNearRow761)
{
    const int crossing = firstRowAtOrAbove (-0.5);
    std::printf ("first row at or above -0.5: %d (%.3f samples)\n", crossing,
                 crossing / double (StepTable::rowsPerSample));

    ASSERT_GT (crossing, 0);
    EXPECT_NEAR (crossing, 761, 2);

    // Between the two rows, the middle is passed 5.95 samples after the start.
    const double between =
        (crossing - 1) + (-0.5 - row (crossing - 1)) / (row (crossing) - row (crossing - 1));
    std::printf ("the middle is passed at row %.2f (%.4f samples)\n", between,
                 between / StepTable::rowsPerSample);
    EXPECT_NEAR (between / StepTable::rowsPerSample, 5.95, 0.01);
}

TEST (StepTable, LargestOvershootIsAbout0point2126NearRow976)
{
    int peak = 0;
    for (int i = 1; i < StepTable::size; ++i)
        if (row (i) > row (peak))
            peak = i;

    std::printf ("largest overshoot: %.17g at row %d (given: 0.21258325725736515 at row 976)\n", row (peak),
                 peak);

    EXPECT_NEAR (peak, 976, 2);
    EXPECT_NEAR (row (peak), 0.21258325725736515, 1.0e-4);
}

TEST (StepTable, IsExactlyZeroFromRow4223On)
{
    for (int i = 4223; i < StepTable::size; ++i)
        EXPECT_EQ (row (i), 0.0) << "row " << i;

    // The ringing runs right up to there.
    EXPECT_NE (row (4222), 0.0);
}

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

    std::printf ("fraction of 44100 Hz   given dB   measured dB\n");

    for (const auto& level : given)
    {
        const double measured = slopeLevelDb (level.fraction);
        std::printf ("%8.2f %20.2f %13.2f\n", level.fraction, level.db, measured);

        if (level.fraction <= 0.5)
            EXPECT_NEAR (measured, level.db, 0.7) << "at " << level.fraction;
        else
            EXPECT_LT (measured, -60.0) << "at " << level.fraction;
    }
}

TEST (StepTable, SlopeStaysBelowMinus60dBAboveTheBand)
{
    // From 0.55 of the core rate to 4 times it, in steps finer than the table's resolution of 1/33.
    double worst = -1000.0, worstFraction = 0.0;

    for (int k = 0; k <= 1380; ++k)
    {
        const double fraction = 0.55 + k * 0.0025;
        const double level = slopeLevelDb (fraction);

        if (level > worst)
        {
            worst = level;
            worstFraction = fraction;
        }
    }

    std::printf ("highest slope level from 0.55 to 4.0 of the core rate: %.2f dB at %.4f\n", worst,
                 worstFraction);
    EXPECT_LT (worst, -60.0);
}
