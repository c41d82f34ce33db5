#include "vynhost/AutomationJSON.h"

#include <nlohmann/json.hpp>

#include <array>
#include <stdexcept>

namespace vynhost {

using nlohmann::json;

namespace {

constexpr int kArrayDepth = 0;
constexpr int kEntryDepth = 1;
constexpr std::array<char const*, 3> kKeys{"seconds", "parameter", "value"};

// Looks at the document while it is parsed, so that what is no automation ends the parsing where it stands.
class EntryWatch {
public:
    explicit EntryWatch(AutomationEntryTaker const& take) : mTake(take) {}

    // Whether the parser is to keep what it just read.
    bool Watch(int depth, json::parse_event_t event, json const& parsed) {
        switch (event) {
        case json::parse_event_t::object_start:
        case json::parse_event_t::array_start:
            Enter(depth, event == json::parse_event_t::array_start);
            return true;
        case json::parse_event_t::value:
            Count(depth);
            return true;
        case json::parse_event_t::object_end:
        case json::parse_event_t::array_end:
            if (depth == kEntryDepth)
                Take(parsed);
            return depth != kEntryDepth;
        default:
            return true;
        }
    }

private:
    void Enter(int depth, bool isArray) {
        if (depth == kArrayDepth && !isArray)
            throw std::runtime_error("is no automation: a JSON document is to be an array of points");
        if (depth > kEntryDepth)
            Fail();
        mValues = 0;
        mEntry += depth == kEntryDepth ? 1 : 0;
    }

    void Count(int depth) {
        mEntry += depth == kEntryDepth ? 1 : 0;
        if (depth == kEntryDepth || ++mValues > kKeys.size())
            Fail();
    }

    void Take(json const& entry) const {
        if (entry.size() != kKeys.size() || mValues != kKeys.size())
            Fail();
        mTake(mEntry, ReadPart(entry, 0), ReadPart(entry, 1), ReadPart(entry, 2));
    }

    std::string ReadPart(json const& entry, std::size_t part) const {
        if (entry.is_object() && !entry.contains(kKeys[part]))
            Fail();
        json const& value = entry.is_object() ? entry.at(kKeys[part]) : entry.at(part);
        if (value.is_string())
            return value.get<std::string>();
        if (!value.is_number())
            Fail();
        return value.dump();
    }

    [[noreturn]] void Fail() const {
        throw std::runtime_error("entry " + std::to_string(mEntry) +
                                 ": a point is [seconds, parameter, value], or an object with these three keys, of "
                                 "numbers and texts");
    }

    AutomationEntryTaker const& mTake;
    std::int64_t mEntry = 0;
    std::size_t mValues = 0; ///< of the entry, so far
};

} // namespace

void ReadAutomationJSON(std::string_view text, AutomationEntryTaker const& take) {
    // The parser takes it for the end.
    if (text.find('\0') != std::string_view::npos)
        throw std::runtime_error("is no JSON document: there is a zero byte in it");
    EntryWatch watch(take);
    try {
        // What comes out is an array without its entries.
        [[maybe_unused]] json const array = json::parse(text, [&](int depth, json::parse_event_t event, json& parsed) {
            return watch.Watch(depth, event, parsed);
        });
    } catch (json::exception const& error) {
        std::string const reason = error.what();
        throw std::runtime_error("is no JSON document: " + reason.substr(reason.find(' ') + 1));
    }
}

} // namespace vynhost
