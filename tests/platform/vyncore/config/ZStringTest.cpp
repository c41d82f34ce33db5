#include "vyncore/config/ZString.h"

#include "vyncore/config/Localizer.h"

#include <gtest/gtest.h>

namespace {

using vyncore::UString;
using vyncore::ZString;
using vyncore::config::Localizer;

TEST(LocalizerTest, ShowsTheTranslationElseTheDefault) {
    Localizer& localizer = Localizer::Get();
    EXPECT_EQ(localizer.GetString("$$$/test/Sign=a=\xC3\xA4"), u"a=\u00E4");
    localizer.SetTranslation("test/Sign", u"first");
    localizer.SetTranslation("test/Sign", u"second");
    EXPECT_EQ(localizer.GetString("$$$/test/Sign=default"), u"second");
    EXPECT_EQ(localizer.GetString("$$$/test/Signs=default"), u"default");
    EXPECT_EQ(localizer.GetString("$$$/test/NoDefault"), u"");
    EXPECT_EQ(localizer.GetString("plain=text"), u"plain=text");
}

TEST(ZStringTest, FillsEachMarkOnce) {
    EXPECT_EQ(ZString("$$$/test/Map=In: @0 | Out: @1 | @0", UString(u"@1"), UString(u"B")), u"In: @1 | Out: B | @1");
    EXPECT_EQ(ZString("$$$/test/Open=@0 @1 @ @x @", u"A"), u"A @1 @ @x @");
    EXPECT_EQ(ZString("$$$/test/None=@0"), u"@0");
    UString const a;
    EXPECT_EQ(ZString("$$$/test/Ten=@9@90", a, a, a, a, a, a, a, a, a, UString(u"z")), u"zz0");
}

} // namespace
