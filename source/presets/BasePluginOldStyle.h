#pragma once

#include "frame/BasePlugin.h"
#include "presets/Preset.h"
#include "presets/PresetChanger.h"
#include "presets/PresetGroup.h"
#include "presets/PresetManagerListener.h"

/** The processor layer that makes the plug-in a preset instrument: a fixed row of 128 presets with
    groups laid over it, the selection, the way values move between slots and live parameters, the
    preset and bank files, the host's state chunks and the user settings. */
class BasePluginOldStyle : public BasePlugin, public PresetChanger::Owner
{
public:
    using PresetChanger = ::PresetChanger;
    using PresetManagerListener = ::PresetManagerListener;

    static constexpr int numPresetsInBank = 128;
    static constexpr int currentPresetNumberId = 110000;
    static constexpr int currentPresetNameId = 110001;

    enum StoringMode
    {
        automatic = 0,
        onDemand = 1
    };

    enum ChangingType
    {
        normal = 0,
        silent = 1
    };

    enum PresetsMode
    {
        factoryPresets = 0,
        clearPresets = 1,
        userDefinedPresets = 2
    };

    BasePluginOldStyle (int numParameters, int numPresetParameters, int numOtherParameters);
    ~BasePluginOldStyle() override;

    void initialise() override;

    // Settings branches.
    virtual void readResourcesSettings (const juce::XmlElement& element);
    virtual std::unique_ptr<juce::XmlElement> createResourcesSettingsXml();
    virtual bool hasStoringOption() const;
    virtual bool hasChangingOption() const;

    // File names.
    virtual int getNumOlderPresetExtensions() const;
    virtual juce::String getOlderPresetExtension (int index) const;
    virtual int getNumOlderBankExtensions() const;
    virtual juce::String getOlderBankExtension (int index) const;
    virtual int getNumOlderMapExtensions() const;
    virtual juce::String getOlderMapExtension (int index) const;
    juce::String getPresetExtension() const;
    juce::String getBankExtension() const;
    juce::String getMapExtension() const;
    juce::String getPresetWildcards() const;
    juce::String getBankWildcards() const;
    juce::String getMapWildcards() const;

    // Parameters outside presets (none in this product).
    virtual bool isNotPresetable (const juce::XmlElement& element) const;
    virtual void readNotPresetable (const juce::XmlElement& element);
    virtual std::unique_ptr<juce::XmlElement> createNotPresetableXml();

    // Preset and bank documents.
    virtual bool isPreset (const juce::XmlElement& element) const;
    virtual bool readPresetInto (const juce::XmlElement& element, int index);
    virtual bool readPreset (const juce::XmlElement& element, Preset& preset);
    virtual std::unique_ptr<juce::XmlElement> createPresetXml (int index);
    virtual std::unique_ptr<juce::XmlElement> createPresetXml (const Preset& preset);
    virtual bool isGroup (const juce::XmlElement& element) const;
    virtual bool isBank (const juce::XmlElement& element) const;
    virtual bool readBank (const juce::XmlElement& element);
    virtual std::unique_ptr<juce::XmlElement> createBankXml();
    void clearBank();

    bool loadPresetFile (const juce::File& file, int index);
    bool savePresetFile (const juce::File& file, int index);
    bool loadBankFile (const juce::File& file);
    bool saveBankFile (const juce::File& file);
    bool loadDefaultPresetResource (const juce::String& key);
    bool loadBankResource (const juce::String& key);

    // The row and its groups. Positions are checked: a bad one reads neutral and writes nothing.
    int getNumPresets() const;
    int getNumGroups() const;
    Preset* getPreset (int index) const;
    juce::String getPresetName (int index) const;
    void setPresetName (int index, const juce::String& name);
    juce::String getPresetNameInGroup (int group, int position) const;
    int getGroupOfPreset (int index) const;
    juce::String getGroupName (int group) const;
    void setGroupName (int group, const juce::String& name);
    int getGroupSize (int group) const;
    int getGroupStart (int group) const;
    int getGroupEnd (int group) const;
    int getPresetIndex (int group, int position) const;
    juce::String getBankName() const;
    void movePreset (int from, int to, int fromGroup, int toGroup);
    void movePresetsToGroup (int toGroup, int fromGroup, const juce::SparseSet<int>& selection);
    void moveGroup (int from, int to);
    void insertGroup (int position);
    void removeEmptyGroup (int group);

