#include "RenderError.h"

namespace
{
// A message quotes what the user typed, which may hold anything: its control characters (a line break
// among them, also one that broken UTF-8 decodes to) are shown as "?", so the message stays one line.
std::string oneLine (const juce::String& message)
{
    std::string line = message.toStdString();
    for (auto& c : line)
        if ((unsigned char) c < 0x20 || c == 0x7F)
            c = '?';
    return line;
}
} // namespace

RenderError::RenderError (Code codeToUse, const juce::String& message)
    : std::runtime_error (oneLine (message))
    , code (codeToUse)
{
}
