#include "vynaudiofilterhost/VST/src/VSTPresetFile.h"

#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST/src/BigEndian.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>
#include <utility>

namespace vynaudiofilterhost::vst {

using Span = std::span<unsigned char const>;
using Bytes = IPresetExchange::Bytes;

namespace {

constexpr std::string_view kMagic = "CcnK";
constexpr std::string_view kParameterProgram = "FxCk";
constexpr std::string_view kChunkProgram = "FPCh";
constexpr std::string_view kProgramBank = "FxBk";
constexpr std::string_view kChunkBank = "FBCh";
constexpr std::uint32_t kProgramVersion = 1;
constexpr std::uint32_t kBankVersion = 2; ///< the first that names the current program, and the last that there is
constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kKindPlace = 8;
constexpr std::size_t kHeadBytes = 28;
constexpr std::size_t kUncountedBytes = 8; ///< of a record, ahead of what its number of following bytes counts
constexpr std::size_t kNameBytes = 28;
constexpr std::size_t kBankBytes = 128;

constexpr char const* kCutShort = "it is cut short";

std::string_view TextAt(Span bytes, std::size_t place, std::size_t size) {
    return {reinterpret_cast<char const*>(bytes.data()) + place, size};
}

std::uint32_t NumberAt(Span bytes, std::size_t place) {
    return ReadBigEndian<std::uint32_t>(bytes.subspan(place));
}

// Cuts the first `size` bytes off; false when there are fewer.
bool TakePart(Span& rest, std::uint64_t size, Span& part) {
    if (size > rest.size())
        return false;
    part = rest.first(static_cast<std::size_t>(size));
    rest = rest.subspan(part.size());
    return true;
}

struct Head {
    std::string_view kind;
    std::uint32_t version = 0;
    std::uint32_t uniqueID = 0;
    std::uint32_t effectVersion = 0;
    std::uint32_t count = 0;
};

struct Program {
    Head head;
    Span name;
    Span state;
};

char const* TakeHead(Span& rest, Head& head) {
    Span part;
    if (!TakePart(rest, kHeadBytes, part))
        return kCutShort;
    if (!IsVSTPresetFile(part))
        return "a program in it is none";
    head = {TextAt(part, kKindPlace, kNumberBytes), NumberAt(part, 12), NumberAt(part, 16), NumberAt(part, 20),
            NumberAt(part, 24)};
    return head.version > kBankVersion ? "it is of another version" : nullptr;
}

char const* TakeProgram(Span& rest, Program& program) {
    if (char const* const wrong = TakeHead(rest, program.head))
        return wrong;
    bool const isChunk = program.head.kind == kChunkProgram;
    if (!isChunk && program.head.kind != kParameterProgram)
        return "a program in it is none";
    Span size;
    if (!TakePart(rest, kNameBytes, program.name) || (isChunk && !TakePart(rest, kNumberBytes, size)))
        return kCutShort;
    std::uint64_t const bytes = isChunk ? NumberAt(size, 0) : std::uint64_t{program.head.count} * kNumberBytes;
    return TakePart(rest, bytes, program.state) ? nullptr : kCutShort;
}

// All of them are walked, so that a bank that was cut short anywhere shows.
char const* FindCurrentProgram(Span rest, Program& current) {
    Head bank;
    Span section;
    if (char const* const wrong = TakeHead(rest, bank))
        return wrong;
    if (!TakePart(rest, kBankBytes, section))
        return kCutShort;
    std::uint32_t const wanted = bank.version < kBankVersion ? 0 : NumberAt(section, 0);
    if (wanted >= bank.count)
        return bank.count == 0 ? "it is a bank without programs" : "its current program is none of its programs";
    for (std::uint32_t index = 0; index < bank.count; ++index) {
        Program program;
        if (char const* const wrong = TakeProgram(rest, program))
            return wrong;
        if (index == wanted)
            current = program;
    }
    return nullptr;
}

char const* FindProgram(Span bytes, Program& program) {
    if (!IsVSTPresetFile(bytes))
        return "it is no preset file of a VST 2.x plug-in";
    std::string_view const kind =
        bytes.size() < kKindPlace + kNumberBytes ? std::string_view() : TextAt(bytes, kKindPlace, kNumberBytes);
    if (kind == kChunkBank)
        return "it is a bank in one chunk, and only single programs can be taken";
    return kind == kProgramBank ? FindCurrentProgram(bytes, program) : TakeProgram(bytes, program);
}

char const* CheckChunk(Span chunk) {
    if (chunk.empty())
        return "the chunk is empty";
    return chunk.size() > kMaxPresetChunkBytes ? "the chunk is larger than 256 MiB" : nullptr;
}

char const* CheckParameters(std::vector<float> const& values) {
    if (values.size() > std::size_t{kMaxParameters})
        return "there are more parameters than any plug-in has";
    return std::ranges::all_of(values, [](float value) { return std::isfinite(value); })
               ? nullptr
               : "the value of a parameter is no number";
}

char const* CheckState(VSTPresetContent const& content) {
    return content.isChunk ? CheckChunk(content.chunk) : CheckParameters(content.parameters);
}

std::vector<float> ReadParameters(Span bytes) {
    std::vector<float> values(bytes.size() / kNumberBytes);
    for (std::size_t index = 0; index < values.size(); ++index)
        values[index] = std::bit_cast<float>(NumberAt(bytes, index * kNumberBytes));
    return values;
}

VSTPresetContent ReadContent(Program const& program) {
    VSTPresetContent content;
    content.uniqueID = program.head.uniqueID;
    content.effectVersion = program.head.effectVersion;
    std::string_view const name = TextAt(program.name, 0, kNameBytes);
    content.name = name.substr(0, name.find('\0'));
    content.isChunk = program.head.kind == kChunkProgram;
    content.parameterCount = program.head.count;
    if (content.isChunk)
        content.chunk = program.state;
    else
        content.parameters = ReadParameters(program.state);
    return content;
}

// As much of the name as leaves room for its end. Bytes that are no UTF-8 are cut where they are.
std::string_view CutName(std::string_view name) {
    name = name.substr(0, name.find('\0'));
    if (name.size() < kNameBytes)
        return name;
    std::size_t end = kNameBytes - 1;
    for (std::size_t most = 3; most > 0 && (name[end] & 0xC0) == 0x80; --most)
        --end;
    return name.substr(0, (name[end] & 0xC0) == 0x80 ? kNameBytes - 1 : end);
}

void AppendText(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void AppendHead(Bytes& file, Head const& head, std::size_t recordBytes) {
    AppendText(file, kMagic);
    AppendBigEndian(file, static_cast<std::uint32_t>(recordBytes - kUncountedBytes));
    AppendText(file, head.kind);
    for (std::uint32_t const number : {head.version, head.uniqueID, head.effectVersion, head.count})
        AppendBigEndian(file, number);
}

std::uint32_t CountOf(VSTPresetContent const& content) {
    return content.isChunk ? content.parameterCount : static_cast<std::uint32_t>(content.parameters.size());
}

std::size_t ProgramBytes(VSTPresetContent const& content) {
    return kHeadBytes + kNameBytes +
           (content.isChunk ? kNumberBytes + content.chunk.size() : content.parameters.size() * kNumberBytes);
}

void AppendProgram(Bytes& file, VSTPresetContent const& content) {
    Head const head{content.isChunk ? kChunkProgram : kParameterProgram, kProgramVersion, content.uniqueID,
                    content.effectVersion, CountOf(content)};
    AppendHead(file, head, ProgramBytes(content));
    std::string_view const name = CutName(content.name);
    AppendText(file, name);
    file.resize(file.size() + kNameBytes - name.size());
    if (content.isChunk) {
        AppendBigEndian(file, static_cast<std::uint32_t>(content.chunk.size()));
        file.insert(file.end(), content.chunk.begin(), content.chunk.end());
        return;
    }
    for (float const value : content.parameters)
        AppendBigEndian(file, std::bit_cast<std::uint32_t>(value));
}

} // namespace

bool IsVSTPresetFile(Span bytes) {
    return bytes.size() >= kMagic.size() && TextAt(bytes, 0, kMagic.size()) == kMagic;
}

char const* ParseVSTPresetFile(Span bytes, VSTPresetContent& content) {
    Program program;
    if (char const* const wrong = FindProgram(bytes, program))
        return wrong;
    VSTPresetContent read = ReadContent(program);
    char const* const wrong = CheckState(read);
    if (!wrong)
        content = std::move(read);
    return wrong;
}

char const* MakeVSTPresetFile(VSTPresetContent const& content, Bytes& file) {
    if (char const* const wrong = CheckState(content))
        return wrong;
    Bytes made;
    made.reserve(ProgramBytes(content));
    AppendProgram(made, content);
    file = std::move(made);
    return nullptr;
}

char const* MakeVSTBankFile(VSTPresetContent const& content, Bytes& file) {
    if (content.isChunk)
        return "a .fxb file can't hold this plug-in's single program, which is a chunk; a .fxp file can";
    if (char const* const wrong = CheckState(content))
        return wrong;
    constexpr std::size_t kAhead = kHeadBytes + kBankBytes;
    Bytes made;
    made.reserve(kAhead + ProgramBytes(content));
    AppendHead(made, {kProgramBank, kBankVersion, content.uniqueID, content.effectVersion, 1},
               kAhead + ProgramBytes(content));
    made.resize(kAhead);
    AppendProgram(made, content);
    file = std::move(made);
    return nullptr;
}

} // namespace vynaudiofilterhost::vst
