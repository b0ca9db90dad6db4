#include "PluginSnapshot.h"

#include <cstring>
#include <set>

PluginSnapshot PluginSnapshot::of (Vantrice& plugin)
{
    PluginSnapshot s;
    auto& manager = plugin.getParameterManager();
    for (int i = 0; i < Vantrice::numParameters; ++i)
        s.live.push_back (manager.getNormalizedValue (i));
    s.current = plugin.getCurrentPreset();
    s.presetName = manager.getStringValue (BasePluginOldStyle::currentPresetNameId).toStdString();
    s.bankName = plugin.getBankName().toStdString();
    for (int p = 0; p < plugin.getNumPresets(); ++p)
    {
        s.names.push_back (plugin.getPresetName (p).toStdString());
        std::vector<float> values;
        for (int i = 0; i < Vantrice::numParameters; ++i)
            values.push_back (plugin.getPreset (p)->getValue (i));
        s.slots.push_back (std::move (values));
    }
    for (int g = 0; g < plugin.getNumGroups(); ++g)
        s.groups.push_back (plugin.getGroupName (g).toStdString() + "\t"
                            + std::to_string (plugin.getGroupSize (g)));
    for (int controller = 0; controller < MidiControl::numControllers; ++controller)
    {
        auto* parameter = plugin.getMidiControl().getAssignedParameter (controller);
        s.map.push_back (parameter != nullptr ? parameter->getIndex() : -1);
    }
    return s;
}

PluginSnapshot PluginSnapshot::withoutSlot (int index) const
{
    auto s = *this;
    if (index >= 0 && index < (int) s.slots.size())
    {
        s.slots.erase (s.slots.begin() + index);
        s.names.erase (s.names.begin() + index);
    }
    return s;
}

bool PluginSnapshot::operator== (const PluginSnapshot& o) const
{
    // Values compare by their bits, so that a NaN that got in is seen as a change.
    const auto sameBits = [] (const std::vector<float>& a, const std::vector<float>& b)
    {
        if (a.size() != b.size())
            return false;
        for (size_t i = 0; i < a.size(); ++i)
            if (std::memcmp (&a[i], &b[i], sizeof (float)) != 0)
                return false;
        return true;
    };
    if (!sameBits (live, o.live) || slots.size() != o.slots.size())
        return false;
    for (size_t p = 0; p < slots.size(); ++p)
        if (!sameBits (slots[p], o.slots[p]))
            return false;
    return current == o.current && presetName == o.presetName && bankName == o.bankName && names == o.names
           && groups == o.groups && map == o.map;
}

std::string PluginSnapshot::differenceFrom (const PluginSnapshot& o) const
{
    for (size_t i = 0; i < live.size() && i < o.live.size(); ++i)
        if (std::memcmp (&live[i], &o.live[i], sizeof (float)) != 0)
            return "parameter " + std::to_string (i) + " is " + std::to_string (live[i]) + ", was "
                   + std::to_string (o.live[i]);
    if (current != o.current)
        return "selection is " + std::to_string (current) + ", was " + std::to_string (o.current);
    if (presetName != o.presetName)
        return "preset name shown is '" + presetName + "', was '" + o.presetName + "'";
    if (bankName != o.bankName)
        return "bank name is '" + bankName + "', was '" + o.bankName + "'";
    for (size_t p = 0; p < names.size() && p < o.names.size(); ++p)
        if (names[p] != o.names[p])
            return "preset " + std::to_string (p) + " is named '" + names[p] + "', was '" + o.names[p] + "'";
    for (size_t p = 0; p < slots.size() && p < o.slots.size(); ++p)
        for (size_t i = 0; i < slots[p].size() && i < o.slots[p].size(); ++i)
            if (std::memcmp (&slots[p][i], &o.slots[p][i], sizeof (float)) != 0)
                return "preset " + std::to_string (p) + " value " + std::to_string (i) + " changed";
    if (groups != o.groups)
        return "the groups changed";
    if (map != o.map)
        return "the MIDI map changed";
    return *this == o ? std::string() : std::string ("the sizes changed");
}

std::string PluginSnapshot::brokenRule() const
{
    for (size_t i = 0; i < live.size(); ++i)
        if (!(live[i] >= 0.0f && live[i] <= 1.0f))
            return "parameter " + std::to_string (i) + " holds " + std::to_string (live[i]);
    if (slots.size() != (size_t) BasePluginOldStyle::numPresetsInBank)
        return "the row holds " + std::to_string (slots.size()) + " presets";
    if (!(current >= 0 && current < BasePluginOldStyle::numPresetsInBank))
        return "selection " + std::to_string (current) + " is outside the row";
    int covered = 0;
    for (const auto& group : groups)
        covered += std::stoi (group.substr (group.rfind ('\t') + 1));
    if (covered != BasePluginOldStyle::numPresetsInBank)
        return "the groups cover " + std::to_string (covered) + " presets";
    std::set<int> mapped;
    for (int parameter : map)
        if (parameter >= 0 && !mapped.insert (parameter).second)
            return "parameter " + std::to_string (parameter) + " has two controllers";
    return {};
}
