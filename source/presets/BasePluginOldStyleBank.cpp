#include "presets/BasePluginOldStyle.h"

// The row of presets and its groups: queries and moves.

int BasePluginOldStyle::getNumPresets() const { return numPresetsInBank; }

int BasePluginOldStyle::getNumGroups() const
{
    const juce::ScopedLock sl (groupsLock);
    return groups.size();
}

Preset* BasePluginOldStyle::getPreset (int index) const
{
    const juce::ScopedLock sl (presetsLock);
    return isValidPresetIndex (index) ? presets[index] : nullptr;
}

juce::String BasePluginOldStyle::getPresetName (int index) const
{
    const juce::ScopedLock sl (presetsLock);
    return isValidPresetIndex (index) ? presets[index]->name : juce::String();
}

void BasePluginOldStyle::setPresetName (int index, const juce::String& name)
{
    if (!isValidPresetIndex (index))
        return;
    {
        const juce::ScopedLock sl (presetsLock);
        presets[index]->name = name;
    }
    if (index == currentPreset.load())
        parameters.setStringValue (currentPresetNameId, name);
}

juce::String BasePluginOldStyle::getPresetNameInGroup (int group, int position) const
{
    return getPresetName (getPresetIndex (group, position));
}

int BasePluginOldStyle::getGroupOfPreset (int index) const
{
    const juce::ScopedLock sl (groupsLock);
    int start = 0;
    for (int g = 0; g < groups.size(); ++g)
    {
        const int size = groups[g]->size;
        if (index >= start && index < start + size)
            return g;
        start += size;
    }
    return -1;
}

juce::String BasePluginOldStyle::getGroupName (int group) const
{
    const juce::ScopedLock sl (groupsLock);
    auto* g = groups[group];
    return g != nullptr ? g->name : juce::String();
}

void BasePluginOldStyle::setGroupName (int group, const juce::String& name)
{
    const juce::ScopedLock sl (groupsLock);
    if (auto* g = groups[group])
        g->name = name;
}

int BasePluginOldStyle::getGroupSize (int group) const
{
    const juce::ScopedLock sl (groupsLock);
    auto* g = groups[group];
    return g != nullptr ? g->size : 0;
}

int BasePluginOldStyle::getGroupStart (int group) const
{
    const juce::ScopedLock sl (groupsLock);
    if (group < 0 || group >= groups.size())
        return -1;
    int start = 0;
    for (int g = 0; g < group; ++g)
        start += groups[g]->size;
    return start;
}

int BasePluginOldStyle::getGroupEnd (int group) const
{
    const int start = getGroupStart (group);
    if (start < 0)
        return -1;
    return start + getGroupSize (group) - 1;
}

int BasePluginOldStyle::getPresetIndex (int group, int position) const
{
    const int start = getGroupStart (group);
    if (start < 0 || position < 0 || position >= getGroupSize (group))
        return -1;
    return start + position;
}

juce::String BasePluginOldStyle::getBankName() const { return bankName; }

void BasePluginOldStyle::restoreSelection (const Preset* selected)
{
    int position = -1;
    {
        const juce::ScopedLock sl (presetsLock);
        position = presets.indexOf (selected);
    }
    setCurrentPreset (position, false);
}

void BasePluginOldStyle::movePreset (int from, int to, int fromGroup, int toGroup)
{
    const int numGroups = getNumGroups();
    if (from == to || !isValidPresetIndex (from) || !isValidPresetIndex (to) || fromGroup < 0
        || fromGroup >= numGroups || toGroup < 0 || toGroup >= numGroups)
        return;

    const auto* selected = getPreset (currentPreset.load());
    if (fromGroup != toGroup)
    {
        const juce::ScopedLock sl (groupsLock);
        groups[fromGroup]->size -= 1;
        groups[toGroup]->size += 1;
    }
    {
        const juce::ScopedLock sl (presetsLock);
        presets.move (from, to);
    }
    restoreSelection (selected);
}

void BasePluginOldStyle::movePresetsToGroup (int toGroup, int fromGroup,
                                             const juce::SparseSet<int>& selection)
{
    const int numGroups = getNumGroups();
    if (toGroup == fromGroup || toGroup < 0 || toGroup >= numGroups || fromGroup < 0 || fromGroup >= numGroups
        || selection.isEmpty())
        return;

    // A selection reaching outside its group would tear the groups apart: refuse it whole.
    const int fromSize = getGroupSize (fromGroup);
    if (selection[0] < 0 || selection[selection.size() - 1] >= fromSize)
        return;

    const auto* selected = getPreset (currentPreset.load());
    const int total = selection.size();
    const int source = getGroupStart (fromGroup);
    int destination = getGroupStart (toGroup) + getGroupSize (toGroup);

    {
        const juce::ScopedLock sl (presetsLock);
        if (fromGroup < toGroup)
        {
            for (int r = selection.getNumRanges(); --r >= 0;)
            {
                const auto range = selection.getRange (r);
                for (int position = range.getEnd(); --position >= range.getStart();)
                {
                    --destination;
                    presets.move (source + position, destination);
                }
            }
        }
        else
        {
            for (int r = 0; r < selection.getNumRanges(); ++r)
            {
                const auto range = selection.getRange (r);
                for (int position = range.getStart(); position < range.getEnd(); ++position)
                {
                    presets.move (source + position, destination);
                    ++destination;
                }
            }
        }
    }
    {
        const juce::ScopedLock sl (groupsLock);
        groups[fromGroup]->size -= total;
        groups[toGroup]->size += total;
    }
    restoreSelection (selected);
}

void BasePluginOldStyle::moveGroup (int from, int to)
{
    const int numGroups = getNumGroups();
    if (from == to || from < 0 || from >= numGroups || to < 0 || to >= numGroups)
        return;

    const auto* selected = getPreset (currentPreset.load());
    const int start = getGroupStart (from);
    const int count = getGroupSize (from);
    int destination = getGroupStart (to);
    if (from < to)
        destination += getGroupSize (to) - count;

    {
        const juce::ScopedLock sl (presetsLock);
        juce::Array<Preset*> taken;
        for (int i = 0; i < count; ++i)
            taken.add (presets.removeAndReturn (start));
        for (int i = 0; i < count; ++i)
            presets.insert (destination + i, taken[i]);
    }
    {
        const juce::ScopedLock sl (groupsLock);
        groups.move (from, to);
    }
    restoreSelection (selected);
}

void BasePluginOldStyle::insertGroup (int position)
{
    const juce::ScopedLock sl (groupsLock);
    if (position >= 0 && position < groups.size())
        groups.insert (position, new PresetGroup ("New Group", 0));
}

void BasePluginOldStyle::removeEmptyGroup (int group)
{
    const juce::ScopedLock sl (groupsLock);
    if (auto* g = groups[group])
        if (g->size == 0)
            groups.remove (group);
}
