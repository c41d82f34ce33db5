#pragma once

#include "vynscripting/definition/ScriptItem.h"
#include "vynscripting/ParameterErrorException.h"
#include "vynscripting/ScriptObject.h"

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace vynscripting::definition {

/// An item over a class of script objects: a member function of it, called with arguments from a script. The types of
/// the item are those of the function.
template <class Object>
class ScriptItemDefinition final : public ScriptItem {
public:
    /// A read-only property.
    /// @param text  without names of parameters
    /// [any-thread]
    template <class Result, class Owner>
    static std::unique_ptr<ScriptItem> Property(ScriptItemText const& text, Result (Owner::*getter)(), unsigned flags) {
        return Bind<Result>(Kind::kProperty, text, getter, flags);
    }
    template <class Result, class Owner>
    static std::unique_ptr<ScriptItem> Property(ScriptItemText const& text, Result (Owner::*getter)() const,
                                                unsigned flags) {
        return Bind<Result>(Kind::kProperty, text, getter, flags);
    }

    /// A method. Throws std::invalid_argument unless the text names every argument of the function.
    /// [any-thread]
    template <class Result, class Owner, class... Arguments>
    static std::unique_ptr<ScriptItem> Method(ScriptItemText const& text, Result (Owner::*function)(Arguments...),
                                              unsigned flags) {
        return Bind<Result, Arguments...>(Kind::kMethod, text, function, flags);
    }
    template <class Result, class Owner, class... Arguments>
    static std::unique_ptr<ScriptItem> Method(ScriptItemText const& text, Result (Owner::*function)(Arguments...) const,
                                              unsigned flags) {
        return Bind<Result, Arguments...>(Kind::kMethod, text, function, flags);
    }

private:
    using Arguments = std::span<ScriptValue const>;
    using Function = std::function<ScriptValue(Object&, Arguments)>;

    ScriptItemDefinition(Kind kind, ScriptItemText const& text, std::vector<ScriptParameter> parameters,
                         PropertyType result, unsigned flags, Function function)
        : ScriptItem(kind, text, std::move(parameters), result, flags), mFunction(std::move(function)) {}

    template <class Result, class... Parameters, class Member>
    static std::unique_ptr<ScriptItem> Bind(Kind kind, ScriptItemText const& text, Member member, unsigned flags) {
        constexpr std::size_t kCount = sizeof...(Parameters);
        static_assert(kCount <= kMaxParameters, "an item takes no more arguments");
        if (text.parameterNames.size() != kCount)
            throw std::invalid_argument("every argument of a script item has a name");
        std::array<ParameterType, kCount> const types{ValueTypeOf<Parameters>()...};
        std::vector<ScriptParameter> parameters;
        for (std::size_t i = 0; i < kCount; ++i)
            parameters.push_back({text.parameterNames[i], types[i]});
        return std::unique_ptr<ScriptItem>(new ScriptItemDefinition(
            kind, text, std::move(parameters), ValueTypeOf<Result>(), flags,
            MakeCall<Result, Parameters...>(member, std::index_sequence_for<Parameters...>())));
    }

    template <class Result, class... Parameters, class Member, std::size_t... Indices>
    static Function MakeCall(Member member, std::index_sequence<Indices...>) {
        return [member]([[maybe_unused]] Object& object, [[maybe_unused]] Arguments arguments) -> ScriptValue {
            if constexpr (std::is_void_v<Result>) {
                (object.*member)(Take<Parameters>(arguments[Indices])...);
                return {};
            } else {
                return Give((object.*member)(Take<Parameters>(arguments[Indices])...));
            }
        };
    }

    template <class Parameter>
    static std::remove_cvref_t<Parameter> Take(ScriptValue const& value) {
        using Plain = std::remove_cvref_t<Parameter>;
        using Held = std::conditional_t<std::is_floating_point_v<Plain>, double, Plain>;
        auto const* const held = std::get_if<Held>(&value);
        if (!held)
            throw ParameterErrorException();
        if constexpr (std::is_same_v<Plain, float>)
            return NarrowToFloat(*held);
        else
            return *held;
    }

    template <class Result>
    static ScriptValue Give(Result&& result) {
        using Plain = std::remove_cvref_t<Result>;
        if constexpr (std::is_floating_point_v<Plain>)
            return static_cast<double>(result);
        else if constexpr (ValueTypeOf<Plain>() == ValueType::kObject)
            return ScriptObjectPtr(std::forward<Result>(result));
        else
            return ScriptValue(std::in_place_type<Plain>, std::forward<Result>(result));
    }

    bool Fits(ScriptObject& object) const override { return dynamic_cast<Object*>(&object) != nullptr; }

    ScriptValue Run(ScriptObject& object, Arguments arguments) const override {
        return mFunction(static_cast<Object&>(object), arguments);
    }

    Function const mFunction;
};

} // namespace vynscripting::definition
