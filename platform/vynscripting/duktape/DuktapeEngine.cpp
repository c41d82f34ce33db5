#include "vynscripting/duktape/DuktapeEngine.h"

#include "vyncore/strings/StringUtils.h"
#include "vynscripting/duktape/DuktapeValues.h"
#include "vynscripting/ScriptObject.h"

#include <duktape.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

namespace vynscripting::duktape {

namespace {

// What the engine adds to the language: finalizers, coroutines, its own pointers; strings of any bytes, some of which
// are names of its own insides; a second kind of buffers.
constexpr char const* kNotForScripts[] = {"Duktape", "CBOR", "Buffer"};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The engine makes of malformed bytes what it likes. What can't be read doesn't come back as it was.
void RequireUTF8(std::string_view source, std::string const& file) {
    auto const readable = vyncore::string::UTF16to8(vyncore::string::UTF8to16(source));
    auto const bad = std::ranges::mismatch(source, readable).in1;
    if (bad != source.end())
        throw ScriptError("SyntaxError: the script is not UTF-8", file,
                          1 + static_cast<int>(std::count(source.begin(), bad, '\n')), {});
}

template <class T>
void PushElements(duk_hthread* heap, std::vector<T> const& elements, auto const& push) {
    duk_push_array(heap);
    duk_uarridx_t index = 0;
    for (T const& element : elements) {
        push(element);
        duk_put_prop_index(heap, -2, index++);
    }
}

void PutFunction(duk_hthread* heap, char const* name, duk_c_function function, int arguments) {
    duk_push_c_function(heap, function, arguments);
    duk_push_string(heap, "name");
    duk_push_string(heap, name);
    duk_def_prop(heap, -3, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_FORCE);
    duk_put_global_string(heap, name);
}

} // namespace

DuktapeEngine::DuktapeEngine(ScriptLimits const& limits)
    : mContext(new ScriptContext), mObjects(*mContext), mHeap(limits, *this) {
    Protect([this](duk_hthread* heap) { PutOwnGlobals(heap); });
}

DuktapeEngine::~DuktapeEngine() = default;

void DuktapeEngine::SetPrint(std::function<void(std::string const& line)> print) {
    mPrint = std::move(print);
}

void DuktapeEngine::SetGlobal(char const* name, ScriptValue const& value) {
    Protect([&](duk_hthread* heap) {
        PushValue(heap, value);
        duk_put_global_string(heap, name);
    });
}

void DuktapeEngine::SetGlobalItems(ScriptObjectPtr const& object) {
    Protect([&](duk_hthread* heap) {
        duk_push_global_object(heap);
        mObjects.PutItems(heap, object);
        duk_pop(heap);
    });
}

ScriptValue DuktapeEngine::Run(std::string_view source, std::string const& file) {
    RefuseNesting();
    if (source.starts_with(kByteOrderMark))
        source.remove_prefix(kByteOrderMark.size());
    RequireUTF8(source, file);
    mPlace = {file, 0};
    ScriptValue result;
    Protect([&](duk_hthread* heap) {
        mHeap.StartClock();
        PushUTF8(heap, file);
        duk_compile_lstring_filename(heap, DUK_COMPILE_EVAL | DUK_COMPILE_SHEBANG, source.data(), source.size());
        duk_call(heap, 0);
        result = ReadValue(heap, -1);
        duk_pop(heap);
    });
    return result;
}

void DuktapeEngine::SettlePromises() {
    RefuseNesting();
    Protect([&](duk_hthread* heap) {
        mHeap.StartClock();
        while (mPromises.SettleOne(heap)) {
        }
    });
}

void DuktapeEngine::PushValue(duk_hthread* heap, ScriptValue const& value) {
    struct Pusher {
        DuktapeEngine& engine;
        duk_hthread* heap;

        void operator()(std::monostate) const { duk_push_undefined(heap); }
        void operator()(bool held) const { duk_push_boolean(heap, held ? 1 : 0); }
        void operator()(int held) const { duk_push_int(heap, held); }
        void operator()(double held) const { duk_push_number(heap, held); }
        void operator()(vyncore::UString const& held) const { PushText(heap, held); }
        void operator()(ScriptObjectPtr const& held) const { engine.mObjects.Push(heap, held); }
        void operator()(boost::intrusive_ptr<NativePromise> const& held) const { engine.mPromises.Push(heap, held); }
        void operator()(std::vector<vyncore::UString> const& held) const { PushElements(heap, held, *this); }
        void operator()(std::vector<ScriptObjectPtr> const& held) const { PushElements(heap, held, *this); }
    };
    duk_require_stack(heap, 8);
    std::visit(Pusher{*this, heap}, value);
}

int DuktapeEngine::Print(duk_hthread* heap) {
    DuktapeEngine& engine = DuktapeHeap::Of(heap);
    std::string line;
    int const count = duk_get_top(heap);
    for (int i = 0; i < count; ++i) {
        duk_safe_to_string(heap, i);
        line += (i > 0 ? " " : "") + ReadUTF8(heap, i);
    }
    CallFailure failure;
    if (engine.mPrint && CatchFailure([&] { engine.mPrint(line); }, failure))
        RaiseError(heap, failure.errorClass, "print " + failure.text);
    return 0;
}

int DuktapeEngine::IsEqual(duk_hthread* heap) {
    DuktapeEngine& engine = DuktapeHeap::Of(heap);
    ScriptObjectPtr const first = engine.mObjects.Get(heap, 0);
    ScriptObjectPtr const second = engine.mObjects.Get(heap, 1);
    if (!first || !second)
        RaiseError(heap, DUK_ERR_TYPE_ERROR, "isEqual takes two objects of the host");
    bool isEqual = false;
    CallFailure failure;
    if (CatchFailure([&] { isEqual = first->IsEqual(second); }, failure))
        RaiseError(heap, failure.errorClass, "isEqual " + failure.text);
    duk_push_boolean(heap, isEqual ? 1 : 0);
    return 1;
}

// Runs whenever something is thrown. Errors know their place; for everything else it is noted here.
int DuktapeEngine::NoteThrow(duk_hthread* heap) {
    if (duk_is_error(heap, 0))
        return 1;
    ScriptPlace& place = DuktapeHeap::Of(heap).mPlace;
    place.line = 0;
    constexpr int kLevels = 8;
    for (int level = 2; level < 2 + kLevels && place.line == 0; ++level) {
        duk_inspect_callstack_entry(heap, -level);
        if (!duk_is_object(heap, -1))
            break;
        duk_get_prop_string(heap, -1, "lineNumber");
        place.line = duk_get_int(heap, -1);
        duk_pop_2(heap);
    }
    duk_set_top(heap, 1);
    return 1;
}

void DuktapeEngine::RefuseNesting() const {
    if (mHeap.IsEntered())
        throw std::logic_error("a script engine runs one script at a time");
}

void DuktapeEngine::Protect(std::function<void(duk_hthread*)> const& work) {
    DuktapeHeap::Entry const entry(mHeap);
    duk_hthread* const heap = mHeap.GetContext();
    auto const run = [](duk_hthread* running, void* data) -> duk_ret_t {
        (*static_cast<std::function<void(duk_hthread*)> const*>(data))(running);
        return 0;
    };
    void* const data = const_cast<void*>(static_cast<void const*>(&work));
    if (duk_safe_call(heap, run, data, 0, 1) != DUK_EXEC_SUCCESS)
        throw TakeError(mHeap, mPlace);
    duk_pop(heap);
}

void DuktapeEngine::PutOwnGlobals(duk_hthread* heap) {
    duk_get_global_string(heap, "Duktape");
    duk_push_c_function(heap, NoteThrow, 1);
    duk_put_prop_string(heap, -2, "errThrow");
    duk_pop(heap);
    duk_push_global_object(heap);
    for (char const* const name : kNotForScripts)
        duk_del_prop_string(heap, -1, name);
    duk_pop(heap);
    PutFunction(heap, "print", Print, DUK_VARARGS);
    PutFunction(heap, "isEqual", IsEqual, 2);
    mObjects.PushClasses(heap);
}

ScriptValue DuktapeEngine::ReadValue(duk_hthread* heap, int index) const {
    if (ScriptObjectPtr object = mObjects.Get(heap, index))
        return object;
    if (duk_is_boolean(heap, index))
        return duk_get_boolean(heap, index) != 0;
    if (duk_is_string(heap, index) && !duk_is_symbol(heap, index))
        return ReadText(heap, index);
    if (!duk_is_number(heap, index))
        return {};
    double const number = duk_get_number(heap, index);
    bool const isInt = number == std::floor(number) && std::abs(number) <= std::numeric_limits<int>::max();
    return isInt ? ScriptValue(static_cast<int>(number)) : ScriptValue(number);
}

} // namespace vynscripting::duktape
