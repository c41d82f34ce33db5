#pragma once

#include "plugins/FixtureInterfaces.h"
#include "plugins/ModuleState.h"

#include "vynaudiofilterhost/VST3/src/VST3VendorExtension.h"

#include <cstdint>
#include <cstring>

namespace vynfixtures {

/// The vendor's interfaces as a fixture answers them. Each is an object beside the one it belongs to and counts its
/// references there, so that the log shows when the host lets go of it ("releaseVendor").
template <FixtureObject kObject, class... Interfaces>
class VendorPart : public Interfaces... {
public:
    VendorPart(FUnknown& owner, FixtureConfiguration const& configuration)
        : mConfiguration(configuration), mOwner(owner) {}

    tresult PLUGIN_API queryInterface(TUID const id, void** object) override {
        return mOwner.queryInterface(id, object);
    }

    uint32 PLUGIN_API addRef() override { return mOwner.addRef(); }

    uint32 PLUGIN_API release() override {
        uint32 const left = mOwner.release();
        Record(kObject, "releaseVendor");
        return left;
    }

protected:
    FixtureConfiguration const& mConfiguration;

private:
    FUnknown& mOwner;
};

class VendorComponent final
    : public VendorPart<FixtureObject::Component, vynaudiofilterhost::vst3::IVST3TolveVendorSpecificComponent> {
public:
    using VendorPart::VendorPart;

    uint32 PLUGIN_API GetDisplayNameLength() override {
        Record(FixtureObject::Component, "GetDisplayNameLength");
        return mConfiguration.vendorNameLength;
    }

    void PLUGIN_API GetDisplayName(char* buffer) override {
        char const* const name = mConfiguration.vendorName;
        auto const length = std::min<std::size_t>(mConfiguration.vendorNameLength, std::strlen(name));
        *std::copy_n(name, length, buffer) = mConfiguration.vendorNameTerminated ? '\0' : 'x';
    }
};

class VendorController final
    : public VendorPart<FixtureObject::Controller, vynaudiofilterhost::vst3::IVST3TolveVendorSpecificController> {
public:
    using VendorPart::VendorPart;

    void PLUGIN_API SetBrightness(float value, bool flag) override {
        Record(FixtureObject::Controller, "SetBrightness", {flag, {}, value});
    }

    void PLUGIN_API SetBrightnessFlag(bool flag) override {
        Record(FixtureObject::Controller, "SetBrightnessFlag", {flag});
    }

    int32 PLUGIN_API GainFocus(bool flag) override {
        Record(FixtureObject::Controller, "GainFocus", {flag});
        return mConfiguration.vendorFocus;
    }

    int32 PLUGIN_API SetCurrentFocus() override {
        Record(FixtureObject::Controller, "SetCurrentFocus");
        return mConfiguration.vendorFocus;
    }
};

/// Laid out as IVST3VirtualAudioFilterProcessor, whose own code is the host's.
class VendorProcessor final
    : public VendorPart<FixtureObject::Component, FUnknown, vynaudiofilterhost::vst3::IVirtualAudioFilterSupport> {
public:
    using Samples = std::int64_t;
    using VendorPart::VendorPart;
    bool IsVirtualAudioFilterSupported() const override { return Answer("IsVirtualAudioFilterSupported", 0, 0); }
    bool BeginVirtualPass(Samples at, Samples count) override { return Answer("BeginVirtualPass", at, count); }
    bool EndVirtualPass() override { return Answer("EndVirtualPass", 0, 0); }
    bool InvalidateInputRange(Samples at, Samples count) override { return Answer("InvalidateInputRange", at, count); }
    int GetVirtualLatency() const override { return Answer("GetVirtualLatency", 0, 0) ? -1 : -2; }
    bool IsOutputRangeReady(Samples at, Samples count) const override {
        return Answer("IsOutputRangeReady", at, count);
    }

    bool GetInputRange(Samples at, Samples count, Samples& firstInput, Samples& inputCount) const override {
        bool const answer = Answer("GetInputRange", at, count);
        firstInput = answer ? at - 10 : firstInput;
        inputCount = answer ? count + 10 : inputCount;
        return answer;
    }

private:
    bool Answer(char const* name, Samples at, Samples count) const {
        Record(FixtureObject::Component, name, {at, {count}});
        return mConfiguration.vendorAnswer;
    }
};

} // namespace vynfixtures
