#include "vyncore/xml/Parser.h"

#include "vyncore/config/ThrowError.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/xml/Encoding.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using namespace vyncore;
using namespace vyncore::xml;

/// Writes down what it is told.
class Recorder : public AbstractParseHandler {
public:
    void StartElement(UString const& name, Attributes const& attributes) override {
        told += u"(" + name;
        for (auto const& [key, value] : attributes)
            told += u" " + key + u"=" + value;
        told += u":";
    }
    void EndElement(UString const& name) override { told += name + u")"; }
    void Characters(UString const& text) override { told += u"'" + text + u"'"; }

    UString told;
};

TEST(ParserTest, TheHandlerIsToldEverythingInItsOrder) {
    Recorder recorder;
    Parser const parser = GetParser(recorder);
    EXPECT_EQ(parser.ParseText("\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'x'>]><!-- -->\n"
                               "<a c='&#x10A;' b='1\n2'>x&lt;<b/><![CDATA[&y]]><!-- no --><c>z</c></a>\n<?end?>"),
              Parser::kSuccess);
    EXPECT_EQ(recorder.told, u"(a b=1 2 c=\u010A:'x<'(b:b)'&y'(c:'z'c)a)");

    UString const utf16 = u"\xFEFF<\u00E4>\u4E00</\u00E4>";
    for (bool const swapped : {false, true}) {
        UTF8String bytes;
        for (char16_t const unit : utf16) {
            bytes += static_cast<char>(swapped ? unit >> 8 : unit & 0xFF);
            bytes += static_cast<char>(swapped ? unit & 0xFF : unit >> 8);
        }
        recorder.told.clear();
        EXPECT_EQ(parser.ParseText(bytes), Parser::kSuccess);
        EXPECT_EQ(recorder.told, u"(\u00E4:'\u4E00'\u00E4)");
        EXPECT_EQ(parser.ParseText(bytes + "x"), Parser::kMalformed);
    }
}

TEST(ParserTest, OfADocumentThatIsNotWholeTheHandlerIsToldNothing) {
    Recorder recorder;
    for (char const* const text : {"", " ", "<a>", "<a/><b/>", "<a/>x", "x<a/>", "<a>&e;</a>", "<a b='&'/>",
                                   "<a b='1' b='2'/>", "<a>\xC0</a>", "<a>&#0;</a>", "<?xml?>"})
        EXPECT_EQ(GetParser(recorder).ParseText(text), Parser::kMalformed) << text;
    EXPECT_EQ(GetParser(recorder).ParseText(UTF8String("<a/>\0<", 6)), Parser::kMalformed);
    EXPECT_EQ(GetParser(recorder).Parse(u""), Parser::kUnreadable);
    EXPECT_EQ(GetParser(recorder).Parse(u"/dev/zero"), Parser::kUnreadable);
    EXPECT_EQ(recorder.told, u"");
}

TEST(ParserTest, ElementsMayBeNestedDeeperThanCallsCanGo) {
    Recorder recorder;
    UTF8String text;
    for (int level = 0; level < 1000000; ++level)
        text += "<a>";
    EXPECT_EQ(GetParser(recorder).ParseText(text), Parser::kMalformed);
    for (int level = 0; level < 1000000; ++level)
        text += "</a>";
    EXPECT_EQ(GetParser(recorder).ParseText(text), Parser::kSuccess);
    EXPECT_EQ(recorder.told.size(), 5000000u);
}

TEST(ParserTest, AnEncodedTextStandsSoInAStoredList) {
    UString const text = u"/a & b/<\"c'>&amp;";
    EXPECT_EQ(utils::EncodeReservedCharacters(text), u"/a &amp; b/&lt;\"c'&gt;&amp;amp;");
    proplist::PropList list;
    list.SetValue("path", text);
    UString const stored = string::UTF8to16(proplist::utils::WritePropList(list));
    EXPECT_NE(stored.find(utils::EncodeReservedCharacters(text)), stored.npos);
}

TEST(ParserTest, ABrokenContractNamesWhatBrokeIt) {
    try {
        config::ThrowError("$$$/any/key=It is broken!", "inName");
        FAIL();
    } catch (std::invalid_argument const& error) {
        EXPECT_STREQ(error.what(), "It is broken! (inName)");
    }
}

} // namespace
