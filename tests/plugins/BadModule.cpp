#include "plugins/FixtureController.h"

#include <atomic>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

// Compiled once for each module that does harm to whoever opens it; the build says in VYN_BAD_DEED which it does. All
// else in it is a fixture plug-in that works.

using namespace vynfixtures;

namespace vynfixtures {

ModuleTraits const kModuleTraits{VYN_FIXTURE_NUMBER, false, 1};

}

/// Nobody has it.
extern "C" void VynFixtureSymbolOfNobody();

namespace {

constexpr std::string_view kDeed = VYN_BAD_DEED;
constexpr std::chrono::milliseconds kSoon{40};
constexpr char const* kMark = "VYN_FIXTURE_MARK";

// Of the protocol of a scan's children, which a module has no business to know.
constexpr char kFiledFrame = 5;
constexpr char kFilterFrame = 6;
constexpr char kDoneFrame = 9;
constexpr char const* kOthers = R"(<proplist version="1"><int key="num_plugin_infos">1</int><list key="plugin_info0">
    <text key="locator">3:/other.vst3</text><int key="type">3</int><bool key="enabled">true</bool></list></proplist>)";

std::atomic<bool> volatile theEndOfTheLoop{false}; ///< nobody sets it

[[noreturn]] void Crash() {
    std::raise(SIGSEGV);
    std::abort();
}

int FillStack(int depth) {
    char volatile frame[4096];
    frame[0] = 1;
    return depth == 0 ? 0 : FillStack(depth - 1) + frame[0];
}

[[noreturn]] void FillMemory() {
    constexpr std::size_t kPiece = std::size_t{16} << 20;
    while (true)
        std::memset(std::malloc(kPiece), 1, kPiece);
}

void Print(std::size_t bytes) {
    std::vector<char> const text(65536, 'x');
    for (std::size_t printed = 0; printed < bytes; printed += text.size())
        if (::write(STDOUT_FILENO, text.data(), text.size()) < 0)
            return;
}

void SleepForEver() {
    std::this_thread::sleep_for(std::chrono::hours(24));
}

void CrashLater() {
    std::thread([] {
        std::this_thread::sleep_for(kSoon);
        Crash();
    }).detach();
}

void LeaveProcess(void (*work)()) {
    if (::fork() != 0)
        return;
    work();
    std::_Exit(0);
}

void StopHost() {
    static pid_t const host = ::getpid();
    LeaveProcess([] {
        std::this_thread::sleep_for(kSoon);
        ::kill(host, SIGSTOP);
    });
}

void LeakDescriptors() {
    constexpr rlim_t kLimit = 64;
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = kLimit;
    ::setrlimit(RLIMIT_NOFILE, &limit);
    while (::open("/dev/null", O_RDONLY | O_CLOEXEC) != -1)
        ;
}

