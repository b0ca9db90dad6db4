#include "frame/MidiEventQueue.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace
{
// Room for a few hundred short events, as the family layer reserves.
constexpr int reservedBytes = 2048;

// An event told apart from the others by its controller value.
struct Event
{
    int position;
    int id;

    bool operator== (const Event& other) const { return position == other.position && id == other.id; }
};

std::ostream& operator<< (std::ostream& out, const Event& e)
{
    return out << "{" << e.position << ", " << e.id << "}";
}

juce::MidiBuffer makeBlock (const std::vector<Event>& events)
{
    juce::MidiBuffer block;

    for (const auto& e : events)
        block.addEvent (juce::MidiMessage::controllerEvent (1, 7, e.id), e.position);

    return block;
}

// Asks for the events of a block of numSamples sample by sample, as the block processing does; each
// event with the position it was asked at, which must be its own.
std::vector<Event> drain (MidiEventQueue& queue, int numSamples)
{
    std::vector<Event> out;
    juce::MidiMessageMetadata event;

    for (int p = 0; p < numSamples; ++p)
    {
        while (queue.nextEventDue (p, event))
        {
            EXPECT_EQ (event.samplePosition, p);
            out.push_back ({ p, event.data[2] });
        }
    }

    return out;
}

struct BlockCase
{
    const char* name;
    std::vector<Event> in;
    int numSamples;
    std::vector<Event> out;
    std::vector<Event> nextBlock;
};

void PrintTo (const BlockCase& c, std::ostream* out) { *out << c.name; }

class MidiEventQueueBlock : public ::testing::TestWithParam<BlockCase>
{
};

TEST_P (MidiEventQueueBlock, GivesEachEventAtItsPositionAndKeepsLaterOnes)
{
    const auto& c = GetParam();
    MidiEventQueue queue;
    queue.prepare (reservedBytes);

    queue.addEvents (makeBlock (c.in));
    EXPECT_EQ (drain (queue, c.numSamples), c.out);
    queue.advance (c.numSamples);

    queue.addEvents ({});
    EXPECT_EQ (drain (queue, c.numSamples), c.nextBlock);
    queue.advance (c.numSamples);
    EXPECT_EQ (queue.getNextEventPosition(), -1);
}

INSTANTIATE_TEST_SUITE_P (
    Blocks, MidiEventQueueBlock,
    ::testing::Values (
        BlockCase{ "NoEvents", {}, 256, {}, {} },
        BlockCase{ "InPositionOrder",
                   { { 100, 1 }, { 5, 2 }, { 200, 3 } },
                   256,
                   { { 5, 2 }, { 100, 1 }, { 200, 3 } },
                   {} },
        BlockCase{ "OnePositionInBufferOrder",
                   { { 50, 1 }, { 50, 2 }, { 10, 3 }, { 50, 4 } },
                   256,
                   { { 10, 3 }, { 50, 1 }, { 50, 2 }, { 50, 4 } },
                   {} },
        BlockCase{ "FirstAndLastSample", { { 255, 1 }, { 0, 2 } }, 256, { { 0, 2 }, { 255, 1 } }, {} },
        BlockCase{ "BeyondTheBlockKeptReduced",
                   { { 300, 1 }, { 100, 2 }, { 256, 3 }, { 300, 4 } },
                   256,
                   { { 100, 2 } },
                   { { 0, 3 }, { 44, 1 }, { 44, 4 } } },
        BlockCase{ "NegativePositionsDropped", { { -1, 1 }, { 0, 2 }, { -300, 3 } }, 64, { { 0, 2 } }, {} }),
    [] (const ::testing::TestParamInfo<BlockCase>& testCase) { return std::string (testCase.param.name); });

TEST (MidiEventQueue, KeptEventsComeBeforeNewOnesAtTheSamePosition)
{
    MidiEventQueue queue;
    queue.prepare (reservedBytes);

    queue.addEvents (makeBlock ({ { 300, 1 } }));
    EXPECT_TRUE (drain (queue, 256).empty());
    queue.advance (256);

    queue.addEvents (makeBlock ({ { 44, 2 }, { 10, 3 } }));
    EXPECT_EQ (drain (queue, 256), (std::vector<Event>{ { 10, 3 }, { 44, 1 }, { 44, 2 } }));
}

TEST (MidiEventQueue, AnEventFarAheadWaitsThroughSeveralBlocks)
{
    MidiEventQueue queue;
    queue.prepare (reservedBytes);
    queue.addEvents (makeBlock ({ { 1000, 1 } }));

    // 1000 is 232 samples into the fourth block of 256.
    for (int block = 0; block < 3; ++block)
    {
        EXPECT_TRUE (drain (queue, 256).empty()) << "block " << block;
        queue.advance (256);
        queue.addEvents ({});
    }

    EXPECT_EQ (drain (queue, 256), (std::vector<Event>{ { 232, 1 } }));
}

TEST (MidiEventQueue, AnEventNotYetDueStaysHeld)
{
    MidiEventQueue queue;
    queue.addEvents (makeBlock ({ { 20, 1 }, { 30, 2 } }));

    const juce::MidiMessageMetadata untouched;
    auto event = untouched;
    EXPECT_EQ (queue.getNextEventPosition(), 20);
    EXPECT_FALSE (queue.nextEventDue (19, event));
    EXPECT_EQ (event.data, untouched.data);
    EXPECT_EQ (queue.getNextEventPosition(), 20);

    ASSERT_TRUE (queue.nextEventDue (20, event));
    EXPECT_EQ (event.samplePosition, 20);
    EXPECT_EQ (event.data[2], 1);
    EXPECT_EQ (queue.getNextEventPosition(), 30);
    EXPECT_FALSE (queue.nextEventDue (20, event));

    // An event asked for late still comes out, with its own position.
    ASSERT_TRUE (queue.nextEventDue (40, event));
    EXPECT_EQ (event.samplePosition, 30);
    EXPECT_EQ (queue.getNextEventPosition(), -1);
    EXPECT_FALSE (queue.nextEventDue (1000, event));
}

TEST (MidiEventQueue, AdvanceDropsEventsOfTheBlockThatWereNotTaken)
{
    MidiEventQueue queue;
    queue.addEvents (makeBlock ({ { 10, 1 }, { 20, 2 }, { 70, 3 } }));

    juce::MidiMessageMetadata event;
    ASSERT_TRUE (queue.nextEventDue (10, event));
    queue.advance (64);
    EXPECT_EQ (drain (queue, 64), (std::vector<Event>{ { 6, 3 } }));
}

TEST (MidiEventQueue, ClearEmptiesBothBuffers)
{
    MidiEventQueue queue;
    queue.prepare (reservedBytes);
    queue.addEvents (makeBlock ({ { 10, 1 }, { 600, 2 } }));
    queue.advance (256);
    queue.addEvents (makeBlock ({ { 20, 3 } }));
    ASSERT_EQ (queue.getNextEventPosition(), 20);

    queue.clear();
    EXPECT_EQ (queue.getNextEventPosition(), -1);
    EXPECT_TRUE (drain (queue, 512).empty());

    for (int block = 0; block < 3; ++block)
    {
        queue.advance (256);
        EXPECT_EQ (queue.getNextEventPosition(), -1) << "block " << block;
    }

    queue.addEvents (makeBlock ({ { 5, 4 } }));
    EXPECT_EQ (drain (queue, 256), (std::vector<Event>{ { 5, 4 } }));
}

TEST (MidiEventQueue, PrepareKeepsWhatIsQueued)
{
    MidiEventQueue queue;
    queue.addEvents (makeBlock ({ { 3, 1 }, { 9, 2 } }));
    queue.prepare (reservedBytes * 8);
    EXPECT_EQ (drain (queue, 16), (std::vector<Event>{ { 3, 1 }, { 9, 2 } }));
}

TEST (MidiEventQueue, KeepsTheBytesOfEveryKindOfEvent)
{
    const juce::uint8 sysexData[] = { 0x7d, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09 };
    const std::vector<std::pair<int, juce::MidiMessage>> messages{
        { 270, juce::MidiMessage::controllerEvent (3, 74, 99) },
        { 270, juce::MidiMessage::programChange (16, 42) },
        { 300, juce::MidiMessage::createSysExMessage (sysexData, static_cast<int> (sizeof (sysexData))) },
        { 301, juce::MidiMessage::noteOn (1, 60, static_cast<juce::uint8> (100)) },
    };

    juce::MidiBuffer block;

    for (const auto& [position, message] : messages)
        block.addEvent (message, position);

    MidiEventQueue queue;
    queue.prepare (reservedBytes);
    queue.addEvents (block);
    queue.advance (256);

    juce::MidiMessageMetadata event;

    for (const auto& [position, message] : messages)
    {
        ASSERT_TRUE (queue.nextEventDue (position - 256, event)) << message.getDescription();
        EXPECT_EQ (event.samplePosition, position - 256);
        ASSERT_EQ (event.numBytes, message.getRawDataSize());
        EXPECT_EQ (
            std::vector<juce::uint8> (event.data, event.data + event.numBytes),
            std::vector<juce::uint8> (message.getRawData(), message.getRawData() + message.getRawDataSize()));
    }

    EXPECT_EQ (queue.getNextEventPosition(), -1);
}
} // namespace
