#include "fuzz/FuzzTargets.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

namespace {

using namespace vynfuzz;

// Also without the fuzzer every seed, and every input that once broke something, is tried, and each of them cut short.
TEST(FuzzSeedsTest, SeedsAndTheirBeginningsKeepWhatMustHold) {
    for (auto const& [folder, target] : {std::pair<char const*, Target*>{"binary_text", FuzzBinaryText},
                                         {"bus_configuration", FuzzBusConfiguration},
                                         {"channel_map", FuzzChannelMap},
                                         {"property_list", FuzzPropertyList},
                                         {"state_chunk", FuzzStateChunk},
                                         {"preset_file", FuzzPresetFile},
                                         {"vst_preset_file", FuzzVSTPresetFile},
                                         {"inventory_settings", FuzzInventorySettings},
                                         {"midi_file", FuzzMidiFile},
                                         {"ban_list", FuzzBanList},
                                         {"static_ban_list", FuzzStaticBanList}}) {
        int seeds = 0;
        for (auto const& entry : std::filesystem::directory_iterator(std::filesystem::path(VYN_FUZZ_SEEDS) / folder)) {
            std::string const text = vyntest::ReadText(entry.path());
            for (std::size_t length = 0; length <= text.size(); ++length)
                target(reinterpret_cast<std::uint8_t const*>(text.data()), length);
            ++seeds;
        }
        EXPECT_GT(seeds, 3) << folder;
    }
}

} // namespace
