/*  vantrice-steptable: computes the band-limited step residual of source/dsp/StepTableData.cpp.

    Usage:
        vantrice-steptable <output.cpp>                  writes the table source (temp file, then rename)
        vantrice-steptable --check <committed> <scratch> writes the table to <scratch> and fails unless it
                                                         equals <committed> byte for byte
    The build target vantrice-steptable-regenerate rewrites source/dsp/StepTableData.cpp in place.

    The table is the residual r = s - 1 of a band-limited unit step s, 128 rows per core sample, 4229
    rows. Its 34 whole-sample rows are fixed data, copied below; the rows between them are designed
    here, in four passes:

    1. Interpolation. The whole-sample values of s (0 before sample 0, 1 after sample 33) are
       interpolated by a sinc with a Gaussian window of 16 samples deviation. Its half-band transition
       is then an erfc about half the core rate, about 0.01 of the rate wide, so the slope keeps the
       levels the whole-sample values imply up to 0.48 and lets next to nothing of their images
       through above 0.54. The sine of the sinc is taken of the row's fraction of a sample only, so the
       kernel is exactly 0 and 1 on whole rows.
    2. Ends. The interpolant rings faintly (about 1e-5) before sample 0 and after sample 33. s is
       set to exactly 0 up to row 134 and to exactly 1 from row 4223, with raised-cosine blends over
       rows 135 to 255 and 4097 to 4222 that leave rows 256 and 4096 untouched.
    3. Nyquist correction. Cutting that ringing short leaves a residue about half the core rate, and
       the whole-sample values pin only one phase component of the slope at exactly half the rate:
       taken alone they give -45.28 dB there instead of -44.64 dB. Both are repaired by adding
       sum a_k sin (pi t) B_k (t), t in samples, which is 0 on every whole row: B_k are the cubic
       B-splines on 48 equal knot intervals from row 135 to row 4222. The a_k minimise the energy of
       the slope above 0.51 of the core rate, under two linear constraints on the slope at half the
       rate: the pinned component stays as the data make it, and the free one grows, keeping its
       sign, until the level there is -44.64 dB.
    4. Exact rows. Rows 0 to 134 become -1.0, rows 4223 to 4228 0.0, and every whole-sample row the
       tabled double.

    Measure of the slope used throughout: with s[i] = r[i] + 1 at 128 rows per sample, s[-1] = 0 and
    h[i] = s[i] - s[i - 1], the level at a fraction f of the core rate is
    20 log10 |sum_i h[i] exp (-j 2 pi f i / 128)|. h sums to 1, so this is relative to DC.

    Everything is plain double arithmetic in a fixed order, so the output is the same on every run.
*/

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{
constexpr int rowsPerSample = 128;
constexpr int tableSize = 4229;
constexpr int stepLengthSamples = 33;
constexpr int lastSilentRow = 134;
constexpr int firstSettledRow = 4223;

// The residual at whole samples 0 to 33, as given for the design.
constexpr double wholeSampleResidual[stepLengthSamples + 1] = {
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

constexpr double levelAtHalfRateDb = -44.64; // wanted level of the slope at half the core rate

// Design choices of passes 1 and 3 (see the top of the file).
constexpr double windowDeviationSamples = 16.0;
constexpr int kernelReachSamples = 160; // window below 1e-21 there
constexpr double stopbandEdge = 0.51;   // of the core rate
constexpr int knotIntervals = 48;       // about two thirds of a sample each
constexpr int splineCount = knotIntervals - 3;

constexpr double pi = 3.14159265358979323846;

using Vector = std::vector<double>;
using Complex = std::complex<double>;

size_t at (int i) { return static_cast<size_t> (i); }

/** The band-limited step at whole sample n. */
double stepAtSample (int n)
{
    if (n < 0)
        return 0.0;
    if (n > stepLengthSamples)
        return 1.0;
    return wholeSampleResidual[n] + 1.0;
}

/** sin (pi row / 128) from the fraction of a sample alone, so it is exactly 0 on whole rows. */
double sinPiRow (int row)
{
    const int sample = row / rowsPerSample;
    const double s = std::sin (pi * (row % rowsPerSample) / rowsPerSample);
    return sample % 2 == 0 ? s : -s;
}

// Pass 1 -------------------------------------------------------------------------------------------

Vector interpolateStep()
{
    Vector s (at (tableSize));
    const double windowScale = 0.5 / (windowDeviationSamples * windowDeviationSamples);

    for (int row = 0; row < tableSize; ++row)
    {
        const int n = row / rowsPerSample;
        const int fraction = row % rowsPerSample;

        if (fraction == 0)
        {
            s[at (row)] = stepAtSample (n);
            continue;
        }

        const double sinFraction = std::sin (pi * fraction / rowsPerSample);
        double sum = 0.0;

        for (int m = n - kernelReachSamples; m <= n + kernelReachSamples + 1; ++m)
        {
            const double x = (n - m) + static_cast<double> (fraction) / rowsPerSample;
            const double sine = (n - m) % 2 == 0 ? sinFraction : -sinFraction;
            sum += stepAtSample (m) * sine / (pi * x) * std::exp (-windowScale * x * x);
        }

        s[at (row)] = sum;
    }

    return s;
}

// Pass 2 -------------------------------------------------------------------------------------------

double raisedCosine (double u) { return 0.5 - 0.5 * std::cos (pi * u); }

void settleEnds (Vector& s)
{
    const int firstKeptRow = 2 * rowsPerSample;                                // sample 2 is left as it is
    const int lastKeptRow = stepLengthSamples * rowsPerSample - rowsPerSample; // and sample 32

    for (int row = 0; row <= lastSilentRow; ++row)
        s[at (row)] = 0.0;

    for (int row = lastSilentRow + 1; row < firstKeptRow; ++row)
        s[at (row)] *=
            raisedCosine (static_cast<double> (row - lastSilentRow) / (firstKeptRow - lastSilentRow));

    for (int row = lastKeptRow + 1; row < firstSettledRow; ++row)
    {
        const double weight =
            raisedCosine (static_cast<double> (firstSettledRow - row) / (firstSettledRow - lastKeptRow));
        s[at (row)] = 1.0 + (s[at (row)] - 1.0) * weight;
    }

    for (int row = firstSettledRow; row < tableSize; ++row)
        s[at (row)] = 1.0;
}

// Pass 3 -------------------------------------------------------------------------------------------

/** First differences of a curve that is 0 before row 0 and endValue after the last row. */
Vector slopeOf (const Vector& curve, double endValue)
{
    Vector h (curve.size() + 1);
    double previous = 0.0;

    for (size_t i = 0; i < curve.size(); ++i)
    {
        h[i] = curve[i] - previous;
        previous = curve[i];
    }

    h[curve.size()] = endValue - previous;
    return h;
}

Complex spectrumAt (const Vector& h, double fractionOfRate)
{
    Complex sum = 0.0;

    for (size_t i = 0; i < h.size(); ++i)
        sum += h[i] * std::polar (1.0, -2.0 * pi * fractionOfRate * static_cast<double> (i) / rowsPerSample);

    return sum;
}

/** Applies I - P, where P is the ideal low-pass to the stopband edge, as a Toeplitz matrix at the row
    rate. Only the non-zero span of v is visited.
*/
Vector stopbandPart (const Vector& v, const Vector& lowPass)
{
    size_t first = v.size(), last = 0;

    for (size_t i = 0; i < v.size(); ++i)
    {
        if (v[i] != 0.0)
        {
            first = std::min (first, i);
            last = i;
        }
    }

    Vector out (v);

    if (first > last)
        return out;

    for (size_t i = 0; i < v.size(); ++i)
    {
        double sum = 0.0;

        for (size_t j = first; j <= last; ++j)
            sum += lowPass[i > j ? i - j : j - i] * v[j];

        out[i] -= sum;
    }

    return out;
}

double dot (const Vector& a, const Vector& b)
{
    double sum = 0.0;

    for (size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];

    return sum;
}

double cubicBSpline (double u)
{
    if (u <= 0.0 || u >= 4.0)
        return 0.0;

    if (u < 1.0)
        return u * u * u / 6.0;

    if (u < 2.0)
    {
        const double v = u - 1.0;
        return (1.0 + 3.0 * v + 3.0 * v * v - 3.0 * v * v * v) / 6.0;
    }

    if (u < 3.0)
    {
        const double v = 3.0 - u;
        return (1.0 + 3.0 * v + 3.0 * v * v - 3.0 * v * v * v) / 6.0;
    }

    const double v = 4.0 - u;
    return v * v * v / 6.0;
}

/** Solves g x = b for a symmetric positive definite g of size n (row-major), by Cholesky. */
bool solveSymmetric (const Vector& g, Vector b, size_t n, Vector& x)
{
    Vector l (n * n, 0.0);

    for (size_t i = 0; i < n; ++i)
    {
        for (size_t j = 0; j <= i; ++j)
        {
            double v = g[i * n + j];

            for (size_t k = 0; k < j; ++k)
                v -= l[i * n + k] * l[j * n + k];

            if (i == j)
            {
                if (!(v > 0.0))
                    return false;
                l[i * n + i] = std::sqrt (v);
            }
            else
            {
                l[i * n + j] = v / l[j * n + j];
            }
        }
    }

    for (size_t i = 0; i < n; ++i)
    {
        for (size_t k = 0; k < i; ++k)
            b[i] -= l[i * n + k] * b[k];
        b[i] /= l[i * n + i];
    }

    for (size_t i = n; i-- > 0;)
    {
        for (size_t k = i + 1; k < n; ++k)
            b[i] -= l[k * n + i] * b[k];
        b[i] /= l[i * n + i];
    }

    x = b;
    return true;
}

bool addNyquistCorrection (Vector& s)
{
    const size_t slopeSize = s.size() + 1;

    Vector lowPass (slopeSize);
    lowPass[0] = 2.0 * stopbandEdge / rowsPerSample;
    for (size_t m = 1; m < slopeSize; ++m)
        lowPass[m] = std::sin (2.0 * pi * stopbandEdge * static_cast<double> (m) / rowsPerSample)
                     / (pi * static_cast<double> (m));

    // The basis: sin (pi t) times cubic B-splines that vanish outside rows 135 to 4222.
    const double firstKnot = static_cast<double> (lastSilentRow + 1) / rowsPerSample;
    const double lastKnot = static_cast<double> (firstSettledRow - 1) / rowsPerSample;
    const double knotSpacing = (lastKnot - firstKnot) / knotIntervals;
    const size_t count = splineCount;

    std::vector<Vector> basis (count), basisSlope (count), basisStop (count);

    for (size_t k = 0; k < count; ++k)
    {
        basis[k].assign (s.size(), 0.0);

        for (int row = 0; row < tableSize; ++row)
        {
            const double t = static_cast<double> (row) / rowsPerSample;
            basis[k][at (row)] =
                sinPiRow (row) * cubicBSpline ((t - firstKnot) / knotSpacing - static_cast<double> (k));
        }

        basisSlope[k] = slopeOf (basis[k], 0.0);
        basisStop[k] = stopbandPart (basisSlope[k], lowPass);
    }

    const Vector slope = slopeOf (s, 1.0);
    const Vector slopeStop = stopbandPart (slope, lowPass);

    // Normal equations of the stopband energy of slope + sum a_k basisSlope_k.
    Vector gram (count * count), rhs (count);

    for (size_t k = 0; k < count; ++k)
    {
        for (size_t l = 0; l < count; ++l)
            gram[k * count + l] = dot (basisSlope[l], basisStop[k]);
        rhs[k] = -dot (slope, basisStop[k]);
    }

    // At half the rate the whole-sample values fix the component of the slope along conj (box), box
    // being the sum of the 128 row phasors that make up one whole-sample difference; the component
    // at right angles to it is free.
    Complex box = 0.0;
    for (int m = 0; m < rowsPerSample; ++m)
        box += std::polar (1.0, -pi * m / rowsPerSample);

    const Complex pinnedAxis = std::conj (box) / std::abs (box);
    const Complex freeAxis = Complex (0.0, 1.0) * pinnedAxis;

    const Complex now = spectrumAt (slope, 0.5);
    const double pinnedPart = std::real (now * std::conj (pinnedAxis));
    const double freePart = std::real (now * std::conj (freeAxis));
    const double wanted = std::pow (10.0, levelAtHalfRateDb / 20.0);

    if (std::abs (pinnedPart) >= wanted)
        return false;

    const double wantedFree = std::copysign (std::sqrt (wanted * wanted - pinnedPart * pinnedPart), freePart);

    Vector pinnedRow (count), freeRow (count);

    for (size_t k = 0; k < count; ++k)
    {
        const Complex c = spectrumAt (basisSlope[k], 0.5);
        pinnedRow[k] = std::real (c * std::conj (pinnedAxis));
        freeRow[k] = std::real (c * std::conj (freeAxis));
    }

    // Least squares with the two constraints, by Lagrange multipliers: a = x + m1 y1 + m2 y2.
    Vector x, y1, y2;

    if (!solveSymmetric (gram, rhs, count, x) || !solveSymmetric (gram, pinnedRow, count, y1)
        || !solveSymmetric (gram, freeRow, count, y2))
        return false;

    const double m11 = dot (pinnedRow, y1), m12 = dot (pinnedRow, y2);
    const double m21 = dot (freeRow, y1), m22 = dot (freeRow, y2);
    const double r1 = -dot (pinnedRow, x);
    const double r2 = (wantedFree - freePart) - dot (freeRow, x);
    const double determinant = m11 * m22 - m12 * m21;

    if (determinant == 0.0)
        return false;

    const double mu1 = (r1 * m22 - m12 * r2) / determinant;
    const double mu2 = (m11 * r2 - m21 * r1) / determinant;

    for (size_t k = 0; k < count; ++k)
    {
        const double a = x[k] + mu1 * y1[k] + mu2 * y2[k];

        for (size_t i = 0; i < s.size(); ++i)
            s[i] += a * basis[k][i];
    }

    return true;
}

// Pass 4 and output --------------------------------------------------------------------------------

bool computeTable (Vector& residual)
{
    Vector s = interpolateStep();
    settleEnds (s);

    if (!addNyquistCorrection (s))
        return false;

    residual.assign (s.size(), 0.0);

    for (int row = 0; row < tableSize; ++row)
        residual[at (row)] = s[at (row)] - 1.0;

    for (int row = 0; row <= lastSilentRow; ++row)
        residual[at (row)] = -1.0;

    for (int row = firstSettledRow; row < tableSize; ++row)
        residual[at (row)] = 0.0;

    for (int n = 0; n <= stepLengthSamples; ++n)
    {
        // The design leaves these rows alone; only rounding may separate them from the data.
        if (std::abs (residual[at (n * rowsPerSample)] - wholeSampleResidual[n]) > 1.0e-15)
            return false;

        residual[at (n * rowsPerSample)] = wholeSampleResidual[n];
    }

    return true;
}

std::string formatTable (const Vector& residual)
{
    std::string text;
    text += "// Generated by tools/steptable (vantrice-steptable); do not edit by hand.\n"
            "// Regenerate with: cmake --build <build dir> --target vantrice-steptable-regenerate\n"
            "\n"
            "#include \"dsp/StepTable.h\"\n"
            "\n"
            "const double StepTable::values[StepTable::size] = {\n";

    constexpr int valuesPerLine = 4;
    char number[40];

    for (int row = 0; row < tableSize; ++row)
    {
        if (row % rowsPerSample == 0)
        {
            std::snprintf (number, sizeof (number), "    // sample %d, row %d\n", row / rowsPerSample, row);
            text += number;
        }

        if (row % valuesPerLine == 0)
            text += "   ";

        std::snprintf (number, sizeof (number), " %.17g,", residual[at (row)]);
        text += number;

        if (row % valuesPerLine == valuesPerLine - 1 || row == tableSize - 1)
            text += "\n";
    }

    text += "};\n";
    return text;
}

bool writeAtomically (const std::string& path, const std::string& text)
{
    const std::string temporary = path + ".tmp";
    FILE* file = std::fopen (temporary.c_str(), "wb");

    if (file == nullptr)
        return false;

    const bool written = std::fwrite (text.data(), 1, text.size(), file) == text.size();
    const bool closed = std::fclose (file) == 0;

    if (!written || !closed || std::rename (temporary.c_str(), path.c_str()) != 0)
    {
        std::remove (temporary.c_str());
        return false;
    }

    return true;
}

bool readFile (const std::string& path, std::string& text)
{
    std::ifstream in (path, std::ios::binary);

    if (!in)
        return false;

    text.assign (std::istreambuf_iterator<char> (in), std::istreambuf_iterator<char>());
    return true;
}

int firstDifferingLine (const std::string& a, const std::string& b)
{
    int line = 1;

    for (size_t i = 0; i < std::min (a.size(), b.size()); ++i)
    {
        if (a[i] != b[i])
            return line;
        if (a[i] == '\n')
            ++line;
    }

    return line;
}

int usage()
{
    std::fprintf (stderr, "usage: vantrice-steptable <output.cpp>\n"
                          "       vantrice-steptable --check <committed.cpp> <scratch.cpp>\n");
    return 2;
}
} // namespace

int main (int argc, char** argv)
{
    const bool check = argc == 4 && std::strcmp (argv[1], "--check") == 0;

    if (!check && argc != 2)
        return usage();

    Vector residual;

    if (!computeTable (residual))
    {
        std::fprintf (stderr, "vantrice-steptable: the design failed to solve\n");
        return 1;
    }

    const std::string text = formatTable (residual);
    const std::string output = check ? argv[3] : argv[1];

    if (!writeAtomically (output, text))
    {
        std::fprintf (stderr, "vantrice-steptable: cannot write %s\n", output.c_str());
        return 1;
    }

    if (!check)
        return 0;

    std::string committed;

    if (!readFile (argv[2], committed))
    {
        std::fprintf (stderr, "vantrice-steptable: cannot read %s\n", argv[2]);
        return 1;
    }

    if (committed != text)
    {
        std::fprintf (stderr, "vantrice-steptable: %s differs from the generated %s from line %d on\n",
                      argv[2], output.c_str(), firstDifferingLine (committed, text));
        return 1;
    }

    std::printf ("vantrice-steptable: %s is reproduced byte for byte\n", argv[2]);
    return 0;
}
