#include "AverageSpectrum.h"

#include <gtest/gtest.h>

// The plot's spectra come from this transform.

namespace
{
class AverageSpectrumTransform : public ::testing::TestWithParam<int>
{
};

TEST_P (AverageSpectrumTransform, MatchesThePlainDft)
{
    const int n = GetParam();
    juce::Random random (7);
    std::vector<std::complex<double>> data ((size_t) n);
    for (auto& x : data)
        x = { random.nextDouble() - 0.5, random.nextDouble() - 0.5 };

    auto fast = data;
    AverageSpectrum::transform (fast);

    for (int k = 0; k < n; ++k)
    {
        std::complex<double> sum;
        for (int i = 0; i < n; ++i)
            sum += data[(size_t) i] * std::polar (1.0, -juce::MathConstants<double>::twoPi * k * i / n);
        EXPECT_NEAR (fast[(size_t) k].real(), sum.real(), 1.0e-9) << "bin " << k;
        EXPECT_NEAR (fast[(size_t) k].imag(), sum.imag(), 1.0e-9) << "bin " << k;
    }
}

INSTANTIATE_TEST_SUITE_P (Sizes, AverageSpectrumTransform, ::testing::Values (1, 2, 8, 64, 256));

} // namespace