    // The selection and the way between slots and parameters.
    int getCurrentPreset() const noexcept { return currentPreset.load(); }
    void selectPreset (int index);
    void selectNextPreset();
    void selectPreviousPreset();
    void setCurrentPreset (int index, bool notify);
    void applyCurrentPreset() override;
    void storePreset (int index);
    void copyCurrentPreset();
    void pasteCopiedPreset();
    /** A program change: selects and loads the preset, also when it is the selected one. */
    void programChange (int index);
    void setStoringMode (int mode);
    int getStoringMode() const noexcept { return storingMode.load(); }
    int getChangingType() const noexcept { return changingType.load(); }
    void setChangingType (int type) noexcept { changingType.store (type); }
    void setRecentDirectory (const juce::String& directory);
    juce::String getRecentDirectory() const;
    int getPresetsMode() const noexcept { return presetsMode; }
    void setPresetsMode (int mode) noexcept { presetsMode = mode; }
    juce::String getPresetsFile() const { return presetsFile; }
    void setPresetsFile (const juce::String& file) { presetsFile = file; }
    bool isClipboardFilled() const noexcept { return clipboardFilled; }
    const Preset& getDefaultPreset() const noexcept { return *defaultPreset; }

    void setPresetChanger (PresetChanger* changer) noexcept { presetChanger = changer; }
    PresetChanger* getPresetChanger() const noexcept { return presetChanger; }
    void addPresetManagerListener (PresetManagerListener* listener);
    void removePresetManagerListener (PresetManagerListener* listener);

    void handleEvent (int uid) override;
    void parameterChanged (Parameter* parameter) override;

    // The host's chunks and the user settings.
    void readState (const juce::XmlElement& element) override;
    std::unique_ptr<juce::XmlElement> createStateXml() override;
    void readProgramState (const juce::XmlElement& element) override;
    std::unique_ptr<juce::XmlElement> createProgramStateXml() override;
    void readUserSettings (const juce::XmlElement& element) override;
    std::unique_ptr<juce::XmlElement> createUserSettingsXml() override;

    /** A normalised value as presets store it: six decimals at most, "%.9g". */
    static juce::String formatPresetValue (float value);
    /** A value as the state and the settings store it: "%.9g" of the float widened to double. */
    static juce::String formatStateValue (float value);

protected:
    bool isValidPresetIndex (int index) const noexcept { return index >= 0 && index < numPresetsInBank; }
    /** Applies the rows naming a parameter whose index lies in [firstIndex, endIndex). */
    void readParametersState (const juce::XmlElement& element, int firstIndex, int endIndex);
    void restoreSelection (const Preset* selected);
    static bool writeDocument (const juce::XmlElement& xml, const juce::File& file);

    juce::String bankName{ "Preset Bank" };
    juce::OwnedArray<Preset> presets;
    juce::CriticalSection presetsLock;
    juce::OwnedArray<PresetGroup> groups;
    juce::CriticalSection groupsLock;
    std::unique_ptr<Preset> defaultPreset, clipboardPreset;
    bool clipboardFilled = false;
    std::atomic<int> currentPreset{ 0 };
    const int numParameters, numPresetParameters, numOtherParameters;

    juce::String recentDirectory;
    int presetsMode = factoryPresets;
    juce::String presetsFile;
    std::atomic<int> storingMode{ onDemand };
    std::atomic<int> changingType{ normal };
    PresetChanger* presetChanger = nullptr;
    juce::Array<PresetManagerListener*> presetManagerListeners;

private:
    /** Reads a bank document and applies the selected slot; false if the document is no bank. */
    bool applyBank (const juce::XmlElement& xml);
    bool holdsPresetOfOurs (const juce::XmlElement& bank) const;
    bool loadUserBankAtStart();
    void announceStartValuesAsDefaults();

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BasePluginOldStyle)
};
