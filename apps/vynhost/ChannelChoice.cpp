#include "vynhost/ChannelChoice.h"

#include "vynhost/CommandError.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace vynhost {

namespace {

[[noreturn]] void Fail(std::string const& reason) {
    throw CommandError::WrongUsage("--map: " + reason);
}

// Cuts the text in front of the separator off; all of it when there is none.
std::optional<std::string_view> TakePart(std::optional<std::string_view>& rest, char separator) {
    if (!rest)
        return std::nullopt;
    std::size_t const end = rest->find(separator);
    std::string_view const part = rest->substr(0, end);
    rest = end == std::string_view::npos ? std::nullopt : std::optional(rest->substr(end + 1));
    return part;
}

int ParseTarget(std::string_view text) {
    if (text == "-")
        return -1;
    int target = -1;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), target);
    if (error != std::errc() || end != text.data() + text.size() || target < 0)
        Fail("\"" + std::string(text) + "\" is no channel; write it as in \"in:0,1/out:0,-\"");
    return target;
}

std::vector<int> ParseTargets(std::string_view text) {
    std::vector<int> targets;
    std::optional<std::string_view> rest = text;
    while (auto const part = TakePart(rest, ','))
        targets.push_back(ParseTarget(*part));
    return targets;
}

void CheckOutputs(std::vector<int> targets) {
    std::ranges::sort(targets);
    auto const first = std::ranges::find_if(targets, [](int target) { return target >= 0; });
    auto const twice = std::adjacent_find(first, targets.end());
    if (twice != targets.end())
        Fail("two outputs lead to channel " + std::to_string(*twice));
}

void ParseHalf(std::string_view half, ChannelChoice& choice) {
    bool const input = half.starts_with("in:");
    if (!input && !half.starts_with("out:"))
        Fail("\"" + std::string(half) + "\" begins with neither \"in:\" nor \"out:\"");
    auto& targets = input ? choice.inputs : choice.outputs;
    if (targets)
        Fail(input ? "\"in:\" is given twice" : "\"out:\" is given twice");
    targets = ParseTargets(half.substr(half.find(':') + 1));
}

} // namespace

ChannelChoice ParseChannelChoice(std::string_view text) {
    ChannelChoice choice;
    std::optional<std::string_view> rest = text;
    while (auto const half = TakePart(rest, '/'))
        ParseHalf(*half, choice);
    if (choice.outputs)
        CheckOutputs(*choice.outputs);
    return choice;
}

} // namespace vynhost
