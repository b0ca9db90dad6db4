#pragma once

/** The frame's hook for a file-based collection of presets. This product keeps its presets in the bank
    of the preset layer and never makes one; the frame only steps through one if it exists. */
class PresetCollection
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void presetCollectionChanged (PresetCollection*) {}
    };

    virtual ~PresetCollection() = default;
    virtual void selectNextPreset() = 0;
    virtual void selectPreviousPreset() = 0;
};
