// A whole host: looks for plug-ins, plays one on a thread of its own while the main thread goes about its business, and
// keeps the plug-in's state from one run to the next.
//
//     embedding FILES [NAME]
//
// FILES is the folder for what the program keeps, NAME the effect to play, by name or unique ID; without it the first.

#include "guard/OutputGuard.h"
#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/presets/PresetList.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/threads/MainThreadCalls.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace vynaudiofilterhost;
using vyncore::UString;
using vyncore::filesupport::Dir;
using vyncore::filesupport::File;
using vyncore::proplist::PropList;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;
using Clock = std::chrono::steady_clock;

constexpr float kSampleRate = 48000.0f;
constexpr int kBlockSize = 512;
constexpr std::chrono::milliseconds kPlayTime{1000};
constexpr unsigned kSecondsForAModule = 30;
constexpr int kScanned = 42; // no status that a plug-in leaves with by chance

/// Every filter has gone before this does.
struct RunningLibrary {
    RunningLibrary() { Initialize(false); }
    ~RunningLibrary() { Terminate(); }
};

/// What is kept from one run to the next.
struct StoredFiles {
    explicit StoredFiles(UString const& path) : folder(path) {}

    Dir folder;
    File catalogue{folder, PluginModuleInfoManager::GetInstance().GetSettingsFileName()};
    File bans{folder, BannedPluginManager::GetInstance().GetSettingsFileName()};
    File states{folder, u"States.xml"};
};

static void LoadCatalogue(StoredFiles& files) {
    BannedPluginManager::GetInstance().LoadConfiguration(files.bans);
    PluginModuleInfoManager::GetInstance().LoadConfiguration(files.catalogue); // without one, the usual folders
}

static void ScanModule(PluginLocator const& module) {
    boost::intrusive_ptr<PluginModuleScanner> const scanner(new PluginModuleScanner({module}, true, false, false));
    alarm(kSecondsForAModule); // a module that hangs is ended, too
    scanner->BeginScan();
    while (scanner->ContinueScan())
        vyncore::threads::RunDueCalls();
    scanner->EndScan();
    alarm(0);
}

// In the child. A module is banned while it is open: if it takes the process with it, it stays so.
[[noreturn]] static void ScanAll(StoredFiles& files) {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    auto& bans = BannedPluginManager::GetInstance();
    std::vector<PluginLocator> vanished;
    std::vector<PluginLocator> const modules = inventory.CollectPotentialPlugins(true, vanished);
    inventory.RemovePluginLocators(vanished);
    for (PluginLocator const& module : modules) {
        bans.AddBannedPlugin(module);
        bans.SaveConfiguration(files.bans);
        ScanModule(module);
        bans.RemoveBannedPlugin(module);
        inventory.SaveConfiguration(files.catalogue, true);
    }
    bans.SaveConfiguration(files.bans);
    inventory.SaveConfiguration(files.catalogue, true);
    std::_Exit(kScanned); // without what modules would do at the end
}

