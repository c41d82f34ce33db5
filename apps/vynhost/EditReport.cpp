#include "vynhost/EditReport.h"

#include "vynhost/JSONText.h"
#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

#include "os/Clock.h"
#include "os/Console.h"

#include <limits>
#include <utility>

namespace vynhost {

using vyncore::string::UTF16to8;

namespace {

constexpr std::uint64_t kTurnNanos = 15'000'000;
constexpr std::size_t kMostWaiting = 1 << 20;

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
    if (Edit* const edit = FindOrAdd(index))
        edit->value = value;
}

// A gesture on no parameter in particular tells nothing. One that follows another at once continues it.
void EditReport::HearGesture(int index, bool begins) {
    if (index < 0)
        return;
    std::lock_guard const lock(mMutex);
    Edit* const edit = FindOrAdd(index);
    if (!edit)
        return;
    if (!begins)
        edit->ends = true;
    else if (!std::exchange(edit->ends, false))
        edit->begins = true;
}

// Null when there are more than any plug-in has.
EditReport::Edit* EditReport::FindOrAdd(int index) {
    if (auto const found = mPlaces.find(index); found != mPlaces.end())
        return &mEdits[static_cast<std::size_t>(found->second - mTaken)];
    if (mEdits.size() >= kMostWaiting)
        return nullptr;
    mPlaces.emplace(index, mTaken + mEdits.size());
    return &mEdits.emplace_back(Edit{.index = index});
}

std::optional<EditReport::Edit> EditReport::TakeEdit() {
    std::lock_guard const lock(mMutex);
    if (mEdits.empty())
        return std::nullopt;
    Edit const first = mEdits.front();
    mEdits.pop_front();
    mPlaces.erase(first.index);
    ++mTaken;
    return first;
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
    WriteEdits(os::GetMonotonicNanos() + kTurnNanos);
}

void EditReport::WriteAllEdits() {
    WriteEdits(std::numeric_limits<std::uint64_t>::max());
}

// No more than there are now: a plug-in may be quicker than this.
void EditReport::WriteEdits(std::uint64_t deadlineNanos) {
    std::size_t waiting = 0;
    {
        std::lock_guard const lock(mMutex);
        waiting = mEdits.size();
    }
    for (; waiting > 0; --waiting) {
        std::optional<Edit> const edit = TakeEdit();
        if (!edit)
            return;
        WriteEdit(*edit);
        if (os::GetMonotonicNanos() >= deadlineNanos)
            return;
    }
}

void EditReport::WriteEdit(Edit const& edit) {
    if (edit.begins)
        WritePart(edit.index, Kind::kBegin, std::nullopt);
    if (edit.value)
        WritePart(edit.index, Kind::kValue, edit.value);
    if (edit.ends)
        WritePart(edit.index, Kind::kEnd, std::nullopt);
}

void EditReport::WritePart(int index, Kind kind, std::optional<float> told) {
    if (!mJSON && !IsForPerson(index, kind))
        return;
    float const value = told ? *told : mFilter.GetParameter(index);
    Shown const shown = FindShown(mFilter, index, value);
    if (!mJSON) {
        Write(OnOneLine(shown.name + ": " + DescribeValue(shown)) + '\n');
        return;
    }
    nlohmann::ordered_json row{{"index", index}, {"name", shown.name}};
    // Where a gesture began is past when this is written.
    bool const begins = kind == Kind::kBegin;
    row["value"] = begins ? nullptr : nlohmann::ordered_json(WidenNumber(value));
    row["display"] = begins ? nullptr : nlohmann::ordered_json(WidenNumber(shown.display));
    row["text"] = begins ? nullptr : nlohmann::ordered_json(shown.text);
    row["gesture"] = kind == Kind::kValue ? nullptr : nlohmann::ordered_json(begins ? "begin" : "end");
    Write(ToLine({{"edit", std::move(row)}}));
}

bool EditReport::IsForPerson(int index, Kind kind) {
    if (kind == Kind::kValue) {
        bool const within = mOpenGestures.contains(index);
        if (within)
            mMoved.insert(index);
        return !within;
    }
    if (kind == Kind::kBegin)
        mOpenGestures.insert(index);
    else
        mOpenGestures.erase(index);
    return mMoved.erase(index) > 0;
}

void EditReport::Write(std::string const& text) {
    mFailed = mFailed || !os::WriteOutput(text);
}

} // namespace vynhost
