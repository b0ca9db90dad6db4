#include "skin/VantriceEditor.h"

#include "dsp/Vantrice.h"
#include "skin/GFXAnimation.h"

VantriceEditor::VantriceEditor (Vantrice& owner, const juce::String& skinKey)
    : FerrowynEffectEditor (owner, skinKey)
    , vantrice (owner)
{
    leftProcessLed = dynamic_cast<GFXAnimation*> (findComponentByName (*this, "LeftChannelProcessLed"));
    rightProcessLed = dynamic_cast<GFXAnimation*> (findComponentByName (*this, "RightChannelProcessLed"));
}

void VantriceEditor::update()
{
    FerrowynEffectEditor::update();
    bool left = false, right = false;
    if (vantrice.isPrepared())
        if (auto* core = vantrice.getVantriceCore())
            core->readIndicators (left, right);
    if (leftProcessLed != nullptr)
        leftProcessLed->setFrame (left ? 1 : 0);
    if (rightProcessLed != nullptr)
        rightProcessLed->setFrame (right ? 1 : 0);
}
