#include "apps/EditXClient.h"

#include <stdexcept>
#include <sys/socket.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace vyntest {

using vynhost::WindowSize;

struct EditXClient::Connection {
    Display* display = XOpenDisplay(nullptr);
};

EditXClient::EditXClient() : mConnection(std::make_unique<Connection>()) {
    if (!mConnection->display)
        throw std::runtime_error("the display can't be opened");
    XSetIOErrorExitHandler(
        mConnection->display, [](Display*, void*) {}, nullptr);
}

EditXClient::~EditXClient() {
    XCloseDisplay(mConnection->display);
}

EditXClient::Window EditXClient::MakeChild(Window parent, WindowSize size, unsigned long colour) {
    Display* const display = mConnection->display;
    parent = parent != 0 ? parent : DefaultRootWindow(display);
    Window const child = XCreateSimpleWindow(display, parent, 0, 0, static_cast<unsigned>(size.width),
                                             static_cast<unsigned>(size.height), 0, colour, colour);
    XMapWindow(display, child);
    XSync(display, False);
    return child;
}

void EditXClient::Resize(Window window, WindowSize size) {
    XResizeWindow(mConnection->display, window, static_cast<unsigned>(size.width), static_cast<unsigned>(size.height));
    XSync(mConnection->display, False);
}

void EditXClient::Destroy(Window window) {
    XDestroyWindow(mConnection->display, window);
    XSync(mConnection->display, False);
}

WindowSize EditXClient::GetSize(Window window) {
    XWindowAttributes attributes{};
    XGetWindowAttributes(mConnection->display, window, &attributes);
    return {attributes.width, attributes.height};
}

WindowSize EditXClient::GetFixedSize(Window window) {
    XSizeHints hints{};
    long supplied = 0;
    XGetWMNormalHints(mConnection->display, window, &hints, &supplied);
    constexpr long kBoth = PMinSize | PMaxSize;
    bool const fixed =
        (hints.flags & kBoth) == kBoth && hints.min_width == hints.max_width && hints.min_height == hints.max_height;
    return fixed ? WindowSize{hints.max_width, hints.max_height} : WindowSize{};
}

EditXClient::Window EditXClient::Find(std::string const& name) {
    Display* const display = mConnection->display;
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    Window found = 0;
    if (!XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count))
        return 0;
    for (unsigned i = 0; i < count && found == 0; ++i) {
        char* title = nullptr;
        if (XFetchName(display, children[i], &title) && name == title)
            found = children[i];
        XFree(title);
    }
    XFree(children);
    return found;
}

void EditXClient::SendClose(Window window) {
    Display* const display = mConnection->display;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, window, False, NoEventMask, &event);
    XSync(display, False);
}

void EditXClient::Err() {
    XMapWindow(mConnection->display, 1);
    XSync(mConnection->display, False);
}

void EditXClient::Break() {
    ::shutdown(ConnectionNumber(mConnection->display), SHUT_RDWR);
    XSync(mConnection->display, False);
}

void EditXClient::ForgetHandlers() {
    XSetErrorHandler(nullptr);
    XSetIOErrorHandler(nullptr);
}

} // namespace vyntest
