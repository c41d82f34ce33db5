#include "fuzz/FuzzTargets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace {

using namespace vynfuzz;

// Also without the fuzzer every seed, and every input that once broke something, is tried, and each of them cut short.
TEST(FuzzSeedsTest, SeedsAndTheirBeginningsKeepWhatMustHold) {
    using Target = void (*)(std::uint8_t const*, std::size_t);
    for (auto const& [folder, target] : {std::pair<char const*, Target>{"binary_text", FuzzBinaryText},
                                         std::pair<char const*, Target>{"bus_configuration", FuzzBusConfiguration},
                                         std::pair<char const*, Target>{"channel_map", FuzzChannelMap},
                                         std::pair<char const*, Target>{"property_list", FuzzPropertyList},
                                         std::pair<char const*, Target>{"state_chunk", FuzzStateChunk},
                                         std::pair<char const*, Target>{"preset_file", FuzzPresetFile},
                                         std::pair<char const*, Target>{"vst_preset_file", FuzzVSTPresetFile},
                                         std::pair<char const*, Target>{"inventory_settings", FuzzInventorySettings},
                                         std::pair<char const*, Target>{"midi_file", FuzzMidiFile},
                                         std::pair<char const*, Target>{"ban_list", FuzzBanList},
                                         std::pair<char const*, Target>{"static_ban_list", FuzzStaticBanList}}) {
        int seeds = 0;
        for (auto const& entry : std::filesystem::directory_iterator(std::filesystem::path(VYN_FUZZ_SEEDS) / folder)) {
            std::ifstream file(entry.path(), std::ios::binary);
            std::string const text{std::istreambuf_iterator<char>(file), {}};
            for (std::size_t length = 0; length <= text.size(); ++length)
                target(reinterpret_cast<std::uint8_t const*>(text.data()), length);
            ++seeds;
        }
        EXPECT_GT(seeds, 3) << folder;
    }
}

} // namespace
