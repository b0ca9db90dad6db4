#include "skin/BlinkingComponent.h"

BlinkingComponent::BlinkingComponent()
    : blinkTimer (std::make_unique<BlinkingComponentTimer> (*this))
{
}

BlinkingComponent::~BlinkingComponent() { blinkTimer->stopTimer(); }

void BlinkingComponent::BlinkingComponentTimer::timerCallback()
{
    owner.blinkOn = !owner.blinkOn;
    owner.blinkChanged();
}

void BlinkingComponent::startBlinking (int periodMilliseconds)
{
    blinkOn = false;
    blinkPeriod = periodMilliseconds;
    blinkTimer->startTimer (blinkPeriod);
    blinkChanged();
}

void BlinkingComponent::stopBlinking()
{
    blinkTimer->stopTimer();
    blinkChanged();
}

bool BlinkingComponent::isBlinking() const { return blinkTimer->isTimerRunning(); }

bool BlinkingComponent::isBlinkedOff() const { return isBlinking() && blinkOn; }
