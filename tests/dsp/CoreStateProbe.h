#pragma once

#include "dsp/VantriceCore.h"

#include <cstring>
#include <string>

/** Compares two cores' whole state bit for bit, converters included: what differs, or nothing. Bits,
    not values, so that a 0.0 for a -0.0 counts. */
struct CoreStateProbe
{
    static std::string firstDifference (const VantriceCore& a, const VantriceCore& b)
    {
        std::string where;
        auto same = [&where] (const char* name, const void* x, const void* y, size_t bytes)
        {
            if (where.empty() && std::memcmp (x, y, bytes) != 0)
                where = name;
        };
#define VANTRICE_PROBE_FIELD(field) same (#field, &a.field, &b.field, sizeof (a.field))
        VANTRICE_PROBE_FIELD (rawValues);
        VANTRICE_PROBE_FIELD (preampTarget);
        VANTRICE_PROBE_FIELD (mixTarget);
        VANTRICE_PROBE_FIELD (volumeTarget);
        VANTRICE_PROBE_FIELD (linked);
        VANTRICE_PROBE_FIELD (preamp);
        VANTRICE_PROBE_FIELD (mix);
        VANTRICE_PROBE_FIELD (volume);
        VANTRICE_PROBE_FIELD (smoothCoeff);
        VANTRICE_PROBE_FIELD (ringIndex);
        VANTRICE_PROBE_FIELD (leftOut);
        VANTRICE_PROBE_FIELD (rightOut);
        VANTRICE_PROBE_FIELD (holdTriggered);
        VANTRICE_PROBE_FIELD (holdFraction);
        VANTRICE_PROBE_FIELD (noiseA);
        VANTRICE_PROBE_FIELD (noiseB);
        VANTRICE_PROBE_FIELD (noise);
        VANTRICE_PROBE_FIELD (resampling);
        VANTRICE_PROBE_FIELD (meterDecay);
        VANTRICE_PROBE_FIELD (ledLeft);
        VANTRICE_PROBE_FIELD (ledRight);
        VANTRICE_PROBE_FIELD (meterLeft);
        VANTRICE_PROBE_FIELD (meterRight);
        VANTRICE_PROBE_FIELD (fadeActive);
        VANTRICE_PROBE_FIELD (fadeOut);
        VANTRICE_PROBE_FIELD (fadeIn);
        VANTRICE_PROBE_FIELD (fadeHold);
        VANTRICE_PROBE_FIELD (fadeTarget);
        VANTRICE_PROBE_FIELD (fadeGain);
        VANTRICE_PROBE_FIELD (fadeHoldCount);
        channel ("left.", a.left, b.left, same);
        channel ("right.", a.right, b.right, same);
#undef VANTRICE_PROBE_FIELD
        return where;
    }

private:
    template <typename Same>
    static void channel (const std::string& side, const VantriceCore::Channel& a,
                         const VantriceCore::Channel& b, Same& same)
    {
        auto name = [&side] (const char* field) { return side + field; };
#define VANTRICE_PROBE_CHANNEL(field) same (name (#field).c_str(), &a.field, &b.field, sizeof (a.field))
        VANTRICE_PROBE_CHANNEL (quantScale);
        VANTRICE_PROBE_CHANNEL (rate);
        VANTRICE_PROBE_CHANNEL (stepSpeed);
        VANTRICE_PROBE_CHANNEL (antiAlias);
        VANTRICE_PROBE_CHANNEL (filterType);
        VANTRICE_PROBE_CHANNEL (filterPre);
        VANTRICE_PROBE_CHANNEL (cutoffTarget);
        VANTRICE_PROBE_CHANNEL (resoTarget);
        VANTRICE_PROBE_CHANNEL (cutoff);
        VANTRICE_PROBE_CHANNEL (reso);
        VANTRICE_PROBE_CHANNEL (resoRoot);
        VANTRICE_PROBE_CHANNEL (holdPhase);
        VANTRICE_PROBE_CHANNEL (heldValue);
        VANTRICE_PROBE_CHANNEL (stepHeight);
        VANTRICE_PROBE_CHANNEL (stepPosition);
        VANTRICE_PROBE_CHANNEL (stepWrite);
        VANTRICE_PROBE_CHANNEL (low);
        VANTRICE_PROBE_CHANNEL (high);
        VANTRICE_PROBE_CHANNEL (band);
        VANTRICE_PROBE_CHANNEL (notch);
        VANTRICE_PROBE_CHANNEL (meterPeak);
        VANTRICE_PROBE_CHANNEL (envelope);
        VANTRICE_PROBE_CHANNEL (active);
        VANTRICE_PROBE_CHANNEL (inResult);
        VANTRICE_PROBE_CHANNEL (outResult);
        VANTRICE_PROBE_CHANNEL (fifo);
        VANTRICE_PROBE_CHANNEL (fifoWrite);
        VANTRICE_PROBE_CHANNEL (fifoRead);
#undef VANTRICE_PROBE_CHANNEL
        const size_t ringBytes = 2 * VantriceCore::ringSize * sizeof (double);
        same (name ("dryRing").c_str(), a.dryRing.getData(), b.dryRing.getData(), ringBytes);
        same (name ("crushRing").c_str(), a.crushRing.getData(), b.crushRing.getData(), ringBytes);
        converter (name ("inConv."), *a.inConv, *b.inConv, same);
        converter (name ("outConv."), *a.outConv, *b.outConv, same);
    }

    template <typename Same>
    static void converter (const std::string& prefix, const RateConverter& a, const RateConverter& b,
                           Same& same)
    {
        same ((prefix + "phase").c_str(), &a.phase, &b.phase, sizeof (a.phase));
        same ((prefix + "countdown").c_str(), &a.countdown, &b.countdown, sizeof (a.countdown));
        same ((prefix + "delayLine").c_str(), a.delayLine, b.delayLine, sizeof (a.delayLine));
        same ((prefix + "delayWrite").c_str(), &a.delayWrite, &b.delayWrite, sizeof (a.delayWrite));
    }
};
