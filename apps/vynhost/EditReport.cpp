#include "vynhost/EditReport.h"

#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

#include "os/Console.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace vynhost {

using vyncore::string::UTF16to8;

namespace {

std::string ToLine(nlohmann::ordered_json const& document) {
    return document.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

// What a parameter shows at a value.
struct Shown {
    std::string name;
    std::string text;
    std::string label;
    float display = 0.0f;
};

Shown FindShown(vynaudiofilterhost::AudioFilter& filter, int index, float value) {
    auto const info = filter.GetParameterInfo(index);
    if (!info)
        return {"parameter " + std::to_string(index), {}, {}, value};
    // Others answer for the value that they have, which is this one or a newer.
    auto const text =
        info->SupportsStringForArbitraryValues() ? info->GetParameterString(value) : filter.GetParameterString(index);
    return {UTF16to8(info->GetName()), UTF16to8(text), UTF16to8(info->GetLabel()), info->FromNormalized(value)};
}

// Many plug-ins put the unit into the text as well, some give their name as the unit.
std::string DescribeValue(Shown const& shown) {
    std::string const text = shown.text.empty() ? WriteNumber(WidenNumber(shown.display)) : shown.text;
    bool const unit = !shown.label.empty() && shown.label != shown.name;
    return unit && !text.ends_with(shown.label) ? text + ' ' + shown.label : text;
}

} // namespace

EditReport::EditReport(vynaudiofilterhost::AudioFilter& filter, bool json)
    : mFilter(filter),
      mJSON(json),
      mValueConnection(
          filter.ConnectAutomatedParameterChange([this](int index, float value) { HearValue(index, value); })),
      mGestureConnection(
          filter.ConnectEditingStateChange([this](int index, bool begins) { HearGesture(index, begins); })) {}

void EditReport::HearValue(int index, float value) {
    std::lock_guard const lock(mMutex);
    auto const last =
        std::find_if(mEdits.rbegin(), mEdits.rend(), [&](Edit const& edit) { return edit.index == index; });
    if (last != mEdits.rend() && last->value)
        last->value = value;
    else
        mEdits.push_back({.index = index, .value = value});
}

// A gesture on no parameter in particular tells nothing.
void EditReport::HearGesture(int index, bool begins) {
    std::lock_guard const lock(mMutex);
    if (index >= 0)
        mEdits.push_back({.index = index, .begins = begins});
}

void EditReport::TellOpened(WindowSize size) {
    std::string const id = UTF16to8(mFilter.GetID());
    std::string const name = UTF16to8(mFilter.GetDisplayName());
    if (mJSON)
        Write(ToLine({{"opened", {{"id", id}, {"name", name}, {"width", size.width}, {"height", size.height}}}}));
    else
        Write(OnOneLine(name + "  " + id) + '\n');
}

void EditReport::TellNote(std::string const& text) {
    Write(mJSON ? ToLine({{"note", text}}) : OnOneLine("note: " + text) + '\n');
}

void EditReport::TellFile(char const* kind, std::string const& path) {
    Write(mJSON ? ToLine({{kind, {{"path", path}}}}) : OnOneLine(std::string(kind) + " written: " + path) + '\n');
}

void EditReport::WriteEdits() {
    std::vector<Edit> edits;
    {
        std::lock_guard const lock(mMutex);
        edits.swap(mEdits);
    }
    for (Edit const& edit : edits)
        WriteEdit(edit);
}

void EditReport::WriteEdit(Edit const& edit) {
    if (!mJSON && !IsForPerson(edit))
        return;
    float const value = edit.value ? *edit.value : mFilter.GetParameter(edit.index);
    Shown const shown = FindShown(mFilter, edit.index, value);
    if (!mJSON) {
        Write(OnOneLine(shown.name + ": " + DescribeValue(shown)) + '\n');
        return;
    }
    nlohmann::ordered_json row{{"index", edit.index}, {"name", shown.name}};
    // Where a gesture began is past when this is written.
    bool const told = !edit.begins || !*edit.begins;
    row["value"] = told ? nlohmann::ordered_json(WidenNumber(value)) : nullptr;
    row["display"] = told ? nlohmann::ordered_json(WidenNumber(shown.display)) : nullptr;
    row["text"] = told ? nlohmann::ordered_json(shown.text) : nullptr;
    row["gesture"] = edit.begins ? nlohmann::ordered_json(*edit.begins ? "begin" : "end") : nullptr;
    Write(ToLine({{"edit", std::move(row)}}));
}

bool EditReport::IsForPerson(Edit const& edit) {
    if (!edit.begins) {
        bool const within = mOpenGestures.contains(edit.index);
        if (within)
            mMoved.insert(edit.index);
        return !within;
    }
    if (*edit.begins)
        mOpenGestures.insert(edit.index);
    else
        mOpenGestures.erase(edit.index);
    return mMoved.erase(edit.index) > 0;
}

void EditReport::Write(std::string const& text) {
    mFailed = mFailed || !os::WriteOutput(text);
}

} // namespace vynhost
