#pragma once

/** The curves that turn normalised parameter values into the core's settings. Each is evaluated in
    exactly the written order: the rounding of every step is part of where the holds fall. */
struct ParameterCurves
{
    /** Hold rate as a fraction of the core rate, never below 0.001; 1.0 is a hold in every sample. */
    static double rateCurve (double v) noexcept;

    /** The filter's frequency coefficient F, 0.001 to 0.83. */
    static double cutoffCurve (double v) noexcept;

    /** The filter's damping Q, 1.0 down to 0.01. */
    static double resoCurve (double v) noexcept;

    /** Word length 1 to 16, or 17 for no quantisation. */
    static int bitsOf (double v) noexcept;

    /** Filter type 0 to 4 (LP, BP, HP, BR, Off), rounded in single precision. */
    static int typeOf (double v) noexcept;

    /** 2 to the power of `bitsOf`: the right channel's quantiser scale; the left one is this minus 1. */
    static double quantScaleOf (double v) noexcept;

    /** Linear gain of the preamp, 0 to +48 dB. */
    static double preampGainOf (double v) noexcept;
};
