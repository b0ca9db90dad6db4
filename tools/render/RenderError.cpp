#include "RenderError.h"

RenderError::RenderError (Code codeToUse, const juce::String& message)
    : std::runtime_error (message.toStdString())
    , code (codeToUse)
{
}
