#include "vyncore/utility/Guid.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using vyncore::utility::Guid;

Guid const kGuid(0xEB0FED8B, 0x7841, 0x4F2B, {0xA6, 0x55, 0xD8, 0xCD, 0xDE, 0xA9, 0xF4, 0x65});

TEST(GuidTest, TextAndPartsAreInverse) {
    EXPECT_EQ(kGuid.AsString(), u"EB0FED8B-7841-4F2B-A655-D8CDDEA9F465");
    EXPECT_EQ(Guid(u"EB0FED8B-7841-4F2B-A655-D8CDDEA9F465"), kGuid);
    EXPECT_EQ(Guid::StringToGUID(u"{eb0fed8b-7841-4f2b-a655-d8cddea9f465}"), kGuid);
    std::ostringstream stream;
    stream << kGuid;
    EXPECT_EQ(stream.str(), "EB0FED8B-7841-4F2B-A655-D8CDDEA9F465");
}

TEST(GuidTest, BadTextGivesZeros) {
    for (auto const* text :
         {u"", u"{}", u"{", u"}", u"{EB0FED8B-7841-4F2B-A655-D8CDDEA9F465", u"EB0FED8B-7841-4F2B-A655-D8CDDEA9F46",
          u"EB0FED8B-7841-4F2B-A655-D8CDDEA9F4655", u"EB0FED8B-7841-4F2B-A655-D8CDDEA9F46G",
          u"EB0FED8B07841-4F2B-A655-D8CDDEA9F465", u"EB0FED8B-7841-4F2B-A655-D8CDDEA9-465"})
        EXPECT_EQ(Guid(text), Guid()) << Guid(text);
}

TEST(GuidTest, TheFirstPartOrdersBeforeTheOthers) {
    EXPECT_LT(Guid(1, 9, 9, {9}), Guid(2, 0, 0, {}));
    EXPECT_LT(Guid(1, 2, 3, {0, 1}), Guid(1, 2, 3, {1, 0}));
}

} // namespace
