#include "frame/FerrowynEffectCore.h"

#include <cmath>

FerrowynEffectCore::FerrowynEffectCore (Vantrice* owningProcessor)
    : processor (owningProcessor)
{
    // A meter span of 30 dB with 0 dB at 0.8 of the scale, read in level steps of 0.01.
    for (int i = 0; i < meterTableSize; ++i)
    {
        const double a = std::abs ((i - 200) * 0.01);
        const double d = a > 0.0 ? 20.0 * std::log10 (a) : -320.0;
        const double m = d * 0.03333333333333333 + 0.8;
        meterTable[i] = m >= 0.0 ? (m > 1.0 ? 1.0 : m) : 0.0;
    }
}

void FerrowynEffectCore::beginPresetChange()
{
    const juce::ScopedLock sl (coreLock);
    fadeActive = true;
    fadeOut = true;
    fadeHold = false;
    fadeTarget = 0.0;
    fadeHoldCount = 0;
}

void FerrowynEffectCore::prepare (int) {}
void FerrowynEffectCore::setSampleRate (float) {}
void FerrowynEffectCore::prepareSampleRate (float) {}
void FerrowynEffectCore::releaseReplacedRate() {}
void FerrowynEffectCore::setParameter (int, float) {}
void FerrowynEffectCore::setTempo (double) {}
void FerrowynEffectCore::setQuality (int) {}
void FerrowynEffectCore::clockTick (int, Clock*) {}
int FerrowynEffectCore::getLatency() { return 0; }
void FerrowynEffectCore::processStereo (float**, float**, int) {}
void FerrowynEffectCore::processMono (float**, int) {}

void FerrowynEffectCore::publishMeters (float left, float right)
{
    const juce::ScopedWriteLock sl (meterLock);
    meterLeft = juce::jlimit (0.0f, 1.0f, left);
    meterRight = juce::jlimit (0.0f, 1.0f, right);
}

void FerrowynEffectCore::readMeters (float& left, float& right) const
{
    const juce::ScopedReadLock sl (meterLock);
    left = meterLeft;
    right = meterRight;
}

bool FerrowynEffectCore::runFadeStep (const RateInfo& info)
{
    fadeGain = fadeGain - ((fadeGain - fadeTarget) * info.fadeCoeff + 1e-20);

    if (fadeGain < 0.001 && fadeOut)
    {
        // Silence: the preset lands here, on the audio thread, inside the locks of this run.
        fadeTarget = 0.0;
        fadeGain = 0.0;
        fadeHold = true;
        fadeOut = false;
        fadeHoldCount = (int) (info.rateRatio * 4000.0);

        if (owner != nullptr)
            owner->applyCurrentPreset();
    }

    if (fadeHold && fadeHoldCount > 0)
    {
        if (--fadeHoldCount == 0)
        {
            fadeTarget = 1.0;
            fadeHold = false;
            fadeIn = true;
        }
    }

    if (fadeGain > 0.99 && fadeIn)
    {
        fadeActive = false;
        fadeTarget = 1.0;
        fadeGain = 1.0;
        fadeHold = false;
        fadeIn = false;
    }

    return fadeActive;
}
