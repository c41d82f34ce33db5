#include "vynaudiofilterhost/VST3/src/VST3VendorExtension.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using Steinberg::tresult;
using Steinberg::TUID;
using Steinberg::uint32;
using vynaudiofilterhost::vst3::IVirtualAudioFilterSupport;
using vynaudiofilterhost::vst3::IVST3VirtualAudioFilterProcessor;

/// As a plug-in writes it.
class Processor : public IVST3VirtualAudioFilterProcessor {
public:
    tresult PLUGIN_API queryInterface(TUID const id, void** object) override {
        bool const known = Steinberg::FUnknownPrivate::iidEqual(id, IVST3VirtualAudioFilterProcessor::iid);
        *object = known ? this : nullptr;
        return known ? Steinberg::kResultOk : Steinberg::kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

    bool IsVirtualAudioFilterSupported() const override { return true; }
    bool BeginVirtualPass(std::int64_t, std::int64_t) override { return true; }
    bool EndVirtualPass() override { return true; }
    bool GetInputRange(std::int64_t, std::int64_t, std::int64_t&, std::int64_t&) const override { return false; }
    bool InvalidateInputRange(std::int64_t, std::int64_t) override { return false; }
    int GetVirtualLatency() const override { return latency; }
    bool IsOutputRangeReady(std::int64_t, std::int64_t) const override { return true; }

    int latency = 1;
};

TEST(VST3ApiTest, APluginBuildsItsVirtualProcessorAgainstTheLibrary) {
    TUID const published = INLINE_UID(0xF83AD871, 0x25F94500, 0x903A25AA, 0x46A3848C);
    EXPECT_TRUE(Steinberg::FUnknownPrivate::iidEqual(IVST3VirtualAudioFilterProcessor::iid, published));

    Processor made;
    made.latency = 7;
    Processor const copy(made);
    Processor moved(std::move(made)), assigned;
    assigned = copy;
    assigned = std::move(moved);
    void* object = nullptr;
    ASSERT_EQ(assigned.queryInterface(published, &object), Steinberg::kResultOk);
    IVirtualAudioFilterSupport const& support = *static_cast<Processor*>(object);
    EXPECT_EQ(support.GetVirtualLatency(), 7);
}

} // namespace
