#pragma once

#include "dsp/Vantrice.h"

#include <string>
#include <vector>

/** Everything bad input must leave as it was: the live parameters, the bank with its names, values and
    groups, the selection and the MIDI map. */
struct PluginSnapshot
{
    std::vector<float> live;
    int current = 0;
    std::string presetName;
    std::string bankName;
    std::vector<std::string> names;
    std::vector<std::vector<float>> slots;
    std::vector<std::string> groups; // name and size
    std::vector<int> map;            // parameter number per controller, -1 for none

    static PluginSnapshot of (Vantrice& plugin);

    bool operator== (const PluginSnapshot& other) const;
    bool operator!= (const PluginSnapshot& other) const { return !(*this == other); }

    /** The same without one slot of the row: what a change to that slot alone must leave equal. */
    PluginSnapshot withoutSlot (int index) const;

    /** The first difference, in words; empty when there is none. */
    std::string differenceFrom (const PluginSnapshot& other) const;

    /** What holds after any input: values in 0 to 1, a full row whose groups cover it, a selection in
        the row, and a map with at most one controller per parameter. Empty when all holds. */
    std::string brokenRule() const;
};
