#pragma once

#include "skin/BasePluginEditor.h"
#include "support/PluginHarness.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A started plug-in with its editor open, as a host has it: the first open made the editor, the wrapper
    shows it, and the values have reached the controls. */
struct EditorHarness : PluginHarness
{
    EditorHarness()
    {
        wrapper.reset (plugin->createEditor());
        editor = plugin->getEditorComponent();
        pump();
    }

    ~EditorHarness() { wrapper.reset(); }

    /** Runs the message loop a while: deferred updates, async calls, timers. */
    static void pump (int milliseconds = 30)
    {
        juce::MessageManager::getInstance()->runDispatchLoopUntil (milliseconds);
    }

    template <typename ControlClass>
    ControlClass& control (const juce::String& name) const
    {
        auto* found = dynamic_cast<ControlClass*> (BasePluginEditor::findComponentByName (*editor, name));
        jassert (found != nullptr);
        return *found;
    }

    /** The editor as it would be drawn on a screen of `scale` pixels per point. */
    juce::Image snapshot (float scale = 1.0f) const
    {
        return editor->createComponentSnapshot (editor->getLocalBounds(), true, scale);
    }

    std::unique_ptr<juce::AudioProcessorEditor> wrapper;
    BasePluginEditor* editor = nullptr;
};
