#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** The one way the windows ask the user for a file. It never blocks: the question returns at once and the
    answer comes later on the message thread, only if the user chose a file and only while the component
    that asked still lives. The real dialog is JUCE's asynchronous file chooser (the desktop's own where
    one is installed, else JUCE's); tests put a fake of their own in its place. */
class FileDialog
{
public:
    enum class Mode
    {
        open,
        save
    };

    struct Request
    {
        Mode mode = Mode::open;
        juce::String title;
        juce::File startFolder;
        juce::String patterns;
        bool warnAboutOverwriting = false;
    };

    using Answer = std::function<void (const juce::File& chosen)>;
    using Factory = std::function<std::unique_ptr<FileDialog>()>;

    virtual ~FileDialog() = default;

    /** Asks; `answer` hears the file chosen, later, unless the user cancelled or `owner` has gone. */
    virtual void ask (juce::Component& owner, const Request& request, Answer answer) = 0;

    /** A dialog of the kind the factory makes: the real one unless a test set another. */
    static std::unique_ptr<FileDialog> create();
    /** Sets what `create` makes; an empty factory brings the real dialog back. */
    static void setFactory (Factory factory);
};
