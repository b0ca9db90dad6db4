#pragma once

/** Told after each applied preset. */
class PresetManagerListener
{
public:
    virtual ~PresetManagerListener() = default;
    virtual void presetChanged() = 0;
};
