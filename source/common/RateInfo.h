#pragma once

/** Values derived from the host rate that the core's smoothing, meters and fade run on. */
struct RateInfo
{
    double rate = 44100.0;
    double rateRatio = 1.0;   // host rate / core rate
    double speedFactor = 1.0; // k: 1.0 at the core rate, less above it
    double fadeCoeff = 0.002; // per-sample coefficient of the preset fade

    /** The core always runs at this rate; every other host rate is converted to it. */
    static constexpr double coreRate = 44100.0;

    static RateInfo forRate (double hostRate);
};
