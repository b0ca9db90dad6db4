#pragma once

#include "skin/GFXDisplay.h"

/** A display of a parameter's value as a number, "%.9g"; a point that would end the visible field gets a
    blank in front so that it doesn't stand alone at the edge. */
class GFXDisplayFloat : public GFXDisplay
{
public:
    explicit GFXDisplayFloat (const juce::String& name = {});
    void updateFromParameter (Parameter* changed) override;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXDisplayFloat)
};
