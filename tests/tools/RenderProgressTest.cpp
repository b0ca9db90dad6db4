#include "RenderProgress.h"
#include "RenderTestFolder.h"

#include <gtest/gtest.h>

namespace
{
TEST (RenderProgress, DrawsABarAndWipesIt)
{
    std::ostringstream stream;
    {
        RenderProgress progress (stream, true);
        progress.update (0.25);
        EXPECT_NE (stream.str().find ("\rrendering [##########..............................]  25%"),
                   std::string::npos)
            << stream.str();
        progress.update (1.0);
        EXPECT_NE (stream.str().find ("[########################################] 100%"), std::string::npos)
            << stream.str();
        progress.finish();
    }
    // The line ends blank, with the cursor at its start.
    const auto text = stream.str();
    const auto lastLine = text.substr (text.rfind ('\r', text.size() - 2));
    EXPECT_EQ (lastLine.find_first_not_of ("\r "), std::string::npos);
}

TEST (RenderProgress, DisabledWritesNothing)
{
    std::ostringstream stream;
    RenderProgress progress (stream, false);
    progress.update (0.5);
    progress.update (1.0);
    progress.finish();
    EXPECT_TRUE (stream.str().empty());
}

TEST (RenderCommand, StopRequestEndsTheRunWithoutFiles)
{
    RenderTestFolder folder;
    RenderCommand::requestStop();
    const auto stopped = folder.run ({ "out.wav", "--plot", "plot.png", "--save-state", "s.state" });
    EXPECT_EQ (stopped.code, 130);
    EXPECT_EQ (stopped.err, "vantrice-render: interrupted\n");
    EXPECT_TRUE (folder.listFiles().isEmpty());

    // The request is used up: the next run goes through.
    const auto next = folder.run ({ "-q", "out.wav" });
    EXPECT_EQ (next.code, 0) << next.err;
    EXPECT_EQ (folder.listFiles(), juce::StringArray ("out.wav"));
}
} // namespace
