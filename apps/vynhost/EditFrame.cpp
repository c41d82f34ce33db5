#include "vynhost/EditFrame.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/MainThread.h"

#include <cstdint>
#include <utility>

namespace vynhost {

namespace {

// What a plug-in gives as its edges may lie further apart than an int reaches.
WindowSize GetSize(vyncore::geom::RectT<int> const& bounds) {
    std::int64_t const width = std::int64_t{bounds.right} - bounds.left;
    std::int64_t const height = std::int64_t{bounds.bottom} - bounds.top;
    auto const limit = [](std::int64_t extent) {
        return extent > 0 && extent <= EditorWindow::kMostPixels ? static_cast<int>(extent) : 0;
    };
    return {limit(width), limit(height)};
}

} // namespace

EditFrame::EditFrame(EditorWindow& window, vynaudiofilterhost::AudioFilter& filter,
                     boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> editor)
    : mWindow(window),
      mFilter(filter),
      mEditor(std::move(editor)),
      mSizeConnection(mEditor->GetContentSizeChangedSignal().connect([this] { HearSizeChange(); })) {}

EditFrame::~EditFrame() {
    try {
        Close();
    } catch (...) { // there is nobody left to tell
    }
    mSizeConnection.disconnect();
    try {
        mFilter.DestroyCustomEditor(std::move(mEditor));
    } catch (...) {
    }
}

bool EditFrame::Open() {
    TakeSize();
    mWindow.Show();
    mEditor->OpenEditor(mWindow.GetHandle());
    // Some tell their size only now.
    TakeSize();
    return mEditor->IsOpen();
}

void EditFrame::Follow() {
    std::optional<WindowSize> const content = mWindow.GetContentSize();
    bool const asked = mSizeChanged.exchange(false);
    if (asked || content != std::exchange(mContentSize, content))
        TakeSize();
}

void EditFrame::Idle() {
    mEditor->EditorIdle();
}

void EditFrame::Close() {
    if (mEditor->IsOpen())
        mEditor->CloseEditor();
}

// A plug-in that asks on the main thread expects the window to have changed when its call returns.
void EditFrame::HearSizeChange() {
    if (vynaudiofilterhost::CurrentThreadIDIsMainThreadID())
        TakeSize();
    else
        mSizeChanged = true;
}

void EditFrame::TakeSize() {
    if (mWindow.IsLost() || mWindow.IsClosed())
        return;
    if (!mWindow.SetSize(GetSize(mEditor->GetEditorBounds())) && mWindow.GetContentSize())
        mWindow.SetSize(*mWindow.GetContentSize());
}

} // namespace vynhost
