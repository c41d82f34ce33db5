#include "CatalogueFixture.h"

#include "vynaudiofilterhost/catalogue/UsageLogging.h"
#include "vyncore/config/UsageLogger.h"

namespace {

using namespace vyntest;
using vyncore::UTF8String;
using vyncore::config::UsageLogger;

std::vector<UTF8String> theRecord;

class Group : public vyncore::config::UsageLoggerGroup {
public:
    void AddString(char const* key, UTF8String const& value) override { theRecord.push_back(key + ("=" + value)); }
    void Add(char const* key, bool const& value) override {
        theRecord.push_back((value ? "+" : "-") + UTF8String(key));
    }
};

class Logger : public UsageLogger {
public:
    std::shared_ptr<vyncore::config::UsageLoggerGroup> OpenGroup(UTF8String const& library, UTF8String const& kind,
                                                                 UTF8String const& name,
                                                                 UTF8String const& argument) override {
        theRecord = {library + "|" + kind + "|" + name + "|" + argument};
        return argument == "no" ? nullptr : std::make_shared<Group>();
    }
};

class UsageLoggingTest : public CatalogueTest {
protected:
    UsageLoggingTest() { UsageLogger::Set(std::make_shared<Logger>()); }
    ~UsageLoggingTest() override { UsageLogger::Set(nullptr); }

    static InfoPointer Make(int category) {
        return new AudioFilterDescriptor({kTechnologyVST3, u"/a"}, u"Größe", u"Vendor", 4000000000u,
                                         AudioFilterCategory{category}, u"3:id", kKind, true);
    }
};

TEST_F(UsageLoggingTest, ARecordSaysWhatTheFilterIs) {
    catalogue.AddAudioFilterDescriptor(Make(kCategoryOfflineProcess));
    LogAudioFilterUsage(boost::intrusive_ptr<AudioFilter>(new AudioFilter(u"3:id", u"shown")), "insert", "argument");
    EXPECT_THAT(theRecord, ElementsAre("vynaudiofilterhost|audiofilter|vynaudiofilterhost_audiofilter|argument",
                                       "version=4000000000", "name=Größe", "vendor=Vendor", "category=OfflineProcess",
                                       "id=3:id", "factory_guid=12345678-0001-0002-0304-05060708090A", "+enabled",
                                       "+synth", "-internal", "usage_context=insert"));
    LogAudioFilterUsage(Make(30), "", "");
    EXPECT_EQ(theRecord.size(), 10u) << "without an empty context";
    EXPECT_EQ(theRecord[4], "category=Internal");
}

TEST_F(UsageLoggingTest, NothingIsSaidWithoutAFilterALoggerOrARecord) {
    theRecord.clear();
    LogAudioFilterUsage(boost::intrusive_ptr<AudioFilter>(new AudioFilter(u"3:unknown", u"")), "", "");
    LogAudioFilterUsage(boost::intrusive_ptr<AudioFilter>(), "", "");
    LogAudioFilterUsage(InfoPointer(), "", "");
    EXPECT_TRUE(theRecord.empty());
    LogAudioFilterUsage(Make(1), "", "no");
    UsageLogger::Set(nullptr);
    LogAudioFilterUsage(Make(1), "", "");
    EXPECT_EQ(theRecord.size(), 1u);
}

} // namespace
