#pragma once

#include <juce_events/juce_events.h>

#include <memory>

/** The blinking every control can do: a timer flips a flag, and the control shows itself "off" during
    the flag's on phase. A control that is never made to blink pays nothing for it. */
class BlinkingComponent
{
public:
    BlinkingComponent();
    virtual ~BlinkingComponent();

    /** Starts blinking with the given period: the flag begins off, so the control shows at once. */
    void startBlinking (int periodMilliseconds);
    void stopBlinking();

    /** Whether the control should show itself off now: only while blinking, in the flag's on phase. */
    bool isBlinkedOff() const;
    bool isBlinking() const;
    int getBlinkPeriod() const noexcept { return blinkPeriod; }

    /** Called at every flip and at the start and end of a blink. */
    virtual void blinkChanged() {}

private:
    class BlinkingComponentTimer final : public juce::Timer
    {
    public:
        explicit BlinkingComponentTimer (BlinkingComponent& ownerToUse)
            : owner (ownerToUse)
        {
        }
        void timerCallback() override;

    private:
        BlinkingComponent& owner;
    };

    bool blinkOn = false;
    std::unique_ptr<BlinkingComponentTimer> blinkTimer;
    int blinkPeriod = 150; // nothing blinks at this default; the MIDI learn button asks for its own

    JUCE_DECLARE_NON_COPYABLE (BlinkingComponent)
};
