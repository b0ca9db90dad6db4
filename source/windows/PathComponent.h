#pragma once

#include "windows/FileDialog.h"
#include "windows/TextButtonEx.h"

/** A file's path in a field, with a "Browse" button that chooses an existing file. A path wider than the
    field keeps its start readable and ends in a faded marker. Any text is taken: nothing here checks
    that the file exists. */
class PathComponent : public juce::Component, public juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void pathChanged (PathComponent* source) = 0;
    };

    PathComponent();
    ~PathComponent() override;

    /** Nothing for the path on show; otherwise shows it and, if `notify`, tells the listeners. */
    void setPath (const juce::String& text, bool notify);
    const juce::String& getPath() const noexcept { return path; }
    /** The browse dialog's filter, as "*.a; *.b". */
    void setWildcards (const juce::String& text) { wildcards = text; }
    const juce::String& getWildcards() const noexcept { return wildcards; }
    void addListener (Listener* listener);
    void removeListener (Listener* listener);

    TextButtonEx& getBrowseButton() noexcept { return *browseButton; }
    juce::Rectangle<int> getFieldArea() const noexcept { return fieldArea; }

    void lookAndFeelChanged() override;
    void resized() override;
    void paint (juce::Graphics& g) override;
    void enablementChanged() override;
    void childBoundsChanged (juce::Component* child) override;
    void buttonClicked (juce::Button* button) override;

private:
    void measure();

    juce::String path;
    juce::Rectangle<int> fieldArea, textArea;
    std::unique_ptr<TextButtonEx> browseButton;
    juce::Font font;
    int buttonGap = 0;
    int pathWidth = 0, markerWidth = 0;
    const juce::String marker{ "[...]" };
    juce::String dialogTitle, initialFile;
    juce::String wildcards;
    juce::Array<Listener*> listeners;
    std::unique_ptr<FileDialog> dialog;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PathComponent)
};
