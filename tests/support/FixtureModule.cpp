#include "support/FixtureModule.h"

#include <algorithm>
#include <cstdio>

#include <dlfcn.h>

namespace vynfixtures {
namespace {

std::string CallText(FixtureCall const& call) {
    static char const* const objects[] = {"Module", "Factory", "Component", "Controller", "View"};
    std::string text = objects[static_cast<int>(call.object)];
    text.append(".").append(call.name).append("(").append(call.detail);
    if (call.hasArgument && call.detail[0] == 0)
        text += std::to_string(call.argument);
    return text + ')';
}

} // namespace

std::string FixturePath(std::string_view name) {
    return std::string(VYN_FIXTURE_DIR) + '/' + std::string(name);
}

std::u16string FixturePath16(std::string_view name) {
    std::string const path = FixturePath(name);
    return {path.begin(), path.end()};
}

bool IsModuleLoaded(std::string const& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle != nullptr;
}

FixtureModule::FixtureModule(std::string_view name, FixtureConfiguration const& configuration)
    : HeldModule(FixturePath(name), "FixtureEntry"), mPath(FixturePath(name)) {
    Configure(configuration);
}

std::vector<std::string> FixtureModule::CallTexts(std::initializer_list<std::string_view> names) const {
    std::vector<std::string> texts;
    for (FixtureCall const& call : Calls())
        if (names.size() == 0 || std::find(names.begin(), names.end(), call.name) != names.end())
            texts.push_back(CallText(call));
    return texts;
}

int FixtureModule::CountCalls(std::string_view name) const {
    return static_cast<int>(CallTexts({name}).size());
}

std::u16string FixtureModule::UniqueID(int index) const {
    unsigned char const* const b = (*this)->classId(index);
    auto const word = [b](int b0, int b1, int b2, int b3) {
        return static_cast<unsigned>(b[b0] << 24 | b[b1] << 16 | b[b2] << 8 | b[b3]);
    };
    char text[48];
    std::snprintf(text, sizeof text, "3:%08x %x %x %x", word(3, 2, 1, 0), word(5, 4, 7, 6), word(8, 9, 10, 11),
                  word(12, 13, 14, 15));
    std::string_view const view = text;
    return {view.begin(), view.end()};
}

} // namespace vynfixtures
