#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

class BasePluginEditor;

/** What a host gets when it opens the plug-in's window: a thin editor in front of the one persistent
    editor, which it shows and takes the size of. Closing the window deletes the wrapper, which only hides
    the editor: everything the editor holds is there again at the next open. */
class AudioProcessorEditorWrapper final : public juce::AudioProcessorEditor
{
public:
    AudioProcessorEditorWrapper (juce::AudioProcessor& owner, BasePluginEditor& editorToShow);
    ~AudioProcessorEditorWrapper() override;

private:
    juce::Component::SafePointer<BasePluginEditor> editor;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AudioProcessorEditorWrapper)
};
