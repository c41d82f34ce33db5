#include "vynscripting/ScriptObject.h"

#include <utility>

namespace vynscripting {

ScriptObject::ScriptObject(char const* className) : mClassName(className) {}

ScriptObject::~ScriptObject() = default;

void ScriptObject::SetContext(ScriptContextHdl context) {
    mContext = std::move(context);
}

void ScriptObject::Finalize() {
    mFinalized = true;
}

bool ScriptObject::IsEqual(boost::intrusive_ptr<ScriptObject> const& other) const {
    return other && other->mClassName == mClassName;
}

} // namespace vynscripting
