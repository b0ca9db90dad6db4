#include "dsp/Vantrice.h"

// Every format's entry creates the processor here. The frame's second start stage (the plug-in's file
// and folder, the core, the settings and the bank) needs the leaf's virtual operations, so it runs once
// construction is over. A failure leaves the host with no plug-in rather than a half-made one.
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    try
    {
        auto processor = std::make_unique<Vantrice>();
        processor->start();
        return processor.release();
    }
    catch (...)
    {
        return nullptr;
    }
}
