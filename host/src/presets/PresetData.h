#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/signals2/signal.hpp>

#include <cstdint>
#include <list>
#include <vector>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

/// A typed view on the property list in which a filter's state is stored; docs/formats.md lists the keys. Held through
/// boost::intrusive_ptr. The application owns the list and keeps it alive, where it is, for as long as the view lives.
///
/// 1. The view holds no state of its own but its signal: two views on one list see each other's changes, and each
///    announces its own.
/// 2. A key that is missing, or whose value is of another kind, reads as its default.
class VYN_API PresetData : public vyncore::utility::RefCountedObject {
public:
    using PropList = vyncore::proplist::PropList;
    using Bytes = std::vector<unsigned char, vyncore::allocator::STLAllocator<unsigned char>>;
    using PresetChangedSignal = boost::signals2::signal<void(PresetData const&)>;

    /// In what form the state is there. The numbers stand in stored presets, so they never change; any other number is
    /// kept as it is, and no filter loads such a preset.
    enum PresetType : std::int32_t {
        /// A list of parameter values.
        kPresetTypeParamList = 0,
        /// Bytes that the filter alone understands.
        kPresetTypeChunkData = 1,
        /// The name and the index of one of the filter's own presets.
        kPresetTypeFactoryPreset = 2,
        /// A property list whose keys the filter chooses.
        kPresetTypeCustomData = 3,
    };

    /// [main-thread]
    explicit PresetData(PropList& list);
    PresetData(PresetData const&) = delete;
    PresetData& operator=(PresetData const&) = delete;
    ~PresetData() override;

    /// The preset version of the filter (AudioFilter::GetCurrentPresetVersion); 0 by default.
    /// [main-thread]
    float GetVersion() const;
    /// Announces the change, also when the value is the old one; so does each setter below that doesn't say otherwise.
    /// [main-thread]
    void SetVersion(float version);

    /// A parameter list by default.
    /// [main-thread]
    PresetType GetPresetType() const;
    /// [main-thread]
    void SetPresetType(PresetType type);

    /// Replaces what `values` held by one normalized value per parameter, in their order; none by default.
    /// [main-thread]
    void GetParamList(std::list<float>& values) const;
    /// [main-thread]
    void SetParamList(std::list<float> const& values);

    /// Replaces what `data` held by the chunk's bytes. False when there is no chunk, an empty one, or one whose text is
    /// damaged; `data` is empty then.
    /// [main-thread]
    bool GetChunkData(Bytes& data) const;
    /// Stores `size` bytes as a chunk. Stores and announces nothing when they can't be had: a null pointer with a size
    /// above 0, or more than a text can hold.
    /// [main-thread]
    void SetChunkData(unsigned char const* data, unsigned long long size);

    /// Empty by default.
    /// [main-thread]
    vyncore::UString GetFactoryPresetName() const;
    /// [main-thread]
    void SetFactoryPresetName(vyncore::UString const& name);

    /// -1, for none, by default.
    /// [main-thread]
    int GetFactoryIndex() const;
    /// Announces nothing.
    /// [main-thread]
    void SetFactoryIndex(int index);

    /// The list whose keys the filter chooses; never null: it is made when absent, through a const view, too. It stays
    /// where it is until the preset is cleared or set from another one.
    /// [main-thread]
    PropList* GetCustomDataSection();
    PropList const* GetCustomDataSection() const;

    /// The list itself; never null.
    /// [main-thread]
    PropList const* GetRawData() const noexcept { return mList; }

    /// Makes this preset's list, with everything in it, what the other's is.
    /// [main-thread]
    void SetDataFromExistingPreset(PresetData const& other);

    /// Removes everything; announces nothing.
    /// [main-thread]
    void Clear();

    /// Whether nothing at all is stored.
    /// [main-thread]
    bool IsEmpty() const;

    /// Same version, same type, and the same state in the form that the type names; what is stored beside that doesn't
    /// count. A version or a parameter that is no number equals nothing, itself neither. Presets of custom data are
    /// compared by their parameters and chunks as well, and each that has no custom section is given an empty one. Of a
    /// factory preset the name counts and the index doesn't. Presets of an unknown type are never equal.
    /// [main-thread]
    bool operator==(PresetData const& other) const;

    /// Fires with this preset after it has been changed through this view, as the operations say.
    /// [main-thread]
    PresetChangedSignal& GetPresetChangedSignal() noexcept { return mPresetChanged; }

private:
    bool IsParamDataEqual(PresetData const& other) const;
    bool IsChunkDataEqual(PresetData const& other) const;
    bool IsFactoryDataEqual(PresetData const& other) const;
    bool IsCustomDataEqual(PresetData const& other) const;

    PropList* const mList;
    PresetChangedSignal mPresetChanged;
};

} // namespace vynaudiofilterhost
