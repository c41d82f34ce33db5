#include "vynaudiofilterhost/VST/src/VSTUniqueID.h"

#include <gtest/gtest.h>

namespace {

using namespace vynaudiofilterhost::vst;
using vyncore::UString;

TEST(VSTUniqueIDTest, IDIsTheNumberAndTheTitleOfTheFile) {
    EXPECT_EQ(MakeVSTUniqueID(1517179725, u"/plugins/SimpleMastering.so"), u"2:1517179725 SimpleMastering");
    EXPECT_EQ(MakeVSTUniqueID(3000000001, u"/plugins/Two Words.so"), u"2:3000000001 Two Words");
    EXPECT_EQ(MakeVSTUniqueID(0, u"Echo.so"), u"2:0 Echo");
}

TEST(VSTUniqueIDTest, NumberIsReadWithOrWithoutWhatStandsBeforeTheColon) {
    struct Case {
        char16_t const* id;
        unsigned number;
    };
    for (Case const& row :
         {Case{u"2:1517179725 SimpleMastering", 1517179725}, Case{u"1517179725 SimpleMastering", 1517179725},
          Case{u"2:4294967295 A", 4294967295}, Case{u"2:7", 7}, Case{u"7", 7}, Case{u"2:", 2}, Case{u"", 0},
          Case{u"Echo", 0}, Case{u"2:Echo 5", 0}}) {
        unsigned number = 0;
        ParseVSTUniqueID(row.id, number);
        EXPECT_EQ(number, row.number) << testing::PrintToString(UString(row.id));
    }
}

} // namespace
