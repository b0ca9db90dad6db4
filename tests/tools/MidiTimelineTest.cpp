#include "MidiTimeline.h"

#include <gtest/gtest.h>

namespace
{
std::vector<std::pair<int, int>> positionsAndFirstBytes (const juce::MidiBuffer& buffer)
{
    std::vector<std::pair<int, int>> result;
    for (const auto event : buffer)
        result.emplace_back (event.samplePosition, (int) event.data[0]);
    return result;
}

struct BlockCase
{
    int start;
    int length;
    std::vector<std::pair<int, int>> expected; // offsets within the block
};

class MidiTimelineBlocks : public ::testing::TestWithParam<BlockCase>
{
};

TEST_P (MidiTimelineBlocks, HandsOutEachBlocksEventsAtTheirOffsets)
{
    MidiTimeline timeline;
    timeline.addEvent (juce::MidiMessage::controllerEvent (1, 7, 1), 0);
    timeline.addEvent (juce::MidiMessage::programChange (1, 2), 511);
    timeline.addEvent (juce::MidiMessage::controllerEvent (1, 7, 3), 512);
    timeline.addEvent (juce::MidiMessage::programChange (1, 4), 512);

    juce::MidiBuffer block;
    block.addEvent (juce::MidiMessage::controllerEvent (1, 9, 9), 3); // left over, must go
    timeline.fillBlock (GetParam().start, GetParam().length, block);
    EXPECT_EQ (positionsAndFirstBytes (block), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P (Table, MidiTimelineBlocks,
                          ::testing::Values (BlockCase{ 0, 512, { { 0, 0xb0 }, { 511, 0xc0 } } },
                                             BlockCase{ 512, 512, { { 0, 0xb0 }, { 0, 0xc0 } } },
                                             BlockCase{ 511, 1, { { 0, 0xc0 } } }, BlockCase{ 1, 510, {} },
                                             BlockCase{ 0, 1, { { 0, 0xb0 } } },
                                             BlockCase{ 505, 7, { { 6, 0xc0 } } },
                                             BlockCase{ 505, 8, { { 6, 0xc0 }, { 7, 0xb0 }, { 7, 0xc0 } } },
                                             BlockCase{ 513, 100, {} }));

} // namespace
