#include "windows/FileDialog.h"

namespace
{
FileDialog::Factory& factory()
{
    static FileDialog::Factory made;
    return made;
}

/** JUCE's chooser, kept while it is open: the object must outlive the question. */
class NativeFileDialog final : public FileDialog
{
public:
    void ask (juce::Component& owner, const Request& request, Answer answer) override
    {
        chooser =
            std::make_unique<juce::FileChooser> (request.title, request.startFolder, request.patterns, true);
        int flags = juce::FileBrowserComponent::canSelectFiles;
        if (request.mode == Mode::save)
            flags |= juce::FileBrowserComponent::saveMode
                     | (request.warnAboutOverwriting ? juce::FileBrowserComponent::warnAboutOverwriting : 0);
        else
            flags |= juce::FileBrowserComponent::openMode;
        juce::Component::SafePointer<juce::Component> asker (&owner);
        chooser->launchAsync (flags,
                              [asker, answer] (const juce::FileChooser& chosen)
                              {
                                  const auto file = chosen.getResult();
                                  if (asker != nullptr && file != juce::File() && answer)
                                      answer (file);
                              });
    }

private:
    std::unique_ptr<juce::FileChooser> chooser;
};
} // namespace

std::unique_ptr<FileDialog> FileDialog::create()
{
    if (factory())
        return factory()();
    return std::make_unique<NativeFileDialog>();
}

void FileDialog::setFactory (Factory newFactory) { factory() = std::move (newFactory); }
