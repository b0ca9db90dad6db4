#pragma once

/** Performs a silent preset change: fades out, lets its owner apply the preset at silence, fades back. */
class PresetChanger
{
public:
    /** What a changer applies the preset through: the bank-owning processor layer. */
    class Owner
    {
    public:
        virtual ~Owner() = default;
        virtual void applyCurrentPreset() = 0;
    };

    virtual ~PresetChanger() = default;

    virtual void beginPresetChange() {}

    Owner* owner = nullptr;
};
