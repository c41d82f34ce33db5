#pragma once

#include "vynaudiofilterhost/VST3/src/HostObject.h"
#include "vyncore/utility/RefCountedObject.h"

#include "pluginterfaces/vst/ivstattributes.h"

#include <boost/intrusive_ptr.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// Named values that a plug-in puts into a message for its other half. The host makes the list and never reads it. It
/// lives by its count of references and may be held past the message. It has no lock: one thread at a time uses it.
///
/// A null name gives kInvalidArgument and changes nothing, and so does a null pointer to what is to be filed or filled.
class HostAttributeList final : public HostObject<Steinberg::Vst::IAttributeList> {
public:
    HostAttributeList() = default;
    ~HostAttributeList() override = default;

    /// Files an integer under a name.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API setInt(AttrID id, Steinberg::int64 value) override;

    /// The 64 bits of an integer or of a float, 0 for an attribute of another type; kResultFalse, and nothing written,
    /// for a name that is missing.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API getInt(AttrID id, Steinberg::int64& value) override;

    /// Files a float under a name.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API setFloat(AttrID id, double value) override;

    /// As getInt: the same 64 bits, read as a float.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API getFloat(AttrID id, double& value) override;

    /// Files a copy of the units before the first 0. kOutOfMemory when there is no memory for it.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API setString(AttrID id, Steinberg::Vst::TChar const* text) override;

    /// Copies as many units as fit into `sizeInBytes` bytes, and adds no terminator: the caller clears its buffer. An
    /// attribute of another type has no units. A null buffer is fine where nothing is copied. kResultFalse for a name
    /// that is missing.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API getString(AttrID id, Steinberg::Vst::TChar* buffer,
                                            Steinberg::uint32 sizeInBytes) override;

    /// Files a copy of the bytes; null with size 0 is an empty attribute. kOutOfMemory beyond kMaxBinarySize or memory.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API setBinary(AttrID id, void const* data, Steinberg::uint32 sizeInBytes) override;

    /// Points `data` at the stored bytes, which stay the list's and are valid until the attribute changes. An attribute
    /// of another type has none. kResultFalse, size 0 and `data` unchanged for a name that is missing.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API getBinary(AttrID id, void const*& data, Steinberg::uint32& sizeInBytes) override;

    /// The most bytes that a binary attribute takes: 1 GiB, as for a state.
    static constexpr Steinberg::uint32 kMaxBinarySize = 1u << 30;

private:
    enum Type : std::int32_t { kTypeInt = 0, kTypeFloat = 1, kTypeString = 2, kTypeBinary = 3 };

    /// One value; which of the fields holds it follows from the type.
    class HostAttribute final : public vyncore::utility::RefCountedObject {
    public:
        explicit HostAttribute(Type attributeType) : type(attributeType) {}

        std::vector<Steinberg::Vst::TChar> text; // without terminator
        std::vector<unsigned char> binary;
        std::uint64_t value = 0; // the bits of the integer or the float
        Type type;
    };

    HostAttribute* Find(AttrID id) const;
    HostAttribute& Replace(AttrID id, Type type);
    Steinberg::tresult SetValue(AttrID id, Type type, std::uint64_t bits);
    template <class Unit>
    Steinberg::tresult SetArray(AttrID id, Type type, std::vector<Unit> HostAttribute::*field, Unit const* units,
                                std::size_t count);

    std::map<std::string, boost::intrusive_ptr<HostAttribute>, std::less<>> mAttributes;
};

} // namespace vynaudiofilterhost::vst3
