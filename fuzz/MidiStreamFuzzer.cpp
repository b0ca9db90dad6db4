// MIDI from any device, played through the processor block by block, with the host writing parameters
// between the blocks (also values no host should send).
#include "FuzzBaseline.h"

#include <cmath>
#include <limits>

namespace
{
std::unique_ptr<FuzzBaseline> base;

constexpr int maxBlockSize = 512;
constexpr int maxBlocks = 64; // enough for a silent change to fade out and back

// The input, read as records of four bytes: a block boundary, a host write, or a MIDI message at an
// offset in the block.
struct Reader
{
    const uint8_t* data;
    size_t size;
    size_t position = 0;
    bool more() const { return position + 4 <= size; }
    const uint8_t* next()
    {
        position += 4;
        return data + position - 4;
    }
};
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    base = std::make_unique<FuzzBaseline> ("midi");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    // Each input starts from the same instance, rate and silence.
    base->restore();
    base->plugin.prepareToPlay (44100.0, maxBlockSize);

    Reader input{ data, size };
    juce::AudioBuffer<float> buffer (2, maxBlockSize);
    juce::MidiBuffer midi;
    int blockSize = 64;
    auto& parameters = base->plugin.getParameters();
    long played = 0;
    for (int block = 0; block < maxBlocks && input.more(); ++block)
    {
        midi.clear();
        while (input.more())
        {
            const auto* r = input.next();
            if (r[0] == 0xFF) // the block ends here, and the next takes this size
            {
                blockSize = 1 + (((r[1] << 8) | r[2]) % maxBlockSize);
                break;
            }
            if (r[0] == 0xFE) // a host write from -1 to 2, or NaN or an infinity
            {
                float value = (float) ((r[2] << 8) | r[3]) / 65535.0f * 3.0f - 1.0f;
                if (r[2] == 0xFF)
                    value = (r[3] & 1) != 0 ? std::nanf ("")
                                            : ((r[3] & 2) != 0 ? std::numeric_limits<float>::infinity()
                                                               : -std::numeric_limits<float>::infinity());
                if (auto* parameter = parameters[r[1] % parameters.size()])
                    parameter->setValue (value);
                continue;
            }
            midi.addEvent (juce::MidiMessage (r[1], r[2] & 0x7F, r[3] & 0x7F), r[0] % blockSize);
        }
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < blockSize; ++i)
                buffer.setSample (c, i, 0.9f * std::sin (0.05f * (float) (played + i)));
        juce::AudioBuffer<float> view (buffer.getArrayOfWritePointers(), 2, blockSize);
        base->plugin.processBlock (view, midi);
        played += blockSize;
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < blockSize; ++i)
                FuzzHost::expect (std::isfinite (view.getSample (c, i)), "the output is not a number");
    }

    const auto after = PluginSnapshot::of (base->plugin);
    FuzzHost::expect (after.brokenRule().empty(), "after MIDI and host writes: " + after.brokenRule());
    // MIDI selects presets and moves parameters, but never edits the bank or the map.
    FuzzHost::expect (after.slots == base->before.slots && after.names == base->before.names
                          && after.groups == base->before.groups,
                      "MIDI changed the bank");
    FuzzHost::expect (after.map == base->before.map, "MIDI changed the map");
    return 0;
}
