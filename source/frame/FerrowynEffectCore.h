#pragma once

#include "common/RateInfo.h"
#include "presets/PresetChanger.h"
#include "presets/PresetManagerListener.h"

#include <juce_core/juce_core.h>

class Clock;
class Vantrice;

/** Base of the family's DSP cores: the level meter table, the published meter values and the fade that
    hides a preset change. The family layer calls every operation under its own lock; runs of samples and
    the start of a fade also hold `coreLock`, which is re-entrant because a preset applied at the bottom
    of a fade re-enters the locks of the run it happens in. */
class FerrowynEffectCore : public PresetChanger, public PresetManagerListener
{
public:
    static constexpr int meterTableSize = 400;

    explicit FerrowynEffectCore (Vantrice* owningProcessor);
    ~FerrowynEffectCore() override = default;

    void beginPresetChange() override;
    virtual void prepare (int blockSize);
    virtual void setSampleRate (float rate);
    /** Builds, outside the family's locks, what `setSampleRate` at this rate would allocate or measure, so
        that a call under the locks only swaps it in. */
    virtual void prepareSampleRate (float rate);
    /** Frees, outside the locks, what the last swap replaced. */
    virtual void releaseReplacedRate();
    virtual void setParameter (int index, float value);
    virtual void setTempo (double bpm);
    virtual void setQuality (int level);
    virtual void clockTick (int index, Clock* clock);
    virtual int getLatency();
    virtual void processStereo (float** left, float** right, int numSamples);
    virtual void processMono (float** channel, int numSamples);

    void presetChanged() override {}

    /** Stores the meter positions for the editor, clamped to 0 to 1. */
    void publishMeters (float left, float right);

    /** Reads what `publishMeters` stored last. */
    void readMeters (float& left, float& right) const;

    /** The meter position of a signed level, from the table. */
    double meterPosition (double level) const noexcept
    {
        // Held to the table in double, so a level out of any integer's range reads an end row.
        const auto row = level * 100.0 + 200.0;
        const int index = row >= meterTableSize - 1 ? meterTableSize - 1 : (row > 0.0 ? (int) row : 0);
        return meterTable[index];
    }

    juce::CriticalSection& getCoreLock() noexcept { return coreLock; }

    bool isFadeActive() const noexcept { return fadeActive; }
    double getFadeGain() const noexcept { return fadeGain; }

    Vantrice* processor = nullptr;

protected:
    /** One step of the preset fade, run per host sample while a fade is active. Returns whether the
        fade still runs after it, in which case the sample is to be multiplied by `fadeGain`. */
    bool runFadeStep (const RateInfo& info);

    double meterTable[meterTableSize]{};
    float meterLeft = 0.0f, meterRight = 0.0f;
    mutable juce::ReadWriteLock meterLock;

    juce::CriticalSection coreLock;

    bool fadeActive = false, fadeOut = false, fadeIn = false, fadeHold = false;
    double fadeTarget = 1.0, fadeGain = 1.0;
    int fadeHoldCount = 0;
};
