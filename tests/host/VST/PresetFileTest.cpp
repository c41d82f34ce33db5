#include "vynaudiofilterhost/VST/src/VSTPresetFile.h"

#include "host/HostTest.h"
#include "vynaudiofilterhost/PluginCounts.h"

#include <bit>
#include <cstring>
#include <limits>
#include <string_view>

using namespace vyntest;
using namespace vynaudiofilterhost::vst;
using namespace std::string_literals;

namespace {

using Bytes = IPresetExchange::Bytes;

std::span<unsigned char const> AsBytes(std::string_view text) {
    return {reinterpret_cast<unsigned char const*>(text.data()), text.size()};
}

std::string AsText(std::span<unsigned char const> bytes) {
    return std::string(bytes.begin(), bytes.end());
}

std::string Number(std::uint32_t number) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += static_cast<char>(number >> shift);
    return text;
}

// A name of that many bytes, with something behind its end.
std::string Name(std::string text) {
    text += '\0';
    text.resize(28, '!');
    return text;
}

std::string Padded(std::string text, std::size_t size) {
    text.resize(size);
    return text;
}

// The effect "Echo" of version 7, 0.5 and -2.
std::string const kParameters = "CcnK\0\0\0\x38"
                                "FxCk\0\0\0\1"
                                "Echo\0\0\0\7\0\0\0\2"s +
                                Padded("Hall", 28) + "\x3F\0\0\0\xC0\0\0\0"s;
std::string const kChunk = "CcnK\0\0\0\x39"
                           "FPCh\0\0\0\1"
                           "Echo\0\0\0\7\0\0\0\2"s +
                           Padded("Hall", 28) + "\0\0\0\5abcde"s;

std::string Head(std::string const& kind, std::uint32_t count, std::uint32_t version = 1, std::uint32_t byteSize = 0) {
    return "CcnK" + Number(byteSize) + kind + Number(version) + "Echo" + Number(7) + Number(count);
}

std::string ParameterProgram(std::string const& name, std::vector<float> const& values) {
    std::string text = Head("FxCk", static_cast<std::uint32_t>(values.size())) + Name(name);
    for (float const value : values)
        text += Number(std::bit_cast<std::uint32_t>(value));
    return text;
}

std::string ChunkProgram(std::string const& name, std::string const& chunk) {
    return Head("FPCh", 2) + Name(name) + Number(static_cast<std::uint32_t>(chunk.size())) + chunk;
}

std::string Bank(std::uint32_t version, std::uint32_t current, std::vector<std::string> const& programs) {
    std::string text = Head("FxBk", static_cast<std::uint32_t>(programs.size()), version);
    text += Padded(Number(current), 128);
    for (std::string const& program : programs)
        text += program;
    return text;
}

std::string FailureOf(std::string const& file, VSTPresetContent& content) {
    char const* const wrong = ParseVSTPresetFile(AsBytes(file), content);
    return wrong ? wrong : "none";
}

std::string FailureOf(std::string const& file) {
    VSTPresetContent content;
    return FailureOf(file, content);
}

std::string NameIn(std::string const& file) {
    VSTPresetContent content;
    std::string const failure = FailureOf(file, content);
    return failure == "none" ? content.name : failure;
}

std::string Made(VSTPresetContent const& content, decltype(&MakeVSTPresetFile) make = MakeVSTPresetFile) {
    Bytes file;
    char const* const wrong = make(content, file);
    return wrong ? wrong : AsText(file);
}

// Every beginning of the file is refused, and what was there before stays.
void ExpectNoBeginningIsTaken(std::string const& file) {
    VSTPresetContent content;
    content.name = "former";
    content.parameters = {1};
    for (std::size_t length = 0; length < file.size(); ++length) {
        SCOPED_TRACE(length);
        // A copy of its own, so that a look beyond its end is one beyond the memory.
        EXPECT_EQ(FailureOf(std::string(file, 0, length), content),
                  length < 4 ? "it is no preset file of a VST 2.x plug-in" : "it is cut short");
        EXPECT_EQ(content.name, "former");
        EXPECT_THAT(content.parameters, ElementsAre(1.0f));
    }
}

