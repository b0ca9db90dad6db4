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

struct PlacementCase
{
    double rate;
    double tick;
    int expectedSample;
};

class MidiTimelinePlacement : public ::testing::TestWithParam<PlacementCase>
{
};

TEST_P (MidiTimelinePlacement, TicksBecomeRoundedSamples)
{
    const auto& c = GetParam();
    // 960 ticks a quarter at 120 BPM, then 60 BPM from tick 1920: 1920 ticks a second, then 960.
    juce::MidiMessageSequence tempo, events;
    tempo.addEvent (juce::MidiMessage::tempoMetaEvent (500000), 0.0);
    tempo.addEvent (juce::MidiMessage::tempoMetaEvent (1000000), 1920.0);
    events.addEvent (juce::MidiMessage::controllerEvent (1, 7, 100), c.tick);
    juce::MidiFile file;
    file.setTicksPerQuarterNote (960);
    file.addTrack (tempo);
    file.addTrack (events);

    const auto timeline = MidiTimeline::fromMidiFile (file, c.rate);
    ASSERT_EQ (timeline.getNumEvents(), 1);
    EXPECT_EQ (positionsAndFirstBytes (timeline.getEvents()).front().first, c.expectedSample);
}

INSTANTIATE_TEST_SUITE_P (
    Table, MidiTimelinePlacement,
    ::testing::Values (PlacementCase{ 44100.0, 0.0, 0 }, PlacementCase{ 44100.0, 1.0, 23 },
                       PlacementCase{ 44100.0, 960.0, 22050 }, PlacementCase{ 48000.0, 1.0, 25 },
                       PlacementCase{ 96000.0, 1920.0, 96000 }, PlacementCase{ 96000.0, 2880.0, 192000 },
                       PlacementCase{ 44100.0, 1921.0, 44146 }));

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
