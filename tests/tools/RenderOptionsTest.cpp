#include "RenderOptions.h"
#include "RenderError.h"

#include <gtest/gtest.h>

namespace
{
juce::File here (const juce::String& name)
{
    return juce::File::getCurrentWorkingDirectory().getChildFile (name);
}

TEST (RenderOptions, DefaultsWithInputAndOutput)
{
    const auto o = RenderOptions::parse ({ "in.wav", "out.wav" });
    EXPECT_EQ (o.input, here ("in.wav"));
    EXPECT_EQ (o.output, here ("out.wav"));
    EXPECT_FALSE (o.rendersDemo());
    EXPECT_EQ (o.blockSize, 512);
    EXPECT_EQ (o.bitDepth, 32);
    EXPECT_FALSE (o.compensate);
    EXPECT_FALSE (o.quiet);
    EXPECT_FALSE (o.listPresets);
    EXPECT_TRUE (o.parameters.empty());
    EXPECT_TRUE (o.textToPrint.isEmpty());
}

TEST (RenderOptions, OnlyAnOutputRendersTheDemo)
{
    const auto o = RenderOptions::parse ({ "/tmp/out.wav" });
    EXPECT_TRUE (o.rendersDemo());
    EXPECT_EQ (o.output, juce::File ("/tmp/out.wav"));
}

TEST (RenderOptions, EverySettingAndRepeatedParametersInOrder)
{
    const auto o = RenderOptions::parse (
        { "--state",     "s.state",  "--midi-map",    "m.vtccmap",    "--bank",      "b.vtprsb",
          "--preset",    " MPC 60 ", "--preset-file", "p.vtprs",      "--param",     "Left Bits = 8 bits",
          "--midi",      "e.mid",    "--param",       "FX=0.5",       "--block",     "7",
          "--bit-depth", "24",       "--compensate",  "--save-state", "after.state", "--plot",
          "p.png",       "-q",       "in.wav",        "out.wav" });
    EXPECT_EQ (o.stateFile, here ("s.state"));
    EXPECT_EQ (o.midiMapFile, here ("m.vtccmap"));
    EXPECT_EQ (o.bankFile, here ("b.vtprsb"));
    EXPECT_EQ (o.presetName, "MPC 60");
    EXPECT_EQ (o.presetFile, here ("p.vtprs"));
    EXPECT_EQ (o.midiFile, here ("e.mid"));
    ASSERT_EQ (o.parameters.size(), 2u);
    EXPECT_EQ (o.parameters[0].first, "Left Bits");
    EXPECT_EQ (o.parameters[0].second, "8 bits");
    EXPECT_EQ (o.parameters[1].first, "FX");
    EXPECT_EQ (o.parameters[1].second, "0.5");
    EXPECT_EQ (o.blockSize, 7);
    EXPECT_EQ (o.bitDepth, 24);
    EXPECT_TRUE (o.compensate);
    EXPECT_TRUE (o.quiet);
    EXPECT_EQ (o.saveStateFile, here ("after.state"));
    EXPECT_EQ (o.plotFile, here ("p.png"));
    EXPECT_EQ (o.input, here ("in.wav"));
    EXPECT_EQ (o.output, here ("out.wav"));
    EXPECT_EQ (o.getInputFiles().size(), 6);
    EXPECT_EQ (o.getOutputFiles().size(), 3);
}

TEST (RenderOptions, ParameterDoesNotSwallowTheFiles)
{
    const auto o = RenderOptions::parse ({ "--param", "FX=0", "in.wav", "out.wav" });
    ASSERT_EQ (o.parameters.size(), 1u);
    EXPECT_EQ (o.input, here ("in.wav"));
    EXPECT_EQ (o.output, here ("out.wav"));
}

TEST (RenderOptions, ListingNeedsNoFiles)
{
    EXPECT_TRUE (RenderOptions::parse ({ "--list-presets" }).listPresets);
    EXPECT_TRUE (RenderOptions::parse ({ "--help" }).textToPrint.contains ("--list-presets"));
}

struct UsageCase
{
    std::vector<std::string> arguments;
    const char* message;
};

class RenderOptionsUsage : public ::testing::TestWithParam<UsageCase>
{
};

TEST_P (RenderOptionsUsage, IsRefusedWithAUsageError)
{
    try
    {
        RenderOptions::parse (GetParam().arguments);
        FAIL() << "accepted";
    }
    catch (const RenderError& e)
    {
        EXPECT_EQ (e.getCode(), RenderError::usage);
        EXPECT_TRUE (e.getMessage().contains (GetParam().message)) << e.what();
        EXPECT_EQ (std::string (e.what()).find ('\n'), std::string::npos) << e.what();
    }
}

INSTANTIATE_TEST_SUITE_P (
    Table, RenderOptionsUsage,
    ::testing::Values (UsageCase{ {}, "no output file given" },
                       UsageCase{ { "--block", "0", "o.wav" }, "--block" },
                       UsageCase{ { "--block", "-3", "o.wav" }, "--block" },
                       UsageCase{ { "--bit-depth", "8", "o.wav" }, "--bit-depth" },
                       UsageCase{ { "--preset", " ", "o.wav" }, "--preset needs a preset name" },
                       UsageCase{ { "--param", "=0.5", "o.wav" }, "NAME=VALUE" },
                       UsageCase{ { "--param", "FX=", "o.wav" }, "NAME=VALUE" },
                       UsageCase{ { "--state", "", "o.wav" }, "empty file name for --state" },
                       UsageCase{ { "o.txt" }, ".wav" }, UsageCase{ { "--plot", "p.svg", "o.wav" }, ".png" },
                       UsageCase{ { "--midi", "x.wav", "in.wav", "x.wav" }, "refusing to overwrite" },
                       UsageCase{ { "--plot", "o.png", "--save-state", "o.png", "o.wav" },
                                  "two different outputs" },
                       // A name with a line break, plain or as broken UTF-8 decodes it, is shown on one line.
                       UsageCase{ { "o\nut.txt" }, "o?ut.txt" }, UsageCase{ { "o\x8aut.txt" }, ".wav" }));
} // namespace
