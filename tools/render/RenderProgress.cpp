#include "RenderProgress.h"

namespace
{
constexpr int barWidth = 40;
constexpr double redrawMs = 100.0; // ten updates a second look smooth and cost nothing
} // namespace

RenderProgress::RenderProgress (std::ostream& streamToUse, bool shouldBeEnabled)
    : stream (streamToUse)
    , enabled (shouldBeEnabled)
{
}

RenderProgress::~RenderProgress() { finish(); }

void RenderProgress::update (double fraction)
{
    if (!enabled)
        return;
    const double now = juce::Time::getMillisecondCounterHiRes();
    if (shown && now - lastDrawn < redrawMs && fraction < 1.0)
        return;
    lastDrawn = now;
    shown = true;

    const auto clamped = juce::jlimit (0.0, 1.0, fraction);
    const int filled = (int) (clamped * barWidth);
    stream << "\rrendering [" << std::string ((size_t) filled, '#')
           << std::string ((size_t) (barWidth - filled), '.') << "] "
           << juce::String (juce::roundToInt (clamped * 100.0)).paddedLeft (' ', 3) << "%" << std::flush;
}

void RenderProgress::finish()
{
    if (!shown)
        return;
    const size_t lineLength = 20 + barWidth; // the label, the brackets and the percentage
    stream << "\r" << std::string (lineLength, ' ') << "\r" << std::flush;
    shown = false;
}
