#include "dsp/SignalKernels.h"
#include "dsp/StepTable.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

namespace
{
template <typename T>
bool sameBits (const std::vector<T>& a, const std::vector<T>& b)
{
    return a.size() == b.size() && std::memcmp (a.data(), b.data(), a.size() * sizeof (T)) == 0;
}

/** Random data, coefficients and layouts that reach every branch of the kernels: groups that share a
    filter and lie one sample apart, and groups that do not; counts that do not fill the last vector. */
struct Trial
{
    explicit Trial (unsigned seed)
        : random (seed)
    {
        signal.resize (4096);
        filters.resize (4096);
        for (auto* v : { &signal, &filters })
            for (auto& x : *v)
                x = uniform (random);
    }

    int below (int n) { return (int) (random() % (unsigned) n); }

    std::vector<SignalKernels::DotJob> dotJobs (int taps)
    {
        std::vector<SignalKernels::DotJob> jobs ((size_t) (1 + below (23)));
        const bool together = below (2) == 0;
        const int start = below (2000), filter = below (3000);
        for (size_t j = 0; j < jobs.size(); ++j)
            jobs[j] = together ? SignalKernels::DotJob{ signal.data() + start + j, filters.data() + filter }
                               : SignalKernels::DotJob{ signal.data() + below (2000),
                                                        filters.data() + below (4000 - taps) };
        return jobs;
    }

    std::vector<SignalKernels::PairJob> pairJobs (int taps)
    {
        std::vector<SignalKernels::PairJob> jobs ((size_t) (1 + below (23)));
        const bool together = below (2) == 0;
        const int start = 2 * below (900), filter = below (3000);
        for (size_t j = 0; j < jobs.size(); ++j)
            jobs[j] = together
                          ? SignalKernels::PairJob{ signal.data() + start + 2 * j, filters.data() + filter }
                          : SignalKernels::PairJob{ signal.data() + 2 * below (900),
                                                    filters.data() + below (4000 - taps) };
        return jobs;
    }

    std::mt19937 random;
    std::uniform_real_distribution<double> uniform{ -1.0, 1.0 };
    std::vector<double> signal, filters;
};

struct StepState
{
    std::vector<double> position, heightA, heightB, sumA, sumB;
};
} // namespace

