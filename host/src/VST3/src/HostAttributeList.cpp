#include "vynaudiofilterhost/VST3/src/HostAttributeList.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <exception>
#include <string_view>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int64;
using Steinberg::tresult;
using Steinberg::uint32;
using Steinberg::Vst::TChar;

tresult PLUGIN_API HostAttributeList::setInt(AttrID id, int64 value) {
    return SetValue(id, kTypeInt, static_cast<std::uint64_t>(value));
}

tresult PLUGIN_API HostAttributeList::getInt(AttrID id, int64& value) {
    HostAttribute const* const attribute = Find(id);
    if (!attribute)
        return id ? Steinberg::kResultFalse : Steinberg::kInvalidArgument;
    value = static_cast<int64>(attribute->value);
    return Steinberg::kResultOk;
}

tresult PLUGIN_API HostAttributeList::setFloat(AttrID id, double value) {
    return SetValue(id, kTypeFloat, std::bit_cast<std::uint64_t>(value));
}

tresult PLUGIN_API HostAttributeList::getFloat(AttrID id, double& value) {
    int64 bits = 0;
    tresult const result = getInt(id, bits);
    if (result == Steinberg::kResultOk)
        value = std::bit_cast<double>(bits);
    return result;
}

tresult PLUGIN_API HostAttributeList::setString(AttrID id, TChar const* text) {
    if (!text)
        return Steinberg::kInvalidArgument;
    return SetArray(id, kTypeString, &HostAttribute::text, text, std::char_traits<TChar>::length(text));
}

tresult PLUGIN_API HostAttributeList::getString(AttrID id, TChar* buffer, uint32 sizeInBytes) {
    HostAttribute const* const attribute = Find(id);
    if (!attribute)
        return id ? Steinberg::kResultFalse : Steinberg::kInvalidArgument;
    std::size_t const count = std::min(attribute->text.size(), sizeInBytes / sizeof(TChar));
    if (!buffer && count != 0)
        return Steinberg::kInvalidArgument;
    std::copy_n(attribute->text.data(), count, buffer);
    return Steinberg::kResultOk;
}

tresult PLUGIN_API HostAttributeList::setBinary(AttrID id, void const* data, uint32 sizeInBytes) {
    if (!data && sizeInBytes != 0)
        return Steinberg::kInvalidArgument;
    if (sizeInBytes > kMaxBinarySize)
        return Steinberg::kOutOfMemory;
    return SetArray(id, kTypeBinary, &HostAttribute::binary, static_cast<unsigned char const*>(data), sizeInBytes);
}

tresult PLUGIN_API HostAttributeList::getBinary(AttrID id, void const*& data, uint32& sizeInBytes) {
    sizeInBytes = 0;
    HostAttribute const* const attribute = Find(id);
    if (!attribute)
        return id ? Steinberg::kResultFalse : Steinberg::kInvalidArgument;
    data = attribute->binary.data();
    sizeInBytes = static_cast<uint32>(attribute->binary.size());
    return Steinberg::kResultOk;
}

HostAttributeList::HostAttribute* HostAttributeList::Find(AttrID id) const {
    if (!id)
        return nullptr;
    auto const found = mAttributes.find(std::string_view(id));
    return found == mAttributes.end() ? nullptr : found->second.get();
}

HostAttributeList::HostAttribute& HostAttributeList::Replace(AttrID id, Type type) {
    boost::intrusive_ptr<HostAttribute> attribute(new HostAttribute(type));
    mAttributes.insert_or_assign(id, attribute);
    return *attribute;
}

tresult HostAttributeList::SetValue(AttrID id, Type type, std::uint64_t bits) {
    if (!id)
        return Steinberg::kInvalidArgument;
    try {
        HostAttribute* const known = Find(id);
        (known && known->type == type ? *known : Replace(id, type)).value = bits;
    } catch (std::exception const&) {
        return Steinberg::kOutOfMemory;
    }
    return Steinberg::kResultOk;
}

template <class Unit>
tresult HostAttributeList::SetArray(AttrID id, Type type, std::vector<Unit> HostAttribute::*field, Unit const* units,
                                    std::size_t count) {
    if (!id)
        return Steinberg::kInvalidArgument;
    HostAttribute* const known = Find(id);
    if (known && known->type == type && (known->*field).size() == count) {
        // In place, because a plug-in may go on using the pointer that getBinary gave.
        std::copy_n(units, count, (known->*field).begin());
        return Steinberg::kResultOk;
    }
    try {
        std::vector<Unit> copy(units, units + count);
        Replace(id, type).*field = std::move(copy);
    } catch (std::exception const&) {
        return Steinberg::kOutOfMemory;
    }
    return Steinberg::kResultOk;
}

} // namespace vynaudiofilterhost::vst3
