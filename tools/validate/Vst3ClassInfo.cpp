#include "Vst3ClassInfo.h"

#include <pluginterfaces/base/ipluginbase.h>

#include <dlfcn.h>

namespace
{
const char* const audioEffectCategory = "Audio Module Class";

/** The module's binary: Contents/<architecture>-linux/<bundle name>.so. */
juce::File findModuleBinary (const juce::File& bundle)
{
    const auto found = bundle.getChildFile ("Contents").findChildFiles (juce::File::findFiles, true, "*.so");
    return found.isEmpty() ? juce::File() : found.getFirst();
}
} // namespace

Vst3ClassInfo::Vst3ClassInfo (const juce::File& bundle)
{
    const auto binary = findModuleBinary (bundle);
    if (!binary.existsAsFile())
    {
        error = "the bundle holds no module binary";
        return;
    }

    // The host has loaded and entered the module already; this only takes another reference to it.
    auto* handle = dlopen (binary.getFullPathName().toRawUTF8(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (handle == nullptr)
    {
        error = "the module is not loaded";
        return;
    }

    using GetFactory = Steinberg::IPluginFactory* (*) ();
    auto getFactory = reinterpret_cast<GetFactory> (dlsym (handle, "GetPluginFactory"));
    auto* factory = getFactory != nullptr ? getFactory() : nullptr;
    if (factory == nullptr)
        error = "the module has no factory";
    else
    {
        for (Steinberg::int32 i = 0; i < factory->countClasses() && !valid; ++i)
        {
            Steinberg::PClassInfo info;
            if (factory->getClassInfo (i, &info) != Steinberg::kResultOk
                || juce::String (info.category) != audioEffectCategory)
                continue;
            name = juce::String (info.name);
            classId = juce::MemoryBlock (info.cid, sizeof (info.cid));
            valid = true;
        }
        if (!valid)
            error = "the factory has no audio effect class";
        factory->release();
    }
    dlclose (handle);
}
