#include "support/VSTFixtureModule.h"

#include "support/FixtureModule.h"
#include "support/VSTCallText.h"

#include <algorithm>

namespace vynfixtures {
namespace {

bool IsAmong(std::initializer_list<std::int32_t> opcodes, std::int32_t opcode) {
    return opcodes.size() == 0 || std::find(opcodes.begin(), opcodes.end(), opcode) != opcodes.end();
}

} // namespace

std::string VSTFixtureModule::Path(std::string_view name) {
    return FixturePath("vst/" + std::string(name));
}

std::u16string VSTFixtureModule::Path16(std::string_view name) {
    return FixturePath16("vst/" + std::string(name));
}

VSTFixtureModule::VSTFixtureModule(std::string_view name) : HeldModule(Path(name), "VSTFixtureEntry") {}

VSTFixtureModule::VSTFixtureModule(std::string_view name, VSTFixtureConfiguration const& configuration)
    : VSTFixtureModule(name) {
    Configure(configuration);
}

std::vector<std::string> VSTFixtureModule::Names(std::initializer_list<std::int32_t> opcodes) const {
    std::vector<std::string> names;
    for (VSTFixtureCall const& call : Calls())
        if (IsAmong(opcodes, call.opcode))
            names.push_back(VSTOpcodeName(call.opcode));
    return names;
}

std::vector<std::string> VSTFixtureModule::TakeNames() {
    std::vector<std::string> names = Names();
    ClearCalls();
    return names;
}

std::vector<std::string> VSTFixtureModule::Texts(std::initializer_list<std::int32_t> opcodes) const {
    std::vector<std::string> texts;
    for (VSTFixtureCall const& call : Calls())
        if (IsAmong(opcodes, call.opcode))
            texts.push_back(VSTCallText(call));
    return texts;
}

std::vector<std::string> VSTFixtureModule::IllFormedCalls() const {
    std::vector<std::string> texts;
    for (VSTFixtureCall const& call : Calls())
        if (!IsWellFormed(call))
            texts.push_back(VSTCallText(call));
    return texts;
}

int VSTFixtureModule::CountCalls(std::int32_t opcode) const {
    return static_cast<int>(Names({opcode}).size());
}

std::vector<std::int64_t> VSTFixtureModule::Answers(std::int32_t opcode) const {
    std::vector<std::int64_t> answers;
    for (int place = 0; place < Snapshot().answerCount; ++place)
        if (Snapshot().answers[place].opcode == opcode)
            answers.push_back(Snapshot().answers[place].answer);
    return answers;
}

std::intptr_t VSTFixtureModule::CallHost(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                         float opt) const {
    return (*this)->host()(Effect(), opcode, index, value, ptr, opt);
}

void VSTFixtureModule::CloseEffect() const {
    Effect()->dispatcher(Effect(), vynaudiofilterhost::vst::effClose, 0, 0, nullptr, 0.0f);
}

} // namespace vynfixtures
