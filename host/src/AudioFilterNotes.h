#pragma once

#include "vyncore/Export.h"
#include "vyncore/geom/Rect.h"
#include "vyncore/strings/UString.h"

#include <utility>

namespace vynaudiofilterhost {

/// What an application remembers of a filter, as a part of AudioFilter; the library makes nothing of it but that a
/// clone takes the name of the preset over.
class VYN_API AudioFilterNotes {
public:
    AudioFilterNotes(AudioFilterNotes const&) = delete;
    AudioFilterNotes& operator=(AudioFilterNotes const&) = delete;

    /// Whether the effect is known to be late or to need much time.
    /// [main-thread]
    bool GetHasHighLatency() const noexcept { return mHasHighLatency; }
    void SetHasHighLatency(bool high) noexcept { mHasHighLatency = high; }
    bool GetHasHighCPU() const noexcept { return mHasHighCPU; }
    void SetHasHighCPU(bool high) noexcept { mHasHighCPU = high; }

    /// The preset that was loaded last, and whether the settings have changed since.
    /// [main-thread]
    std::pair<vyncore::UString, bool> GetPresetNameAndDirtyState() const { return mPresetNameAndDirtyState; }
    void SetPresetNameAndDirtyState(std::pair<vyncore::UString, bool> const& state) {
        mPresetNameAndDirtyState = state;
    }

    /// The editor's window.
    /// [main-thread]
    bool GetEditorVisible() const noexcept { return mEditorVisible; }
    void SetEditorVisible(bool visible) noexcept { mEditorVisible = visible; }
    vyncore::geom::RectT<int> GetEditorRect() const noexcept { return mEditorRect; }
    void SetEditorRect(vyncore::geom::RectT<int> const& rect) noexcept { mEditorRect = rect; }

protected:
    AudioFilterNotes() = default;
    ~AudioFilterNotes() = default;

private:
    std::pair<vyncore::UString, bool> mPresetNameAndDirtyState;
    bool mHasHighLatency = false;
    bool mHasHighCPU = false;
    bool mEditorVisible = false;
    vyncore::geom::RectT<int> mEditorRect;
};

} // namespace vynaudiofilterhost