TEST (SignalKernels, EveryInstructionSetGivesTheSameBits)
{
    const auto* wide = SignalKernels::avx2();
    if (wide == nullptr)
        GTEST_SKIP() << "this processor has no AVX2";
    const auto& narrow = SignalKernels::sse2();

    for (unsigned seed = 0; seed < 300; ++seed)
    {
        Trial trial (seed);
        const int taps = trial.below (2) == 0 ? 32 : 65;

        const auto jobs = trial.dotJobs (taps);
        std::vector<double> a (jobs.size()), b (jobs.size());
        narrow.dots (jobs.data(), (int) jobs.size(), taps, a.data());
        wide->dots (jobs.data(), (int) jobs.size(), taps, b.data());
        ASSERT_TRUE (sameBits (a, b)) << "dots, seed " << seed;

        const auto pairs = trial.pairJobs (taps);
        a.assign (2 * pairs.size(), 0.0);
        b.assign (2 * pairs.size(), 0.0);
        narrow.pairDots (pairs.data(), (int) pairs.size(), taps, a.data());
        wide->pairDots (pairs.data(), (int) pairs.size(), taps, b.data());
        ASSERT_TRUE (sameBits (a, b)) << "pair dots, seed " << seed;

        // A converter's outputs: phases in a row in a table that repeats its first phases after the last,
        // inputs taken at 0 to 5 per output or several outputs per input, for one channel or two.
        const int phaseCount = 7 + trial.below (40), stride = phaseCount + 3, outputs = 1 + trial.below (40);
        for (int k = 0; k < 65; ++k)
            for (int i = phaseCount; i < stride; ++i)
                trial.filters[(size_t) (k * stride + i)] =
                    trial.filters[(size_t) (k * stride + i - phaseCount)];
        const int advance = trial.below (6);
        std::vector<int> phase ((size_t) outputs), start ((size_t) outputs);
        for (int q = 0, p = trial.below (phaseCount), s = 0; q < outputs; ++q, p = (p + 1) % phaseCount)
        {
            phase[(size_t) q] = p;
            start[(size_t) q] = s;
            s += advance > 0 ? trial.below (advance + 1) : 0;
        }
        const bool stereo = trial.below (2) == 0;
        std::vector<double> aa ((size_t) outputs), ab ((size_t) outputs), ba ((size_t) outputs),
            bb ((size_t) outputs);
        // Both channels side by side as well, for outputs spread wide.
        std::vector<double> sideBySide (3000);
        for (size_t i = 0; i < 1500; ++i)
        {
            sideBySide[2 * i] = trial.signal[i];
            sideBySide[2 * i + 1] = trial.signal[1000 + i];
        }
        SignalKernels::PhaseRun run{ trial.filters.data(),
                                     stride,
                                     65,
                                     phase.data(),
                                     start.data(),
                                     trial.signal.data(),
                                     stereo ? trial.signal.data() + 1000 : nullptr,
                                     stereo ? sideBySide.data() : nullptr,
                                     outputs,
                                     aa.data(),
                                     stereo ? ab.data() : nullptr };
        narrow.phaseDots (run);
        run.resultA = ba.data();
        run.resultB = stereo ? bb.data() : nullptr;
        wide->phaseDots (run);
        ASSERT_TRUE (sameBits (aa, ba) && sameBits (ab, bb)) << "phase dots, seed " << seed;

        // Steps at whole and fractional speeds, some resting on the silent row, some near their end, a
        // step starting in most samples.
        const double speed =
            trial.below (2) == 0 ? 128.0 : 0.128 + 127.0 * std::abs (trial.uniform (trial.random));
        const int samples = 1 + trial.below (70);
        StepState before;
        for (int j = 0; j < SignalKernels::numSlots; ++j)
        {
            const int kind = trial.below (3);
            before.position.push_back (
                kind == 0 ? StepTable::silentRow
                          : (kind == 1 ? 4226.0 - speed * std::abs (trial.uniform (trial.random))
                                       : 4000.0 * std::abs (trial.uniform (trial.random))));
            before.heightA.push_back (trial.uniform (trial.random));
            before.heightB.push_back (trial.uniform (trial.random));
        }
        std::vector<int> slot ((size_t) samples);
        std::vector<double> eventPosition ((size_t) samples), eventA ((size_t) samples),
            eventB ((size_t) samples);
        for (int t = 0, w = trial.below (36); t < samples; ++t)
        {
            slot[(size_t) t] = trial.below (4) == 0 ? -1 : w;
            if (slot[(size_t) t] >= 0)
                w = (w + 1) % SignalKernels::numSlots;
            eventPosition[(size_t) t] = speed * std::abs (trial.uniform (trial.random));
            eventA[(size_t) t] = trial.uniform (trial.random);
            eventB[(size_t) t] = trial.uniform (trial.random);
        }
        const bool two = trial.below (2) == 0;
        StepState after[2] = { before, before };
        const SignalKernels* sets[2] = { &narrow, wide };
        for (int i = 0; i < 2; ++i)
        {
            auto& s = after[i];
            s.sumA.assign ((size_t) samples, 0.0);
            s.sumB.assign ((size_t) samples, 0.0);
            sets[i]->stepSums ({ s.position.data(), s.heightA.data(), two ? s.heightB.data() : nullptr, speed,
                                 slot.data(), eventPosition.data(), eventA.data(),
                                 two ? eventB.data() : nullptr, samples, s.sumA.data(),
                                 two ? s.sumB.data() : nullptr });
        }
        ASSERT_TRUE (sameBits (after[0].sumA, after[1].sumA) && sameBits (after[0].sumB, after[1].sumB)
                     && sameBits (after[0].position, after[1].position)
                     && sameBits (after[0].heightA, after[1].heightA)
                     && sameBits (after[0].heightB, after[1].heightB))
            << "step sums, seed " << seed;
    }
}
