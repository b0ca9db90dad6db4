#include "skin/AudioProcessorEditorWrapper.h"

#include "skin/BasePluginEditor.h"

AudioProcessorEditorWrapper::AudioProcessorEditorWrapper (juce::AudioProcessor& owner,
                                                          BasePluginEditor& editorToShow)
    : juce::AudioProcessorEditor (owner)
    , editor (&editorToShow)
{
    setSize (editorToShow.getWidth(), editorToShow.getHeight());
    editorToShow.setTopLeftPosition (0, 0);
    editorToShow.setVisible (true);
    addAndMakeVisible (editorToShow);
}

AudioProcessorEditorWrapper::~AudioProcessorEditorWrapper()
{
    // A host that lets the processor go first has had the editor deleted under the wrapper already.
    if (editor == nullptr)
        return;
    editor->setVisible (false);
    removeChildComponent (editor.getComponent());
}
