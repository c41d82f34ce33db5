#include "vynaudiofilterhost/presets/PresetData.h"

#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/utility/BinaryText.h"

#include <string_view>
#include <utility>
#include <variant>

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::UTF8String;

namespace {

constexpr char const* kVersion = "Version";
constexpr char const* kType = "Type";
constexpr char const* kParamList = "ParamList";
constexpr char const* kChunkData = "ChunkData";
constexpr char const* kCustomData = "CustomData";
constexpr char const* kFactoryPreset = "FactoryPreset";
constexpr char const* kFactoryIndex = "FactoryIndex";

template <class T>
T Read(vyncore::proplist::PropList const& list, char const* key, T value) {
    list.GetValue(key, value);
    return value;
}

} // namespace

PresetData::PresetData(PropList& list) : mList(&list) {}

PresetData::~PresetData() = default;

float PresetData::GetVersion() const {
    return Read(*mList, kVersion, 0.0f);
}

void PresetData::SetVersion(float version) {
    mList->SetValue(kVersion, version);
    mPresetChanged(*this);
}

PresetData::PresetType PresetData::GetPresetType() const {
    return static_cast<PresetType>(Read<int>(*mList, kType, kPresetTypeParamList));
}

void PresetData::SetPresetType(PresetType type) {
    mList->SetValue(kType, static_cast<int>(type));
    mPresetChanged(*this);
}

void PresetData::GetParamList(std::list<float>& values) const {
    values.clear();
    mList->GetValue(kParamList, values);
}

void PresetData::SetParamList(std::list<float> const& values) {
    mList->SetValue(kParamList, values);
    mPresetChanged(*this);
}

// A chunk may be of many megabytes: its text is decoded where it lies.
bool PresetData::GetChunkData(Bytes& data) const {
    data.clear();
    auto const found = mList->GetValues().find(std::string_view(kChunkData));
    if (found == mList->GetValues().end())
        return false;
    if (auto const* const text = std::get_if<UTF8String>(&found->second))
        return !text->empty() && vyncore::utility::DecodeBinaryDataFromUTF8String(*text, data);
    auto const* const wide = std::get_if<UString>(&found->second);
    return wide && !wide->empty() &&
           vyncore::utility::DecodeBinaryDataFromUTF8String(vyncore::string::UTF16to8(*wide), data);
}

void PresetData::SetChunkData(unsigned char const* data, unsigned long long size) {
    UTF8String text;
    if (!vyncore::utility::EncodeBinaryDataToUTF8String(data, size, text))
        return;
    mList->SetValue(kChunkData, std::move(text));
    mPresetChanged(*this);
}

UString PresetData::GetFactoryPresetName() const {
    return Read(*mList, kFactoryPreset, UString());
}

void PresetData::SetFactoryPresetName(UString const& name) {
    mList->SetValue(kFactoryPreset, name);
    mPresetChanged(*this);
}

int PresetData::GetFactoryIndex() const {
    return Read(*mList, kFactoryIndex, -1);
}

void PresetData::SetFactoryIndex(int index) {
    mList->SetValue(kFactoryIndex, index);
}

PresetData::PropList* PresetData::GetCustomDataSection() {
    return &mList->CreateList(kCustomData);
}

PresetData::PropList const* PresetData::GetCustomDataSection() const {
    return &mList->CreateList(kCustomData);
}

// What WritePropList and ReadPropList would make of the list is its copy, to the bit; and a copy has no depth limit.
void PresetData::SetDataFromExistingPreset(PresetData const& other) {
    *mList = *other.mList;
    mPresetChanged(*this);
}

void PresetData::Clear() {
    mList->Clear();
}

bool PresetData::IsEmpty() const {
    return mList->IsEmpty();
}

bool PresetData::operator==(PresetData const& other) const {
    if (GetVersion() != other.GetVersion() || GetPresetType() != other.GetPresetType())
        return false;
    switch (GetPresetType()) {
    case kPresetTypeParamList:
        return IsParamDataEqual(other);
    case kPresetTypeChunkData:
        return IsChunkDataEqual(other);
    case kPresetTypeFactoryPreset:
        return IsFactoryDataEqual(other);
    case kPresetTypeCustomData:
        return IsCustomDataEqual(other);
    }
    return false;
}

bool PresetData::IsParamDataEqual(PresetData const& other) const {
    std::list<float> values;
    std::list<float> otherValues;
    GetParamList(values);
    other.GetParamList(otherValues);
    return values == otherValues;
}

bool PresetData::IsChunkDataEqual(PresetData const& other) const {
    Bytes data;
    Bytes otherData;
    bool const hasChunk = GetChunkData(data);
    return hasChunk == other.GetChunkData(otherData) && data == otherData;
}

bool PresetData::IsFactoryDataEqual(PresetData const& other) const {
    return GetFactoryPresetName() == other.GetFactoryPresetName();
}

// Lists are equal exactly when the texts are that WritePropList makes of them. Both sections are made before anything
// is compared.
bool PresetData::IsCustomDataEqual(PresetData const& other) const {
    PropList const& section = *GetCustomDataSection();
    PropList const& otherSection = *other.GetCustomDataSection();
    return section == otherSection && IsParamDataEqual(other) && IsChunkDataEqual(other);
}

} // namespace vynaudiofilterhost
