#include "vynhost/EditorWindow.h"

#include "vynhost/CommandError.h"
#include "vynhost/EditorWindowConnection.h"
#include "vynhost/XErrors.h"

#include <array>
#include <bit>
#include <X11/Xatom.h>
#include <X11/Xutil.h>

namespace vynhost {

namespace {

Display* Connect() {
    // Plug-ins may have threads of their own.
    XInitThreads();
    if (Display* const display = XOpenDisplay(nullptr))
        return display;
    std::string const name = XDisplayName(nullptr);
    throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kNone, {},
                       name.empty() ? "there is no display to show a window on: DISPLAY is not set"
                                    : "the display " + name + " can't be opened");
}

bool IsPossible(WindowSize size) {
    constexpr int kMost = EditorWindow::kMostPixels;
    return size.width >= 1 && size.width <= kMost && size.height >= 1 && size.height <= kMost;
}

void SetFixedSize(Display* display, Window window, WindowSize size) {
    XSizeHints hints{};
    hints.flags = PMinSize | PMaxSize | PSize;
    hints.width = hints.min_width = hints.max_width = size.width;
    hints.height = hints.min_height = hints.max_height = size.height;
    XSetWMNormalHints(display, window, &hints);
}

void Introduce(Display* display, Window window, Atom deletion) {
    std::array<Atom, 1> protocols{deletion};
    XSetWMProtocols(display, window, protocols.data(), static_cast<int>(protocols.size()));
    std::array<char, 8> name{'v', 'y', 'n', 'h', 'o', 's', 't'};
    XClassHint classHint{name.data(), name.data()};
    XSetClassHint(display, window, &classHint);
    XWMHints hints{};
    hints.flags = InputHint | StateHint;
    hints.input = True;
    hints.initial_state = NormalState;
    XSetWMHints(display, window, &hints);
}

} // namespace

EditorWindow::EditorWindow(XErrors& errors) : mErrors(errors), mConnection(std::make_unique<Connection>()) {
    Connection& own = *mConnection;
    own.display = Connect();
    mErrors.SetOwnConnection(own.display);
    own.screen = DefaultScreen(own.display);
    unsigned long const black = BlackPixel(own.display, own.screen);
    own.window = XCreateSimpleWindow(own.display, RootWindow(own.display, own.screen), 0, 0,
                                     static_cast<unsigned>(own.size.width), static_cast<unsigned>(own.size.height), 0,
                                     black, black);
    own.protocols = XInternAtom(own.display, "WM_PROTOCOLS", False);
    own.deletion = XInternAtom(own.display, "WM_DELETE_WINDOW", False);
    Introduce(own.display, own.window, own.deletion);
    XSelectInput(own.display, own.window, StructureNotifyMask | SubstructureNotifyMask);
    SetFixedSize(own.display, own.window, own.size);
    XSync(own.display, False);
}

EditorWindow::~EditorWindow() {
    Connection const& own = *mConnection;
    if (!own.destroyed && !IsLost())
        XDestroyWindow(own.display, own.window);
    XCloseDisplay(own.display);
    mErrors.SetOwnConnection(nullptr);
}

void EditorWindow::SetTitle(std::string const& title) {
    Connection const& own = *mConnection;
    XStoreName(own.display, own.window, title.c_str());
    XChangeProperty(own.display, own.window, XInternAtom(own.display, "_NET_WM_NAME", False),
                    XInternAtom(own.display, "UTF8_STRING", False), 8, PropModeReplace,
                    reinterpret_cast<unsigned char const*>(title.data()), static_cast<int>(title.size()));
}

bool EditorWindow::SetSize(WindowSize size) {
    if (!IsPossible(size))
        return false;
    if (size == mConnection->size)
        return true;
    mConnection->size = size;
    mConnection->corrections = 0;
    Resize();
    return true;
}

void EditorWindow::Resize() {
    Connection const& own = *mConnection;
    SetFixedSize(own.display, own.window, own.size);
    XResizeWindow(own.display, own.window, static_cast<unsigned>(own.size.width),
                  static_cast<unsigned>(own.size.height));
    // A plug-in looks at its parent through a connection of its own.
    XSync(own.display, False);
}

WindowSize EditorWindow::GetSize() const noexcept {
    return mConnection->size;
}

void EditorWindow::Show() {
    XMapRaised(mConnection->display, mConnection->window);
    XSync(mConnection->display, False);
}

void EditorWindow::Raise() {
    XRaiseWindow(mConnection->display, mConnection->window);
    XSync(mConnection->display, False);
}

void* EditorWindow::GetHandle() const noexcept {
    return std::bit_cast<void*>(mConnection->window);
}

std::intptr_t EditorWindow::GetDescriptor() const noexcept {
    return ConnectionNumber(mConnection->display);
}

bool EditorWindow::IsClosed() const noexcept {
    return mConnection->closed || mConnection->destroyed;
}

bool EditorWindow::IsLost() const noexcept {
    return mErrors.IsOwnConnectionLost();
}

std::optional<WindowSize> EditorWindow::GetContentSize() const noexcept {
    return mConnection->FindContentSize();
}

} // namespace vynhost
