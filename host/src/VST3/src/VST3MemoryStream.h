#pragma once

#include "vynaudiofilterhost/VST3/src/HostObject.h"

#include "pluginterfaces/base/ibstream.h"

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// Bytes in memory that a plug-in writes its state to or reads it from, owned by the operation that uses it; a plug-in
/// may hold it longer. The cursor may stand anywhere, behind the end or before the start; what matters is checked
/// where bytes move, so that no position and no count of a plug-in leads out of bounds.
///
/// Invariant: never more than kMaxSize bytes, but for what it was made of.
class VST3MemoryStream final : public HostObject<Steinberg::IBStream> {
public:
    static constexpr std::size_t kMaxSize = std::size_t{1} << 30;

    using Bytes = std::vector<unsigned char>;

    VST3MemoryStream() : HostObject(Life::kOwned) {}

    /// A stream whose bytes are those of `bytes` behind the first `head`, which it keeps for TakeBytes. `head` is at
    /// most their number.
    VST3MemoryStream(Bytes bytes, std::size_t head) noexcept
        : HostObject(Life::kOwned), mBytes(std::move(bytes)), mHead(head) {}

    ~VST3MemoryStream() override = default;

    /// Copies `numBytes` bytes from the cursor, or what remains; `numBytesRead`, unless null, gets the count. With
    /// nothing left the cursor moves to the end. Nothing is read before the start or for a count below 1. Gives
    /// kResultOk, and kInvalidArgument for a null buffer when there would be something to read.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API read(void* buffer, Steinberg::int32 numBytes,
                                       Steinberg::int32* numBytesRead) override;

    /// Copies `numBytes` bytes to the cursor and ends the stream behind them; a gap before the cursor is filled with
    /// zeros. `numBytesWritten`, unless null, gets the count. A count below 1 writes nothing. Changes nothing and
    /// gives kInvalidArgument for a null buffer, kResultFalse before the start, kOutOfMemory when the stream would
    /// exceed kMaxSize or memory.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API write(void* buffer, Steinberg::int32 numBytes,
                                        Steinberg::int32* numBytesWritten) override;

    /// Moves the cursor to `pos`, by `pos`, or to the size plus `pos`; another mode leaves it. There are no bounds but
    /// those of the number. `result`, unless null, gets the cursor. Gives kResultOk.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API seek(Steinberg::int64 pos, Steinberg::int32 mode, Steinberg::int64* result) override;

    /// Gives the cursor, or kInvalidArgument for null.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API tell(Steinberg::int64* pos) override;

    /// [any-thread]
    std::size_t GetSize() const noexcept { return mBytes.size() - mHead; }

    /// The bytes, valid until the next write or SetSize; may be null when the size is 0.
    /// [any-thread]
    unsigned char const* GetData() const noexcept { return mBytes.data() + mHead; }

    /// The same as a range.
    /// [any-thread]
    std::span<unsigned char const> GetBytes() const noexcept { return std::span(mBytes).subspan(mHead); }

    /// Hands the bytes over, with the head in front; the stream is empty then, without a head.
    /// [any-thread]
    Bytes TakeBytes() noexcept;

    /// Makes room for that many bytes, so that writing them moves none. False when that exceeds kMaxSize or memory.
    /// [any-thread]
    bool Reserve(std::size_t size);

    /// Whether a write was refused for want of room or memory: what is there then is not all.
    /// [any-thread]
    bool HasOverflowed() const noexcept { return mOverflowed; }

    /// Cuts the bytes off at `size`, or fills up with zeros; the cursor stays. False, with nothing changed, when that
    /// exceeds kMaxSize or memory.
    /// [any-thread]
    bool SetSize(std::size_t size);

private:
    bool Grow(std::size_t size);

    Bytes mBytes; ///< with the head
    std::size_t mHead = 0;
    Steinberg::int64 mCursor = 0;
    bool mOverflowed = false;
};

} // namespace vynaudiofilterhost::vst3
