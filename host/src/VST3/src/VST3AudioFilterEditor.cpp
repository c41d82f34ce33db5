#include "vynaudiofilterhost/VST3/src/VST3AudioFilterEditor.h"

#include "vynaudiofilterhost/VST3/src/PluginPointer.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstdint>
#include <cstring>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::kResultOk;
using Steinberg::tresult;
using Steinberg::ViewRect;

namespace {

// A view that asks for a size whenever it is given one would go on for ever.
constexpr int kDeepestResize = 16;

bool Is(Steinberg::TUID const iid, Steinberg::FUID const& known) {
    return std::memcmp(iid, known.toTUID(), sizeof(Steinberg::TUID)) == 0;
}

bool IsEmpty(ViewRect const& rect) {
    return rect.right == rect.left || rect.bottom == rect.top;
}

// The far edge of a side that has a length that a window can have; else the near one.
int FarEdge(Steinberg::int32 near, Steinberg::int32 far) {
    constexpr std::int64_t kLongest = 1 << 20;
    std::int64_t const length = std::int64_t{far} - near;
    return length >= 0 && length <= kLongest ? far : near;
}

} // namespace

Steinberg::IPlugView* CreateEditorView(Steinberg::Vst::IEditController* controller) noexcept {
    Steinberg::IPlugView* view = nullptr;
    if (controller)
        Guarded([&] { view = controller->createView(Steinberg::Vst::ViewType::kEditor); });
    return view;
}

VST3AudioFilterEditor::VST3AudioFilterEditor(Steinberg::Vst::IEditController* controller,
                                             std::shared_ptr<HostRunLoop> runLoop)
    : mRunLoop(std::move(runLoop)), mView(CreateEditorView(controller)) {
    Guarded([&] { mVendorController = Query<IVST3TolveVendorSpecificController>(controller); });
    if (mView)
        Guarded([this] { mView->setFrame(this); });
}

VST3AudioFilterEditor::~VST3AudioFilterEditor() {
    ForgetPlugin();
}

void VST3AudioFilterEditor::ForgetPlugin() noexcept {
    if (auto* const controller = std::exchange(mVendorController, nullptr))
        Guarded([controller] { controller->release(); });
    Steinberg::IPlugView* const view = std::exchange(mView, nullptr);
    if (!view)
        return;
    Guarded([view] { view->setFrame(nullptr); });
    Guarded([view] { view->release(); });
}

vyncore::geom::RectT<int> VST3AudioFilterEditor::GetEditorBounds() {
    ViewRect rect;
    if (mResizing != 0 || !mView)
        rect = mRequestedSize;
    else
        Guarded([&] { mView->getSize(&rect); });
    return {rect.left, rect.top, FarEdge(rect.left, rect.right), FarEdge(rect.top, rect.bottom)};
}

void VST3AudioFilterEditor::OpenEditor(void* parentWindow) {
    if (!mView || IsOpen())
        return;
    // The view may ask for a size as it is attached, and a listener let go of the editor over it.
    boost::intrusive_ptr<VST3AudioFilterEditor> const self(this);
    PluginPointer<Steinberg::IPlugView> const view(mView);
    Guarded([&] { view->addRef(); });
    bool attached = false;
    Guarded([&] { attached = view->attached(parentWindow, GetViewPlatformType()) == kResultOk; });
    SetOpen(attached && mView);
    if (attached && !mView)
        Guarded([&] { view->removed(); });
}

void VST3AudioFilterEditor::CloseEditor() {
    if (!mView || !IsOpen())
        return;
    SetOpen(false);
    Guarded([this] { mView->removed(); });
}

void VST3AudioFilterEditor::EditorIdle() {}

bool VST3AudioFilterEditor::IsEditorAvailable() {
    return true;
}

void VST3AudioFilterEditor::SetBrightness(float brightness, bool refresh) {
    if (!mVendorController)
        return;
    Guarded([&] { mVendorController->SetBrightness(brightness, refresh); });
    Guarded([&] { mVendorController->SetBrightnessFlag(refresh); });
}

bool VST3AudioFilterEditor::GainFocus(bool forward) {
    bool taken = false;
    if (mVendorController)
        Guarded([&] { taken = mVendorController->GainFocus(forward) != 0; });
    return taken;
}

bool VST3AudioFilterEditor::SetCurrentFocus() {
    bool taken = false;
    if (mVendorController)
        Guarded([&] { taken = mVendorController->SetCurrentFocus() != 0; });
    return taken;
}

tresult VST3AudioFilterEditor::queryInterface(Steinberg::TUID const id, void** object) {
    if (!id || !object)
        return Steinberg::kInvalidArgument;
    if (Is(id, Steinberg::FUnknown::iid) || Is(id, Steinberg::IPlugFrame::iid))
        *object = static_cast<Steinberg::IPlugFrame*>(this);
    else
        *object = mRunLoop->Query(id);
    return *object ? kResultOk : Steinberg::kNoInterface;
}

tresult VST3AudioFilterEditor::resizeView(Steinberg::IPlugView* view, ViewRect* rect) {
    if (!rect || IsEmpty(*rect) || mResizing >= kDeepestResize)
        return Steinberg::kResultFalse;
    mRequestedSize = *rect;
    // A listener may let go of the editor. While it is made nobody holds it yet.
    bool const held = GetReferenceCount() > 0 && !IsBeingDestroyed();
    boost::intrusive_ptr<VST3AudioFilterEditor> const self(held ? this : nullptr);
    bool const hadView = mView != nullptr;
    struct Resizing {
        int& count;

        explicit Resizing(int& resizing) : count(resizing) { ++count; }
        ~Resizing() { --count; }
    } const resizing(mResizing);
    try {
        GetContentSizeChangedSignal()();
        if (view && (mView || !hadView))
            view->onSize(rect);
    } catch (...) {
        // A listener's or the view's own; neither is made for it.
    }
    return kResultOk;
}

} // namespace vynaudiofilterhost::vst3
