#pragma once

#include "windows/FileDialog.h"

#include <vector>

/** Takes the place of the desktop's file dialog while it lives: each question is kept, and answered at
    once with `answer`, or not at all while `answer` is empty, as a cancelled dialog. */
struct FakeFileDialog
{
    FakeFileDialog()
    {
        FileDialog::setFactory ([this] { return std::make_unique<Dialog> (*this); });
    }
    ~FakeFileDialog() { FileDialog::setFactory ({}); }

    struct Dialog final : FileDialog
    {
        explicit Dialog (FakeFileDialog& ownerToUse)
            : owner (ownerToUse)
        {
        }
        void ask (juce::Component&, const Request& request, Answer chosen) override
        {
            owner.asked.push_back (request);
            if (owner.answer != juce::File())
                chosen (owner.answer);
        }
        FakeFileDialog& owner;
    };

    juce::File answer;
    std::vector<FileDialog::Request> asked;
};
