#pragma once

#include <juce_core/juce_core.h>

#include <ostream>

/** A one-line progress bar on a terminal, redrawn in place at most ten times a second and wiped when
    the work is done. Disabled, it writes nothing. */
class RenderProgress
{
public:
    static constexpr double minimumSeconds = 30.0; // shorter renders are over before a bar helps

    RenderProgress (std::ostream& stream, bool enabled);
    ~RenderProgress();

    void update (double fraction);
    void finish();

private:
    std::ostream& stream;
    bool enabled;
    bool shown = false;
    double lastDrawn = 0.0;
};