TEST(VSTPresetFileTest, ProgramsAreTheBytesOfThePublicForm) {
    VSTPresetContent content;
    ASSERT_EQ(FailureOf(kParameters, content), "none");
    EXPECT_EQ(content.uniqueID, 0x4563686Fu);
    EXPECT_EQ(content.effectVersion, 7u);
    EXPECT_EQ(content.name, "Hall");
    EXPECT_FALSE(content.isChunk);
    EXPECT_THAT(content.parameters, ElementsAre(0.5f, -2.0f));
    EXPECT_TRUE(content.chunk.empty());
    EXPECT_EQ(Made(content), kParameters);
    EXPECT_EQ(Made(content, MakeVSTBankFile), "CcnK\0\0\0\xD4"
                                              "FxBk\0\0\0\2"
                                              "Echo\0\0\0\7\0\0\0\1"s +
                                                  std::string(128, '\0') + kParameters);

    ASSERT_EQ(FailureOf(kChunk, content), "none");
    EXPECT_TRUE(content.isChunk);
    EXPECT_EQ(AsText(content.chunk), "abcde");
    EXPECT_THAT(content.parameters, ElementsAre());
    EXPECT_EQ(content.parameterCount, 2u);
    EXPECT_EQ(Made(content), kChunk);
    // What stands beside the state in another form is not written.
    content.parameters = {1, 2, 3};
    EXPECT_EQ(Made(content), kChunk);
}

TEST(VSTPresetFileTest, FilesThatWereCutShortAnywhereAreRefused) {
    ExpectNoBeginningIsTaken(kParameters);
    ExpectNoBeginningIsTaken(kChunk);
    ExpectNoBeginningIsTaken(Bank(2, 0, {kChunk, kParameters, ChunkProgram("C", "chunk")}));
    EXPECT_FALSE(IsVSTPresetFile(AsBytes("Ccn")));
    EXPECT_FALSE(IsVSTPresetFile(AsBytes("VST3")));
    EXPECT_TRUE(IsVSTPresetFile(AsBytes("CcnK")));
}

TEST(VSTPresetFileTest, CurrentProgramOfABankCounts) {
    std::vector<std::string> const programs{ParameterProgram("A", {0, 1}), ChunkProgram("B", "chunk"),
                                            ParameterProgram("C", {})};
    for (std::uint32_t current = 0; current < 3; ++current) {
        EXPECT_EQ(NameIn(Bank(2, current, programs)), std::string(1, static_cast<char>('A' + current)));
        EXPECT_EQ(NameIn(Bank(1, current, programs)), "A");
        EXPECT_EQ(NameIn(Bank(0, current, programs)), "A");
    }
    std::string const none = "its current program is none of its programs";
    EXPECT_EQ(NameIn(Bank(2, 3, programs)), none);
    EXPECT_EQ(NameIn(Bank(2, 0xFFFFFFFF, programs)), none);
    EXPECT_EQ(NameIn(Bank(1, 0xFFFFFFFF, programs)), "A");
    EXPECT_EQ(NameIn(Bank(1, 0, {})), "it is a bank without programs");
    EXPECT_EQ(NameIn(Bank(2, 0, {programs[0], Bank(2, 0, programs)})), "a program in it is none");
    EXPECT_EQ(NameIn(Bank(2, 0, {programs[0], "RIFF" + programs[1]})), "a program in it is none");
    EXPECT_THAT(NameIn(Head("FBCh", 3) + std::string(128, '\0') + Number(5) + "chunk"), HasSubstr("single programs"));
}

