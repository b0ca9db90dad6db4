#include "skin/AudioProcessorEditorWrapper.h"

#include "skin/BasePluginEditor.h"

AudioProcessorEditorWrapper::AudioProcessorEditorWrapper (juce::AudioProcessor& owner,
                                                          BasePluginEditor& editorToShow)
    : juce::AudioProcessorEditor (owner)
    , editor (editorToShow)
{
    setSize (editor.getWidth(), editor.getHeight());
    editor.setTopLeftPosition (0, 0);
    editor.setVisible (true);
    addAndMakeVisible (editor);
}

AudioProcessorEditorWrapper::~AudioProcessorEditorWrapper()
{
    editor.setVisible (false);
    removeChildComponent (&editor);
}
