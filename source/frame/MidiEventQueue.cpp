#include "frame/MidiEventQueue.h"

MidiEventQueue::MidiEventQueue() { restart(); }

void MidiEventQueue::prepare (int expectedBytes)
{
    for (auto& buffer : buffers)
        buffer.ensureSize (static_cast<size_t> (juce::jmax (0, expectedBytes)));

    // Reserving may have moved the current buffer's bytes.
    restart();
}

void MidiEventQueue::clear()
{
    for (auto& buffer : buffers)
        buffer.clear();

    restart();
}

void MidiEventQueue::addEvents (const juce::MidiBuffer& block)
{
    // From position 0 to the end of the block.
    current().addEvents (block, 0, -1, 0);
    restart();
}

int MidiEventQueue::getNextEventPosition()
{
    fetch();
    return eventHeld ? heldPosition : -1;
}

bool MidiEventQueue::nextEventDue (int position, juce::MidiMessageMetadata& event)
{
    fetch();

    if (!eventHeld || heldPosition > position)
        return false;

    event = heldEvent;
    eventHeld = false;
    heldPosition = -1;
    ++iterator;
    hasEvent = iterator != current().cend();
    return true;
}

void MidiEventQueue::advance (int numSamples)
{
    auto& other = buffers[1 - currentIndex];
    other.clear();

    // The buffer is sorted, so the kept events keep their order in the other one.
    for (auto it = iterator; it != current().cend(); ++it)
    {
        const auto event = *it;

        if (event.samplePosition >= numSamples)
            other.addEvent (event.data, event.numBytes, event.samplePosition - numSamples);
    }

    current().clear();
    currentIndex = 1 - currentIndex;
    restart();
}

void MidiEventQueue::restart() noexcept
{
    iterator = current().cbegin();
    hasEvent = iterator != current().cend();
    eventHeld = false;
    heldEvent = {};
    heldPosition = -1;
}

void MidiEventQueue::fetch() noexcept
{
    if (eventHeld || !hasEvent)
        return;

    heldEvent = *iterator;
    heldPosition = heldEvent.samplePosition;
    eventHeld = true;
}