TEST(VSTPresetFileTest, NumbersOfFollowingBytesCountForNothing) {
    for (std::uint32_t const byteSize : {0u, 1u, 56u, 64u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        for (std::string file : {kParameters, kChunk, Bank(2, 1, {kChunk, kParameters})}) {
            file.replace(4, 4, Number(byteSize));
            EXPECT_EQ(NameIn(file), "Hall") << byteSize;
            EXPECT_EQ(NameIn(file + "more"), "Hall") << byteSize;
        }
    }
}

TEST(VSTPresetFileTest, AbsurdCountsTakeNoMoreThanTheBytesThatAreThere) {
    for (std::uint32_t const count : {3u, 0x3FFFFFFFu, 0x40000000u, 0x40000001u, 0x7FFFFFFFu, 0x80000000u, ~0u}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(FailureOf(Head("FxCk", count) + Name("A") + "12345678"), "it is cut short");
        EXPECT_EQ(FailureOf(Head("FPCh", 2) + Name("A") + Number(count) + "12"), "it is cut short");
        EXPECT_EQ(FailureOf(Head("FxBk", count, 2) + std::string(128, '\0') + kChunk + kChunk), "it is cut short");
        // Beside a chunk the count counts nothing.
        EXPECT_EQ(NameIn(Head("FPCh", count) + Name("A") + Number(1) + "1"), "A");
    }
    EXPECT_EQ(FailureOf(Head("FxCk", 0, 3) + Name("A")), "it is of another version");
    EXPECT_EQ(FailureOf(Head("FxBk", 1, 3) + std::string(128, '\0') + kChunk), "it is of another version");
    EXPECT_EQ(FailureOf(Head("FxCK", 0) + Name("A")), "a program in it is none");
}

TEST(VSTPresetFileTest, StatesThatNoPluginCanHaveAreNeitherReadNorWritten) {
    Bytes const former{1, 2, 3};
    Bytes file = former;
    VSTPresetContent content;
    using Limits = std::numeric_limits<float>;
    for (float const value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), Limits::signaling_NaN()}) {
        EXPECT_EQ(FailureOf(ParameterProgram("A", {0, value})), "the value of a parameter is no number");
        content.parameters = {0, value};
        EXPECT_STREQ(MakeVSTPresetFile(content, file), "the value of a parameter is no number");
        EXPECT_STREQ(MakeVSTBankFile(content, file), "the value of a parameter is no number");
    }
    // Of programs that don't count no parameter is looked at.
    EXPECT_EQ(NameIn(Bank(1, 0, {kChunk, ParameterProgram("A", {Limits::infinity()})})), "Hall");

    content.parameters.assign(std::size_t{kMaxParameters} + 1, 0.0f);
    EXPECT_EQ(FailureOf(ParameterProgram("A", content.parameters)), "there are more parameters than any plug-in has");
    EXPECT_STREQ(MakeVSTPresetFile(content, file), "there are more parameters than any plug-in has");
    content.parameters.pop_back();
    EXPECT_EQ(NameIn(Made(content)), "");

    content.isChunk = true;
    EXPECT_STREQ(MakeVSTPresetFile(content, file), "the chunk is empty");
    EXPECT_EQ(FailureOf(ChunkProgram("A", "")), "the chunk is empty");
    // A span that is only counted, never read.
    unsigned char const byte = 0;
    content.chunk = {&byte, kMaxPresetChunkBytes + 1};
    EXPECT_STREQ(MakeVSTPresetFile(content, file), "the chunk is larger than 256 MiB");
    content.chunk = {&byte, 1};
    EXPECT_THAT(MakeVSTBankFile(content, file), HasSubstr("a .fxp file can"));
    EXPECT_EQ(file, former);
}

TEST(VSTPresetFileTest, EveryFiniteValueComesBackBitForBit) {
    using Limits = std::numeric_limits<float>;
    VSTPresetContent content;
    content.uniqueID = 0x80000001;
    content.effectVersion = 0xFFFFFFFF;
    content.parameters = {0.0f, -0.0f, Limits::denorm_min(), -Limits::max(), 0.1f, 1.0f};
    for (std::string const& file : {Made(content), Made(content, MakeVSTBankFile)}) {
        VSTPresetContent read;
        ASSERT_EQ(FailureOf(file, read), "none");
        EXPECT_EQ(read.uniqueID, content.uniqueID);
        EXPECT_EQ(read.effectVersion, content.effectVersion);
        ASSERT_EQ(read.parameters.size(), content.parameters.size());
        EXPECT_EQ(std::memcmp(read.parameters.data(), content.parameters.data(), 6 * sizeof(float)), 0);
    }
}

TEST(VSTPresetFileTest, NamesAreCutInFrontOfACharacterThatDoesNotFit) {
    std::string const most(27, 'a');
    struct Case {
        std::string name;
        std::string kept;
    };
    for (auto const& [name, kept] : {
             Case{"", ""},
             Case{most, most},
             Case{most + "b", most},
             Case{"two\0words"s, "two"},
             Case{most.substr(1) + "\u00E4", most.substr(1)},
             Case{most.substr(2) + "\u00E4", most.substr(2) + "\u00E4"},
             Case{most.substr(3) + "\U0001F39B", most.substr(3)},
             Case{most.substr(1) + "\U0001F39B", most.substr(1)},
             Case{std::string(40, '\xA5'), std::string(27, '\xA5')},
         }) {
        VSTPresetContent content;
        content.name = name;
        EXPECT_EQ(NameIn(Made(content)), kept);
    }
    // A name that fills its field has no end of its own.
    EXPECT_EQ(NameIn(Head("FxCk", 0) + most + "b"), most + "b");
    EXPECT_EQ(NameIn(Head("FxCk", 0) + Name("A")), "A");
}

} // namespace
