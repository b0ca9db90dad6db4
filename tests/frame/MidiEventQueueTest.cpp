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

} // namespace
