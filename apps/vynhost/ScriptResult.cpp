#include "vynhost/ScriptResult.h"

#include "vyncore/strings/StringUtils.h"
#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItem.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ScriptObject.h"

#include <string>

namespace vynhost {

using vynscripting::ScriptObject;
using vynscripting::ScriptObjectPtr;
using vynscripting::definition::ScriptItem;

namespace {

nlohmann::ordered_json ToJSON(ScriptObject& object, ScriptItem const& item) {
    try {
        return vynhost::ToJSON(item.Call(nullptr, object, {}));
    } catch (...) {
        // A filter that is closed by now, or that throws.
        return nullptr;
    }
}

// Converts one alternative of a value.
struct Convert {
    nlohmann::ordered_json operator()(std::monostate) const { return nullptr; }
    nlohmann::ordered_json operator()(bool value) const { return value; }
    nlohmann::ordered_json operator()(int value) const { return value; }
    nlohmann::ordered_json operator()(double value) const { return value; }
    nlohmann::ordered_json operator()(vyncore::UString const& value) const { return vyncore::string::UTF16to8(value); }
    nlohmann::ordered_json operator()(boost::intrusive_ptr<vynscripting::NativePromise> const&) const {
        return nullptr;
    }

    template <class Element>
    nlohmann::ordered_json operator()(std::vector<Element> const& values) const {
        auto array = nlohmann::ordered_json::array();
        for (Element const& value : values)
            array.push_back((*this)(value));
        return array;
    }

    nlohmann::ordered_json operator()(ScriptObjectPtr const& object) const {
        if (!object)
            return nullptr;
        nlohmann::ordered_json document{{"class", object->GetObjectClassName()}};
        auto const* const definition =
            vynscripting::definition::ScriptDefinitions::Get().Find(object->GetObjectClassName());
        if (!definition)
            return document;
        for (auto const& item : definition->GetItems()) {
            bool const isObject = item->GetResultType() == vynscripting::ValueType::kObject ||
                                  item->GetResultType() == vynscripting::ValueType::kObjectArray;
            if (item->GetKind() == ScriptItem::Kind::kProperty && !isObject)
                document[item->GetName()] = ToJSON(*object, *item);
        }
        return document;
    }
};

} // namespace

nlohmann::ordered_json ToJSON(vynscripting::ScriptValue const& value) {
    return std::visit(Convert(), value);
}

} // namespace vynhost
