#include "vynhost/XErrors.h"

#include <array>
#include <atomic>
#include <mutex>
#include <utility>
#include <X11/Xlib.h>

namespace vynhost {

namespace {

// The handlers get no pointer of ours.
struct Heard {
    std::function<void()> foreignLoss;
    std::atomic<Display*> own = nullptr;
    std::atomic<bool> ownLost = false;
    std::atomic<bool> anyLost = false;
    std::atomic<int> count = 0;
    std::mutex mutex;
    std::string first;
};

Heard& GetHeard() {
    static Heard heard;
    return heard;
}

XErrorHandler theFormerHandler = nullptr;
XIOErrorHandler theFormerLossHandler = nullptr;

int HearRefusal(Display* display, XErrorEvent* event) {
    Heard& heard = GetHeard();
    if (heard.count++ > 0)
        return 0;
    std::array<char, 128> text{};
    XGetErrorText(display, event->error_code, text.data(), static_cast<int>(text.size()));
    std::lock_guard const lock(heard.mutex);
    heard.first = std::string(text.data()) + ", request " + std::to_string(event->request_code);
    return 0;
}

int HearLoss(Display* display) {
    Heard& heard = GetHeard();
    heard.anyLost = true;
    if (display == heard.own)
        heard.ownLost = true;
    else if (heard.foreignLoss)
        heard.foreignLoss();
    return 0;
}

} // namespace

XErrors::XErrors(std::function<void()> foreignLoss) {
    Heard& heard = GetHeard();
    heard.foreignLoss = std::move(foreignLoss);
    heard.ownLost = false;
    heard.anyLost = false;
    heard.count = 0;
    heard.first.clear();
    theFormerHandler = XSetErrorHandler(HearRefusal);
    theFormerLossHandler = XSetIOErrorHandler(HearLoss);
}

XErrors::~XErrors() {
    XSetErrorHandler(theFormerHandler);
    XSetIOErrorHandler(theFormerLossHandler);
    GetHeard().foreignLoss = nullptr;
}

void XErrors::Reclaim() noexcept {
    XSetErrorHandler(HearRefusal);
    XSetIOErrorHandler(HearLoss);
}

void XErrors::SetOwnConnection(void* display) {
    auto* const own = static_cast<Display*>(display);
    GetHeard().own = own;
    // With a handler that returns, the calls on a broken connection do so too.
    if (own)
        XSetIOErrorExitHandler(
            own, [](Display*, void*) {}, nullptr);
}

bool XErrors::IsOwnConnectionLost() const noexcept {
    return GetHeard().ownLost;
}

bool XErrors::IsAnyConnectionLost() const noexcept {
    return GetHeard().anyLost;
}

int XErrors::GetCount() const noexcept {
    return GetHeard().count;
}

std::string XErrors::TakeFirst() {
    std::lock_guard const lock(GetHeard().mutex);
    return std::exchange(GetHeard().first, {});
}

} // namespace vynhost