/// What the host's child says to its parent, as if it were the child.
void Speak(std::string const& bytes) {
    constexpr int kMostDescriptors = 64;
    for (int descriptor = STDERR_FILENO + 1; descriptor < kMostDescriptors; ++descriptor) {
        struct stat status {};
        bool const isPipe = ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
        if (isPipe && (::fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_WRONLY)
            while (::write(descriptor, bytes.data(), bytes.size()) > 0 && kDeed == "chatter")
                ;
    }
}

std::string Frame(char kind, std::string const& text) {
    std::string frame;
    for (int place = 0; place < 4; ++place)
        frame += static_cast<char>((text.size() >> (8 * place)) & 0xFF);
    return frame + kind + text;
}

struct StaticObject {
    StaticObject() {
        if constexpr (kDeed == "abort in a static object")
            std::abort();
        if constexpr (kDeed == "throw in a static object")
            throw std::runtime_error("a static object throws");
    }
    ~StaticObject() {
        if constexpr (kDeed == "crash when unloaded")
            Crash();
    }
} const theObject;

constexpr std::pair<std::string_view, void (*)()> kDeedsAtEntry[]{
    {"crash at entry", Crash},
    {"loop",
     [] {
         while (!theEndOfTheLoop)
             ;
     }},
    {"sleep", SleepForEver},
    {"exit", [] { std::exit(0); }},
    {"throw at entry", [] { throw std::runtime_error("the entry point throws"); }},
    {"abort on a thread", [] { std::thread(std::abort).join(); }},
    {"crash on a thread, later", CrashLater},
    {"leave a process", [] { LeaveProcess(SleepForEver); }},
    {"go on in two processes", [] { static_cast<void>(::fork()); }},
    {"leave a process that prints", [] { LeaveProcess([] { Print(SIZE_MAX); }); }},
    {"leave a process that stops the host", StopHost},
    {"leak descriptors", LeakDescriptors},
    {"mark the process", [] { ::setenv(kMark, "1", 1); }},
    {"sleep in a marked process", [] { std::getenv(kMark) ? SleepForEver() : void(); }},
    {"chatter", [] { Speak(Frame(kFilterFrame, std::string(100000, 'x'))); }},
    {"speak of others", [] { Speak(Frame(kFiledFrame, kOthers) + Frame(kDoneFrame, "")), SleepForEver(); }},
    {"fill the stack", [] { FillStack(INT_MAX); }},
    {"fill the memory", FillMemory},
    {"print a megabyte", [] { Print(1 << 20); }},
    {"print without end", [] { Print(SIZE_MAX); }},
    {"read standard input",
     [] {
         while (std::getchar() != EOF)
             ;
     }},
};

void DoDeedAtEntry() {
    for (auto const& [name, deed] : kDeedsAtEntry)
        if (name == kDeed)
            deed();
    if constexpr (kDeed == "miss a symbol")
        VynFixtureSymbolOfNobody();
}

template <class Char, std::size_t N>
void Fill(Char (&field)[N], std::initializer_list<Char> units) {
    for (std::size_t i = 0; i < N; ++i)
        field[i] = units.begin()[i % units.size()];
}

/// Lays what the deed is about over what the fixture's factory says.
class BadFactory final : public IPluginFactory3 {
public:
    tresult PLUGIN_API queryInterface(TUID const id, void** object) override {
        void* ofFixture = nullptr;
        tresult const result = mFixture->queryInterface(id, &ofFixture);
        *object = result == kResultOk ? this : nullptr;
        return result;
    }
    uint32 PLUGIN_API addRef() override { return mFixture->addRef(); }
    uint32 PLUGIN_API release() override { return mFixture->release(); }
    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override { return mFixture->getFactoryInfo(info); }
    tresult PLUGIN_API setHostContext(FUnknown* context) override { return mFixture->setHostContext(context); }
    tresult PLUGIN_API createInstance(FIDString classID, FIDString interfaceID, void** object) override {
        if constexpr (kDeed == "crash when a plug-in is made")
            Crash();
        return mFixture->createInstance(classID, interfaceID, object);
    }

    int32 PLUGIN_API countClasses() override {
        if constexpr (kDeed == "count -1 classes")
            return -1;
        if constexpr (kDeed == "count 2147483647 classes")
            return INT_MAX;
        return kDeed == "have one class twice" ? 2 : mFixture->countClasses();
    }

    tresult PLUGIN_API getClassInfo(int32 index, PClassInfo* info) override {
        tresult const result = mFixture->getClassInfo(Translate(index), info);
        if constexpr (kDeed == "give bad names")
            Fill<char>(info->name, {'\xC3', 'n'});
        return result;
    }
    tresult PLUGIN_API getClassInfo2(int32 index, PClassInfo2* info) override {
        return mFixture->getClassInfo2(Translate(index), info);
    }
    tresult PLUGIN_API getClassInfoUnicode(int32 index, PClassInfoW* info) override {
        tresult const result = mFixture->getClassInfoUnicode(Translate(index), info);
        if constexpr (kDeed == "give bad names") {
            // Halves of surrogate pairs, in the wrong order and without an end.
            Fill<char16>(info->name, {u'N', char16(0xDC00), char16(0xD800)});
            Fill<char16>(info->vendor, {char16(0xD800)});
            Fill<char>(info->subCategories, {'\xFF'});
        }
        return result;
    }

private:
    static int32 Translate(int32 index) { return kDeed == "have one class twice" ? 0 : index; }

    IPluginFactory3* const mFixture = static_cast<IPluginFactory3*>(GetFactory());
};

} // namespace

extern "C" {

SMTG_EXPORT_SYMBOL bool ModuleEntry(void*) {
    DoDeedAtEntry();
    return kDeed != "fail in a marked process" || !std::getenv(kMark);
}

SMTG_EXPORT_SYMBOL bool ModuleExit() {
    return true;
}

SMTG_EXPORT_SYMBOL Steinberg::IPluginFactory* PLUGIN_API GetPluginFactory() {
    static BadFactory factory;
    if constexpr (kDeed == "give no factory")
        return nullptr;
    factory.addRef();
    return &factory;
}

} // extern "C"