static int RunChild(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    if (posix_spawnp(&child, argv[0], nullptr, nullptr, argv.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child)
        throw std::runtime_error("the scan can't be started");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

static std::ptrdiff_t CountBans(StoredFiles& files) {
    auto& bans = BannedPluginManager::GetInstance();
    bans.LoadConfiguration(files.bans);
    return std::distance(bans.BannedBegin(), bans.BannedEnd());
}

// In the parent. Each child that dies has banned a module, so the next one comes further.
static void ScanInChildren(StoredFiles& files, std::vector<std::string> const& command) {
    auto before = CountBans(files);
    while (RunChild(command) != kScanned) {
        auto const now = CountBans(files);
        if (now <= before)
            throw std::runtime_error("the scan failed, and not because of a plug-in");
        before = now;
    }
    std::printf("%td modules are banned.\n", before);
}

static UString FindEffect(UString const& name) {
    auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
    auto const found = std::find_if(catalogue.InfoBegin(), catalogue.InfoEnd(), [&](auto const& effect) {
        return name.empty() || effect->GetName() == name || effect->GetUniqueID() == name;
    });
    if (found == catalogue.InfoEnd())
        throw std::runtime_error(name.empty() ? "no effect was found" : "no effect is called " + UTF16to8(name));
    return (*found)->GetUniqueID();
}

static void FitIntoStereoTrack(AudioFilter& filter) {
    // The filter takes the nearest buses that it can do, and the channel maps connect those with the track.
    auto const track = vynmediatypes::AudioBusDescription::CreateStereo(u"main", {});
    filter.SetSampleRate(kSampleRate);
    filter.SetBlockSize(kBlockSize);
    filter.RequestBusConfiguration({track}, {track});
    filter.SetMainTargetBus(track);
    filter.SetUseChannelMap(true);
    filter.SetChannelMap(AudioFilter::BuildBestFitChannelMap(filter.GetInputBuses(), track.GetLayout()),
                         AudioFilter::kDirectionInput);
    filter.SetChannelMap(AudioFilter::BuildBestFitChannelMap(filter.GetOutputBuses(), track.GetLayout()),
                         AudioFilter::kDirectionOutput);
}

static void LoadState(AudioFilter& filter, StoredFiles const& files) {
    PropList stored;
    vyncore::proplist::utils::LoadPropList(files.states.FullPath(), stored, false);
    auto const state = PresetList(stored).GetPreset(filter.GetID());
    if (state && !state->IsEmpty() && !filter.LoadSettings(*state))
        std::fprintf(stderr, "The stored state is of another version of the plug-in, and is passed over.\n");
}

static void SaveState(AudioFilter const& filter, StoredFiles const& files) {
    PropList stored;
    vyncore::proplist::utils::LoadPropList(files.states.FullPath(), stored, false);
    PresetList states(stored);
    states.RemovePreset(filter.GetID());
    filter.SaveSettings(*states.AppendPreset(filter.GetID()));
    if (!vyncore::proplist::utils::SavePropList(files.states, stored))
        throw std::runtime_error("the state can't be written to " + UTF16to8(files.states.FullPath()));
}

/// Plays a saw wave through a filter, from Start to Stop on a thread of its own, and tells the plug-in where it is.
class Player : public IAudioFilterHost {
public:
    explicit Player(AudioFilter& filter) : mFilter(filter) { mFilter.SetAudioFilterHost(this); }
    ~Player() override {
        Stop();
        mFilter.SetAudioFilterHost(nullptr);
    }

    void Start() {
        mFilter.Resume(); // before the first block
        mThread = std::thread([this] { Run(); });
    }

    void Stop() {
        mQuit = true;
        if (!mThread.joinable())
            return;
        mThread.join();
        mFilter.Suspend(); // behind the last one
    }

    bool GetPlaybackState(PlaybackState& state) override {
        state.mSamplePosition = mPosition;
        state.mMusicalPosition = static_cast<double>(mPosition) / double{kSampleRate} * state.mTempo / 60.0;
        state.mIsPlaying = true;
        return true;
    }

    // Of use after Stop.
    float GetPeak() const { return mPeak; }
    vynguard::OutputGuard const& GetGuard() const { return mGuard; }

private:
    // A sound card would call RenderBlock.
    void Run() {
        auto const start = Clock::now();
        while (!mQuit) {
            RenderBlock();
            mPosition += kBlockSize;
            std::this_thread::sleep_until(
                start + std::chrono::duration<double>(static_cast<double>(mPosition) / double{kSampleRate}));
        }
    }

    void RenderBlock() {
        std::generate(mIn.begin(), mIn.end(), [this] { return static_cast<float>(mWave++ % 128) / 128.0f - 0.5f; });
        std::array in{mIn.data(), mIn.data()};
        std::array out{mOut[0].data(), mOut[1].data()};
        ChannelFlags silent;
        mGuard.Run(out.data(), 2, kBlockSize, silent,
                   [&] { mFilter.ProcessWithMapping(in.data(), out.data(), kBlockSize, ChannelFlags(), silent); });
        for (unsigned channel = 0; channel < out.size(); ++channel) {
            for (float const sample : mOut[channel])
                mPeak = silent.Test(channel) ? mPeak : std::max(mPeak, std::abs(sample));
        }
    }

    using Block = std::array<float, kBlockSize>;

    AudioFilter& mFilter;
    std::thread mThread;
    std::atomic<bool> mQuit{false};
    std::atomic<std::int64_t> mPosition{0}; // some plug-ins ask on threads of their own
    vynguard::OutputGuard mGuard;
    Block mIn{};
    std::array<Block, 2> mOut{};
    unsigned mWave = 0;
    float mPeak = 0.0f;
};

// The main loop: it waits for the library's call queue beside whatever else the application waits for.
static void RunMainLoop(Clock::time_point end) {
    pollfd queue{static_cast<int>(vyncore::threads::GetCallQueueDescriptor()), POLLIN, 0};
    while (Clock::now() < end) {
        poll(&queue, 1, 20);
        vyncore::threads::RunDueCalls();
    }
}

static void Play(AudioFilter& filter, StoredFiles const& files) {
    FitIntoStereoTrack(filter);
    LoadState(filter, files);
    Player player(filter);
    auto const start = Clock::now();
    std::printf("%s, first parameter %.2f", UTF16to8(filter.GetDisplayName()).c_str(),
                filter.GetParameterCount() > 0 ? double{filter.GetParameter(0)} : 0.0);
    player.Start();
    RunMainLoop(start + kPlayTime / 2);
    if (filter.GetParameterCount() > 0)
        filter.SetParameterAutomated(0, 0.25f); // heard from the next block on
    RunMainLoop(start + kPlayTime);
    player.Stop();
    SaveState(filter, files);
    std::printf(", %d samples late: peak 0.50 in, %.2f out.\n", filter.GetInitialDelay(), double{player.GetPeak()});
    if (auto const silenced = player.GetGuard().GetReport().silenced; silenced > 0)
        std::printf("%lld blocks were no sound, and were silenced.\n", static_cast<long long>(silenced));
}

int main(int argc, char** argv) try {
    std::vector<std::string> arguments(argv, argv + argc);
    bool const isChild = argc > 2 && arguments[1] == "--scan";
    if (isChild)
        arguments.erase(arguments.begin() + 1);
    if (arguments.size() < 2 || arguments.size() > 3)
        return std::fprintf(stderr, "usage: embedding FILES [NAME]\n"), 2;

    RunningLibrary const library; // makes this thread the main thread
    StoredFiles files(UTF8to16(arguments[1]));
    LoadCatalogue(files);
    if (isChild)
        ScanAll(files);
    ScanInChildren(files, {argv[0], "--scan", arguments[1]});
    LoadCatalogue(files); // what the children have found

    UString const id = FindEffect(arguments.size() == 3 ? UTF8to16(arguments[2]) : UString());
    auto const filter = utility::CreateAudioFilter(id);
    if (!filter)
        throw std::runtime_error(UTF16to8(id) + " can't be made");
    Play(*filter, files);
    return 0;
} catch (std::exception const& error) {
    return std::fprintf(stderr, "embedding: %s\n", error.what()), 1;
} catch (...) { // a plug-in may throw anything
    return std::fprintf(stderr, "embedding: a plug-in threw something\n"), 1;
}
