#include "FuzzBaseline.h"

namespace
{
juce::MemoryBlock stateOf (Vantrice& plugin)
{
    juce::MemoryBlock block;
    plugin.getStateInformation (block);
    return block;
}
} // namespace

FuzzBaseline::FuzzBaseline (const juce::String& folderName)
    : plugin (FuzzHost::keepUntilExit (
        FuzzHost::startDistinctPlugin (FuzzHost::get().getScratch().getChildFile (folderName))))
    , folder (FuzzHost::get().getScratch().getChildFile (folderName))
    , before (PluginSnapshot::of (plugin))
    , state (stateOf (plugin))
{
}

void FuzzBaseline::restore() { plugin.setStateInformation (state.getData(), (int) state.getSize()); }

void FuzzBaseline::restoreIfChanged (const PluginSnapshot& after)
{
    if (after != before)
        restore();
}
