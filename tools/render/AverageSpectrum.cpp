#include "AverageSpectrum.h"

#include <cmath>

void AverageSpectrum::transform (std::vector<std::complex<double>>& data)
{
    const size_t n = data.size();
    jassert (n > 0 && (n & (n - 1)) == 0);

    for (size_t i = 1, j = 0; i < n; ++i)
    {
        size_t bit = n >> 1;
        for (; (j & bit) != 0; bit >>= 1)
            j ^= bit;
        j ^= bit;
        if (i < j)
            std::swap (data[i], data[j]);
    }

    for (size_t length = 2; length <= n; length <<= 1)
    {
        const double angle = -juce::MathConstants<double>::twoPi / (double) length;
        const std::complex<double> step (std::cos (angle), std::sin (angle));
        for (size_t start = 0; start < n; start += length)
        {
            std::complex<double> w (1.0, 0.0);
            for (size_t k = 0; k < length / 2; ++k)
            {
                const auto even = data[start + k];
                const auto odd = data[start + k + length / 2] * w;
                data[start + k] = even + odd;
                data[start + k + length / 2] = even - odd;
                w *= step;
            }
        }
    }
}

std::vector<double> AverageSpectrum::measure (const juce::AudioBuffer<float>& buffer)
{
    std::vector<double> window ((size_t) fftSize);
    double windowSum = 0.0;
    for (int i = 0; i < fftSize; ++i)
    {
        window[(size_t) i] = 0.5 - 0.5 * std::cos (juce::MathConstants<double>::twoPi * i / fftSize);
        windowSum += window[(size_t) i];
    }

    const int numSamples = buffer.getNumSamples();
    const int hop = fftSize / 2;
    const int available = numSamples > fftSize ? (numSamples - fftSize) / hop + 1 : 1;
    const int numFrames = juce::jmin (available, maxFrames);

    std::vector<double> power ((size_t) numBins, 0.0);
    std::vector<std::complex<double>> frame ((size_t) fftSize);
    int count = 0;
    for (int f = 0; f < numFrames; ++f)
    {
        // Evenly spread over the signal when there are more frames than are taken.
        const int start =
            numFrames > 1 ? (int) ((juce::int64) f * (available - 1) / (numFrames - 1)) * hop : 0;
        for (int c = 0; c < buffer.getNumChannels(); ++c)
        {
            const float* data = buffer.getReadPointer (c);
            for (int i = 0; i < fftSize; ++i)
            {
                const int s = start + i;
                frame[(size_t) i] = s < numSamples ? data[s] * window[(size_t) i] : 0.0;
            }
            transform (frame);
            for (int b = 0; b < numBins; ++b)
                power[(size_t) b] += std::norm (frame[(size_t) b]);
            ++count;
        }
    }

    // A sine of amplitude A centred on a bin gives |X| = A x windowSum / 2 there.
    const double scale = 2.0 / windowSum;
    std::vector<double> levels ((size_t) numBins, floorDecibels);
    for (int b = 0; b < numBins && count > 0; ++b)
    {
        const double magnitude = std::sqrt (power[(size_t) b] / count) * scale;
        if (magnitude > 0.0)
            levels[(size_t) b] = juce::jmax (floorDecibels, 20.0 * std::log10 (magnitude));
    }
    return levels;
}
