#include "dsp/ParameterCurves.h"

#include <cmath>

double ParameterCurves::rateCurve (double v) noexcept
{
    const double r =
        ((((1.6276041666666399 * v - 3.255208333333264) * v + 3.5807291666666026) * v - 1.432291666666641) * v
         + 0.47916666666666236)
            * v
        + 2.704652017625984e-16;
    return r < 0.001 ? 0.001 : r;
}

double ParameterCurves::cutoffCurve (double v) noexcept
{
    return std::exp (4.365134839032704 * v) * 0.010674735250057944 - 0.009674735250774223;
}

double ParameterCurves::resoCurve (double v) noexcept
{
    return std::exp ((1.0 - v) * 4.60517018598809 - 8.439068612150077) * 46.24246011657401;
}

int ParameterCurves::bitsOf (double v) noexcept { return (int) std::floor (16.0 * v + 0.5) + 1; }

int ParameterCurves::typeOf (double v) noexcept
{
    const float f = (float) v;
    return (int) std::floor (4.0f * f + 0.5f);
}

double ParameterCurves::quantScaleOf (double v) noexcept { return std::pow (2.0, bitsOf (v)); }

double ParameterCurves::preampGainOf (double v) noexcept { return std::pow (10.0, v * 48.0 * 0.05); }
