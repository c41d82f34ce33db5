#include "vynhost/EditorWindowConnection.h"

namespace vynhost {

namespace {

// A window manager that insists on a size gets its way in the end.
constexpr int kMostCorrections = 3;

// A plug-in that moves its window without pause must not hold up the rest.
constexpr int kMostEvents = 4096;

std::int64_t GetArea(WindowSize size) {
    return std::int64_t{size.width} * size.height;
}

} // namespace

void EditorWindow::HandleEvents() {
    Connection& own = *mConnection;
    for (int taken = 0; taken < kMostEvents && !IsLost() && XPending(own.display) > 0; ++taken) {
        XEvent event;
        XNextEvent(own.display, &event);
        if (!own.Note(event) || own.corrections >= kMostCorrections)
            continue;
        ++own.corrections;
        Resize();
    }
}

bool EditorWindow::Connection::Note(XEvent const& event) {
    switch (event.type) {
    case ClientMessage:
        if (event.xclient.message_type == protocols && static_cast<Atom>(event.xclient.data.l[0]) == deletion)
            closed = true;
        return false;
    case ConfigureNotify:
        if (event.xconfigure.window == window)
            return WindowSize{event.xconfigure.width, event.xconfigure.height} != size;
        contents[event.xconfigure.window] = {event.xconfigure.width, event.xconfigure.height};
        return false;
    case CreateNotify:
        contents[event.xcreatewindow.window] = {event.xcreatewindow.width, event.xcreatewindow.height};
        return false;
    case ReparentNotify:
        NoteMove(event.xreparent);
        return false;
    case DestroyNotify:
        NoteEnd(event.xdestroywindow.window);
        return false;
    default:
        return false;
    }
}

// A window manager puts the own window into a frame; a plug-in may make its window elsewhere first.
void EditorWindow::Connection::NoteMove(XReparentEvent const& event) {
    if (event.window == window)
        return;
    if (event.parent != window) {
        NoteEnd(event.window);
        return;
    }
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, event.window, &attributes))
        contents[event.window] = {attributes.width, attributes.height};
}

void EditorWindow::Connection::NoteEnd(Window gone) {
    if (gone == window)
        destroyed = true;
    else
        contents.erase(gone);
}

std::optional<WindowSize> EditorWindow::Connection::FindContentSize() const noexcept {
    std::optional<WindowSize> largest;
    for (auto const& [inside, extent] : contents) {
        if (!largest || GetArea(extent) > GetArea(*largest))
            largest = extent;
    }
    return largest;
}

} // namespace vynhost
