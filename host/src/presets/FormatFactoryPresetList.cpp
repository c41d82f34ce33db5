#include "vynaudiofilterhost/presets/FormatFactoryPresetList.h"

#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/StringUtils.h"

#include <cstddef>
#include <ios>
#include <list>
#include <ostream>
#include <set>
#include <utility>

namespace vynaudiofilterhost {

namespace {

using Names = std::set<vyncore::UString>;

constexpr int kSignificantDigits = 8;

// What a row has to be to stand in the table.
struct Shape {
    std::size_t parameters = 0;
    float version = 0.0f;
};

struct ParamPreset {
    bool isOne = false;
    float version = 0.0f;
    std::list<float> values;
};

ParamPreset ReadParamPreset(PresetList const& list, vyncore::UString const& name) {
    ParamPreset read;
    // Null for a name that is no UTF-8 in the list.
    auto const preset = list.GetPreset(name);
    if (!preset || preset->GetPresetType() != PresetData::kPresetTypeParamList)
        return read;
    read.isOne = true;
    read.version = preset->GetVersion();
    preset->GetParamList(read.values);
    return read;
}

bool FindShape(PresetList const& list, Names const& names, Shape& shape) {
    for (auto const& name : names) {
        ParamPreset const preset = ReadParamPreset(list, name);
        if (!preset.isOne)
            continue;
        shape = {preset.values.size(), preset.version};
        return true;
    }
    return false;
}

void WriteHead(std::ostream& out, std::size_t presets, Shape const& shape) {
    out << "const int kNumFactoryPresets = " << presets << ";\n"
        << "const int kNumFactoryParams = " << shape.parameters << ";\n"
        << "\n"
        << "struct PresetData\n"
        << "{\n"
        << "\tchar*\t\tName;\n"
        << "\tfloat\t\tParams[kNumFactoryParams];\n"
        << "};\n"
        << "\n"
        << "PresetData sPresets[kNumFactoryPresets] = {\n";
}

void WriteRow(std::ostream& out, vyncore::UString const& name, ParamPreset const& preset, Shape const& shape) {
    out << " { \"" << vyncore::string::UTF16to8(name) << "\", { ";
    if (!preset.isOne || preset.version != shape.version || preset.values.size() != shape.parameters) {
        out << " ***placeholder***}}\n";
        return;
    }
    char const* before = "  ";
    for (float const value : preset.values) {
        out << before << value << "f";
        before = ", ";
    }
    out << "}}\n";
}

vyncore::UTF8String MakeTable(PresetList const& list) {
    Names names;
    list.GetPresetNames(names);
    Shape shape;
    if (!FindShape(list, names, shape))
        return {};
    vyncore::oUTF8StringStream out;
    out << std::showpoint;
    out.precision(kSignificantDigits);
    WriteHead(out, names.size(), shape);
    char const* before = "\t ";
    for (auto const& name : names) {
        out << before;
        WriteRow(out, name, ReadParamPreset(list, name), shape);
        before = "\t,";
    }
    out << "};\n";
    return out.str();
}

} // namespace

void FormatFactoryPresetList(boost::intrusive_ptr<PresetList> list) {
    boost::intrusive_ptr<PresetList> const presets = std::move(list);
    vyncore::UTF8String const table = presets ? MakeTable(*presets) : vyncore::UTF8String();
    if (!table.empty())
        vyncore::debug::DebugTrace(table);
}

} // namespace vynaudiofilterhost
