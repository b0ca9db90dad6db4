#include "common/RateInfo.h"

#include <cmath>

RateInfo RateInfo::forRate (double hostRate)
{
    RateInfo info;
    info.rate = hostRate;
    info.rateRatio = hostRate / coreRate;
    // k makes a one-pole glide of the core rate last the same time at any host rate.
    info.speedFactor = 2.0 * (1.0 - std::pow (0.5, coreRate / hostRate));
    info.fadeCoeff = 0.002 * info.speedFactor;
    return info;
}
