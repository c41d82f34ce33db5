#include "vynaccelerate/AlignedBuffer.h"
#include "vyncore/config/ZString.h"
#include "vyncore/console/CommandRegistry.h"
#include "vyncore/debug/DebugDatabase.h"
#include "vyncore/debug/DebugMonitor.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/filesupport/CompareFileNames.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/threads/MainThreadCalls.h"
#include "vyncore/threads/Threads.h"
#include "vyncore/utility/FileUtils.h"
#include "vyncore/utility/Guid.h"
#include "vyncore/utility/HighPrecisionTime.h"
#include "vyncore/utility/ModuleFunctions.h"
#include "vynmediatypes/AudioBusDescription.h"
#include "vynmediatypes/ChannelMap.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using vyncore::UString;

TEST(CoreApiTest, CallsOfAnotherThreadRunWhereTheQueueIsRun) {
    using namespace vyncore::threads;
    unsigned ranOn = 0;
    std::thread([&ranOn] {
        EXPECT_TRUE(AsyncCallFromMainThread([&ranOn] { ranOn = GetCurrentThreadID(); }, 0));
    }).join();
    auto const due = NextDueNanos();
    ASSERT_TRUE(due);
    EXPECT_LE(*due, vyncore::utility::HighPrecisionTime::GetCurrentTimeStamp());
    EXPECT_NE(GetCallQueueDescriptor(), -1);
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_EQ(ranOn, GetCurrentThreadID());
}

TEST(CoreApiTest, TracesReachTheSinkOfTheApplication) {
    using namespace vyncore::debug;
    std::vector<std::string> lines;
    SetTraceSink([&lines](int, std::string_view tag, std::string_view text) {
        lines.push_back(std::string(tag) + "=" + std::string(text));
    });
    SetTraceTagLevel("Stranger", 6);
    TracePoint point(6, "Stranger");
    DebugTrace(point, [] { return "one"; });
    Trace(0, "Stranger", u"two");
    Trace(7, "Stranger", "too fine");
    DebugTrace("three");
    ResetTraceLevels();
    SetTraceSink({});
    EXPECT_EQ(lines, (std::vector<std::string>{"Stranger=one", "Stranger=two", "debug=three"}));
}

TEST(CoreApiTest, ListsHoldEveryTypeOfValue) {
    vyncore::proplist::PropList list;
    auto const keep = [&list](auto const& value) {
        auto read = value;
        list.SetValue("value", value);
        return list.GetValue("value", read) && read == value;
    };
    EXPECT_TRUE(keep(0.5f) && keep(-2) && keep(3u) && keep(true) && keep(std::string("text")) &&
                keep(UString(u"wide")));
    EXPECT_TRUE(keep(std::list<float>{1.0f, 2.0f}));
    list.CreateList("below").SetValue("deep", 1);
    auto const copy = list;
    EXPECT_EQ(copy, list);
    EXPECT_NE(copy.FindList("below"), nullptr);
}

TEST(CoreApiTest, ValuesOfEveryRoomCanBeMade) {
    vynmediatypes::ChannelMap map;
    map.AddChannel(vynmediatypes::CreateStereoChannelLayout(), 1);
    map.SetChannel(0, 4);
    EXPECT_EQ(map.Find(4), 0);
    EXPECT_TRUE(map == vynmediatypes::ChannelMap(map));
    EXPECT_EQ(vynmediatypes::AudioBusDescription::CreateMono(u"m", {}).GetLayout(),
              vynmediatypes::CreateMonoChannelLayout());

    std::ostringstream stream;
    stream << vyncore::utility::Guid::StringToGUID(u"{eb0fed8b-7841-4f2b-a655-d8cddea9f465}");
    EXPECT_EQ(stream.str(), "EB0FED8B-7841-4F2B-A655-D8CDDEA9F465");

    vynaccelerate::AlignedBuffer buffer(4);
    EXPECT_NE(vynaccelerate::AlignedBuffer(std::move(buffer)).Data(), nullptr);
}

TEST(CoreApiTest, SmallServicesAnswer) {
    using namespace vyncore;
    EXPECT_EQ(ZString("$$$/api/hello=Hello @0", UString(u"you")), u"Hello you");
    EXPECT_EQ(string::UpperCase(string::UTF8to16("a\xC3\xA9")), u"A\u00C9");
    oUTF16StringStream text;
    text << 12 << u' ' << 0.5;
    iUTF16StringStream reader(text.str());
    int whole = 0;
    double real = 0;
    EXPECT_TRUE(reader >> whole >> real);
    EXPECT_EQ(whole + real, 12.5);
    filesupport::File const file(filesupport::Dir(u"/no such folder"), u"file.so");
    EXPECT_FALSE(file.Exists() || utility::FileUtils::FileExists(file.FullPath()));
    EXPECT_EQ(filesupport::CompareFileNames(u"/a/./b", u"/a/b"), 0);
    EXPECT_EQ(utility::GetFunctionPointerFromModuleImpl(nullptr, "x"), nullptr);
    EXPECT_EQ(debug::DebugDatabase::Get().GetInt("api.missing", 3), 3);
    debug::RegisterDebugMonitorCallback("api", [](UTF16StringStream& stream) { stream << "well"; });
    EXPECT_NE(debug::RenderDebugMonitors().find(u"api\nwell\n"), UString::npos);
    debug::UnregisterDebugMonitorCallback("api");
}

TEST(CoreApiTest, AStrangersCommandRuns) {
    class Echo : public vyncore::console::Command {
    public:
        using Command::Command;
        bool Execute(std::vector<UString> const& args, UString& output) override {
            output += args.at(0);
            return true;
        }
    };
    auto& registry = vyncore::console::CommandRegistry::Get();
    EXPECT_TRUE(registry.RegisterCommand(
        "echo", "repeats", [](auto const& name, auto const& help) { return std::make_unique<Echo>(name, help); }));
    UString output;
    EXPECT_TRUE(registry.Execute(u"echo word", output));
    EXPECT_EQ(output, u"word");
    EXPECT_NE(registry.UnregisterCommand("echo"), nullptr);
}

} // namespace
