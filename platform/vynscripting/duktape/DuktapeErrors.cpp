#include "vynscripting/duktape/DuktapeErrors.h"

#include "vynscripting/duktape/DuktapeHeap.h"
#include "vynscripting/duktape/DuktapeValues.h"
#include "vynscripting/InternalErrorException.h"
#include "vynscripting/ParameterErrorException.h"

#include <duktape.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>
#include <sstream>
#include <string_view>
#include <utility>

namespace vynscripting::duktape {

namespace {

// What is read of a thrown value; properties of it may be a script's own doing.
struct ThrownValue {
    std::string text;
    std::string stack;
    ScriptPlace place;
};

std::string ReadMember(duk_hthread* heap, char const* name) {
    duk_get_prop_string(heap, -1, name);
    std::string text = duk_is_string(heap, -1) ? ReadUTF8(heap, -1) : std::string();
    duk_pop(heap);
    return text;
}

duk_ret_t ReadThrown(duk_hthread* heap, void* data) {
    auto& thrown = *static_cast<ThrownValue*>(data);
    duk_dup(heap, -1);
    duk_safe_to_string(heap, -1);
    thrown.text = ReadUTF8(heap, -1);
    duk_pop(heap);
    if (!duk_is_error(heap, -1)) {
        thrown.text = "threw " + thrown.text;
        return 0;
    }
    duk_get_prop_string(heap, -1, "lineNumber");
    thrown.place.line = duk_get_int(heap, -1);
    duk_pop(heap);
    thrown.place.file = ReadMember(heap, "fileName");
    thrown.stack = ReadMember(heap, "stack");
    return 0;
}

// One line of a stack, as "f (file:3)"; empty for what happened inside of the engine.
std::string CleanFrame(std::string_view line) {
    constexpr std::string_view kInternal = " internal";
    if (line.ends_with(kInternal))
        return {};
    constexpr std::string_view kNative = "() native";
    std::size_t const native = line.rfind(kNative);
    if (native != std::string_view::npos)
        return std::string(line.substr(0, native)) + "(native)";
    std::size_t const end = line.rfind(')');
    return std::string(line.substr(0, end != std::string_view::npos ? end + 1 : line.size()));
}

// The engine writes what was thrown, which may have several lines, and then the calls.
std::string CleanStack(std::string const& stack) {
    constexpr std::string_view kFrame = "    at ";
    std::istringstream lines(stack);
    std::string cleaned;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(kFrame))
            continue;
        std::string const frame = CleanFrame(std::string_view(line).substr(kFrame.size()));
        if (!frame.empty())
            cleaned += (cleaned.empty() ? "" : "\n") + frame;
    }
    return cleaned;
}

std::string DescribeLimit(DuktapeHeap const& heap, bool isTimeUp) {
    std::ostringstream text;
    if (isTimeUp)
        text << "RangeError: the script did not come to an end within " << heap.GetLimits().seconds << " seconds";
    else
        text << "RangeError: the script needs more than " << (heap.GetLimits().memoryBytes >> 20) << " MiB of memory";
    return text.str();
}

// A text that the script itself has evaluated bears a name of the engine's, which tells nobody anything: then the
// innermost line of the script counts.
ScriptPlace ChoosePlace(ScriptPlace const& thrown, ScriptPlace const& fallback, std::string const& stack) {
    if (thrown.line <= 0 || thrown.file.empty())
        return fallback;
    if (thrown.file == fallback.file)
        return thrown;
    std::string const frame = " (" + fallback.file + ":";
    std::size_t const found = stack.find(frame);
    int line = 0;
    if (found != std::string::npos)
        line = std::atoi(stack.c_str() + found + frame.size());
    return line > 0 ? ScriptPlace{fallback.file, line} : thrown;
}

bool TellsOfMemory(std::string const& text) {
    constexpr char const* kTexts[] = {"alloc failed", "std::bad_alloc", "error in error handling"};
    return std::any_of(std::begin(kTexts), std::end(kTexts),
                       [&](char const* sought) { return text.find(sought) != std::string::npos; });
}

} // namespace

bool CatchFailure(std::function<void()> const& call, CallFailure& failure) {
    try {
        call();
        return false;
    } catch (ParameterErrorException const&) {
        failure = {DUK_ERR_TYPE_ERROR, "refuses: what it stands for has gone, or an argument is of another class"};
    } catch (InternalErrorException const&) {
        failure = {DUK_ERR_ERROR, "could not be called"};
    } catch (std::bad_alloc const&) {
        failure = {DUK_ERR_RANGE_ERROR, "ran out of memory"};
    } catch (std::exception const& error) {
        failure = {DUK_ERR_ERROR, std::string("failed: ") + error.what()};
    } catch (char const* text) {
        failure = {DUK_ERR_ERROR, std::string("failed: ") + (text ? text : "")};
    } catch (...) {
        failure = {DUK_ERR_ERROR, "threw an exception"};
    }
    return true;
}

ScriptError TakeError(DuktapeHeap& heap, ScriptPlace const& fallback) {
    duk_hthread* const context = heap.GetContext();
    bool const wasTimeUp = heap.IsTimeUp();
    heap.StartClockForFailure();
    ThrownValue thrown;
    if (duk_safe_call(context, ReadThrown, &thrown, 1, 1) != DUK_EXEC_SUCCESS && thrown.text.empty())
        thrown.text = "Error: threw what can't be told";
    duk_pop(context);
    // The value may have run for long itself, when it is asked what it is.
    bool const isTimeUp = wasTimeUp || (heap.GetLimits().seconds > 0 && heap.IsTimeUp());
    if (isTimeUp || (heap.HasRefusedMemory() && TellsOfMemory(thrown.text)))
        thrown.text = DescribeLimit(heap, isTimeUp);
    else if (TellsOfMemory(thrown.text))
        thrown.text = "RangeError: the script needs more memory than there is";
    std::string const stack = CleanStack(thrown.stack);
    ScriptPlace const place = ChoosePlace(thrown.place, fallback, stack);
    return ScriptError(thrown.text, place.file, place.line, stack);
}

} // namespace vynscripting::duktape
