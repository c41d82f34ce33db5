#pragma once

#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/base/smartpointer.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"

#include <string>
#include <vector>

struct HINSTANCE__;

namespace vynbench {

/// A VST3 plug-in without a host around it: the same calls that a filter makes, and nothing kept that the calls do not
/// need. What a host costs is measured against this. Throws std::runtime_error when a call fails.
class BarePlugin {
public:
    /// Loads the module, makes the plug-in of its first audio class, asks what a host has to ask, and activates it.
    explicit BarePlugin(std::string const& path);
    ~BarePlugin();
    BarePlugin(BarePlugin const&) = delete;
    BarePlugin& operator=(BarePlugin const&) = delete;

    /// Points the first bus of each side at these channels, for blocks of that many samples.
    void SetBuffers(float** in, float** out, int numSamples);

    Steinberg::tresult Process() { return mProcessor->process(mData); }

    Steinberg::Vst::IEditController& GetController() const { return *mController; }

private:
    void LoadModule(std::string const& path);
    void MakeObjects();
    void AskParameters();
    void AskBuses();
    void Activate();

    HINSTANCE__* mModule = nullptr;
    Steinberg::IPluginFactory* mFactory = nullptr;
    Steinberg::Vst::IComponent* mComponent = nullptr;
    Steinberg::Vst::IAudioProcessor* mProcessor = nullptr;
    Steinberg::Vst::IEditController* mController = nullptr;
    Steinberg::Vst::ProcessData mData;
    Steinberg::Vst::ProcessContext mContext{};
    Steinberg::Vst::AudioBusBuffers mInput;
    Steinberg::Vst::AudioBusBuffers mOutput;
    vynaudiofilterhost::vst3::ParameterChanges mInputChanges;
    vynaudiofilterhost::vst3::ParameterChanges mOutputChanges;
};

} // namespace vynbench
