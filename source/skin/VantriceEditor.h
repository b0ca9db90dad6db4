#pragma once

#include "skin/FerrowynEffectEditor.h"

class Vantrice;

/** The bit crusher's editor: the family's, with a process lamp per channel, lit while it carries signal. */
class VantriceEditor final : public FerrowynEffectEditor
{
public:
    explicit VantriceEditor (Vantrice& vantrice, const juce::String& skinKey = "skin.xml");

    void update() override;

private:
    Vantrice& vantrice;
    GFXAnimation* leftProcessLed = nullptr;
    GFXAnimation* rightProcessLed = nullptr;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (VantriceEditor)
};
