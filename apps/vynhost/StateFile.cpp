#include "vynhost/StateFile.h"

#include "vynhost/CommandError.h"
#include "vynhost/InputFile.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IPresetExchange.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include "os/ReplacementFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <list>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynaudiofilterhost::IPresetExchange;
using vynaudiofilterhost::PresetData;
using vyncore::UString;
using vyncore::UTF8String;
using vyncore::proplist::PropList;
using vyncore::string::UpperCase;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;

namespace {

constexpr char const* kUniqueIDKey = "UniqueID";
constexpr char const* kNameKey = "Name";
constexpr char const* kPresetKey = "Preset";

IPresetExchange const* FindExchange(AudioFilter const& filter) {
    return dynamic_cast<IPresetExchange const*>(&filter);
}

std::span<unsigned char const> AsBytes(std::string_view text) {
    return {reinterpret_cast<unsigned char const*>(text.data()), text.size()};
}

std::string Describe(UString const& name, UString const& id) {
    return (name.empty() ? "a plug-in without a name" : UTF16to8(name)) + " (" + UTF16to8(id) + ")";
}

bool HoldsNumbersOnly(PresetData const& preset) {
    std::list<float> values;
    preset.GetParamList(values);
    return std::ranges::all_of(values, [](float value) { return std::isfinite(value); });
}

// A plug-in that says no and yet has the state that it was given has taken it.
bool HasState(AudioFilter const& filter, PresetData const& preset) {
    PropList list;
    PresetData present(list);
    filter.SaveSettings(present);
    return present == preset;
}

} // namespace

void StateFile::Fail(std::string text) const {
    throw CommandError::OfFile(mPath, std::move(text));
}

void StateFile::Read(AudioFilter const& filter) {
    std::string bytes = ReadInputFile(mPath, vyncore::proplist::utils::kMostFileBytes);
    mPreset = std::make_shared<PropList>();
    IPresetExchange const* const exchange = FindExchange(filter);
    if (exchange && exchange->IsPresetFile(AsBytes(bytes)))
        ReadForeign(*exchange, AsBytes(bytes));
    else
        ReadList(filter, std::move(bytes));
    PresetData const preset(*mPreset);
    if (preset.IsEmpty())
        Fail("holds no state");
    if (!HoldsNumbersOnly(preset) || (exchange && !exchange->IsStateWhole(preset)))
        Fail("is damaged, or of another version: the state in it is empty or not whole");
}

void StateFile::ReadForeign(IPresetExchange const& exchange, std::span<unsigned char const> bytes) {
    PresetData preset(*mPreset);
    UString reason;
    if (!exchange.ReadPresetFile(bytes, preset, reason))
        Fail("cannot be used: " + UTF16to8(reason));
}

void StateFile::ReadList(AudioFilter const& filter, std::string bytes) {
    PropList file;
    UString id;
    PropList const* stored = nullptr;
    if (vyncore::proplist::utils::ReadPropList(UTF8String(std::move(bytes)), file) && file.GetValue(kUniqueIDKey, id))
        stored = file.FindList(kPresetKey);
    if (!stored)
        Fail("is no state file");
    UString name;
    file.GetValue(kNameKey, name);
    if (id != filter.GetID())
        Fail("holds a state of " + Describe(name, id) + ", and the plug-in is " +
             Describe(filter.GetDisplayName(), filter.GetID()));
    *mPreset = *stored;
}

void StateFile::Load(AudioFilter& filter) const {
    PresetData const preset(*mPreset);
    if (!filter.LoadSettings(preset))
        Fail("holds a state in another form than " + UTF16to8(filter.GetDisplayName()) + " takes");
    IPresetExchange const* const exchange = FindExchange(filter);
    if (exchange && !exchange->WasStateTaken() && !HasState(filter, preset))
        Fail("was refused by " + UTF16to8(filter.GetDisplayName()));
}

std::optional<UString> StateFile::FindForeignExtension(IPresetExchange const* exchange) const {
    std::string const own = std::filesystem::path(mPath).extension().string();
    for (UString const& extension : exchange ? exchange->GetPresetFileExtensions() : std::vector<UString>()) {
        if (UpperCase(UTF8to16(own)) == UpperCase(u"." + extension))
            return extension;
    }
    return std::nullopt;
}

void StateFile::Capture(AudioFilter const& filter) {
    PropList file;
    PropList& list = file.CreateList(kPresetKey);
    PresetData preset(list);
    filter.SaveSettings(preset);
    IPresetExchange const* const exchange = FindExchange(filter);
    if (!HoldsNumbersOnly(preset))
        Fail("cannot be written: the plug-in gave values that are no numbers");
    if (preset.IsEmpty() || (exchange && !exchange->IsStateWhole(preset)))
        Fail("cannot be written: the plug-in gave no state");
    if (std::optional<UString> const extension = FindForeignExtension(exchange)) {
        CaptureForeign(*exchange, preset, *extension);
    } else {
        file.SetValue(kUniqueIDKey, filter.GetID());
        file.SetValue(kNameKey, filter.GetDisplayName());
        mContent = vyncore::proplist::utils::WritePropList(file);
    }
    if (mContent.size() > vyncore::proplist::utils::kMostFileBytes)
        Fail("cannot be written: the plug-in's state is too large");
}

void StateFile::CaptureForeign(IPresetExchange const& exchange, PresetData const& preset, UString const& extension) {
    IPresetExchange::Bytes bytes;
    UString reason;
    if (!exchange.WritePresetFile(preset, extension, bytes, reason))
        Fail("cannot be written: " + UTF16to8(reason));
    mContent.assign(bytes.begin(), bytes.end());
}

void StateFile::Write() const {
    try {
        os::ReplacementFile file(mPath);
        if (!file.Write(mContent))
            Fail("could not be written: the disk takes no more");
        file.Commit();
    } catch (CommandError const&) {
        throw;
    } catch (std::runtime_error const& error) {
        Fail(error.what());
    }
}

} // namespace vynhost
