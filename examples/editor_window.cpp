// Opens a plug-in's own editor in an X11 window, until that is closed or the seconds are over.
//
//     editor_window PLUG-IN [SECONDS]

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/threads/MainThreadCalls.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <X11/Xlib.h>

using namespace vynaudiofilterhost;
using Clock = std::chrono::steady_clock;

static boost::intrusive_ptr<AudioFilter> MakeFilter(char const* path) {
    vyncore::UString reason;
    std::vector<vyncore::UString> ids;
    auto const module = OpenPluginModule(vyncore::string::UTF8to16(path), reason);
    if (!module)
        throw std::runtime_error(vyncore::string::UTF16to8(reason));
    auto filter = module->GetPluginInfo(ids) && !ids.empty() ? module->CreateAudioFilter(ids.front()) : nullptr;
    if (!filter || !filter->HasCustomEditor())
        throw std::runtime_error(filter ? "has no editor of its own" : "holds no plug-in that can be made");
    filter->SetSampleRate(48000.0f);
    filter->SetBlockSize(512);
    return filter;
}

/// The application's window. The plug-in puts a child of its own into it.
class EditorWindow {
public:
    explicit EditorWindow(std::string const& title) : mDisplay(XOpenDisplay(nullptr)) {
        if (!mDisplay)
            throw std::runtime_error("there is no display to open a window on");
        mWindow = XCreateSimpleWindow(mDisplay, DefaultRootWindow(mDisplay), 0, 0, 640, 480, 0, 0, 0);
        mDeletion = XInternAtom(mDisplay, "WM_DELETE_WINDOW", False);
        XSetWMProtocols(mDisplay, mWindow, &mDeletion, 1);
        XStoreName(mDisplay, mWindow, title.c_str());
        XMapWindow(mDisplay, mWindow);
        XSync(mDisplay, False); // the plug-in looks for the window through a connection of its own
    }
    EditorWindow(EditorWindow const&) = delete;
    EditorWindow& operator=(EditorWindow const&) = delete;
    ~EditorWindow() {
        XDestroyWindow(mDisplay, mWindow);
        XCloseDisplay(mDisplay);
    }

    void* GetHandle() const { return std::bit_cast<void*>(mWindow); }
    int GetDescriptor() const { return ConnectionNumber(mDisplay); }
    bool IsClosed() const { return mClosed; }

    void SetSize(vyncore::geom::RectT<int> const& bounds) {
        int const width = bounds.right - bounds.left;
        int const height = bounds.bottom - bounds.top;
        if (width < 1 || height < 1) // of a plug-in that doesn't say
            return;
        XResizeWindow(mDisplay, mWindow, static_cast<unsigned>(width), static_cast<unsigned>(height));
        XSync(mDisplay, False);
    }

    void HandleEvents() {
        while (XPending(mDisplay) > 0) {
            XEvent event{};
            XNextEvent(mDisplay, &event);
            if (event.type == ClientMessage && static_cast<Atom>(event.xclient.data.l[0]) == mDeletion)
                mClosed = true;
        }
    }

private:
    Display* mDisplay;
    Window mWindow = 0;
    Atom mDeletion = 0;
    bool mClosed = false;
};

static void RunMainLoop(EditorWindow& window, AudioFilterEditor& editor, Clock::time_point end) {
    constexpr std::chrono::milliseconds kIdleTime{30};
    // Plug-ins may ask for another size on any thread; the window is changed on this one.
    std::atomic<bool> resized{false};
    boost::signals2::scoped_connection const connection =
        editor.GetContentSizeChangedSignal().connect([&] { resized = true; });
    std::array<pollfd, 2> sources{{{static_cast<int>(vyncore::threads::GetCallQueueDescriptor()), POLLIN, 0},
                                   {window.GetDescriptor(), POLLIN, 0}}};
    auto nextIdle = Clock::now();
    while (!window.IsClosed() && Clock::now() < end) {
        poll(sources.data(), sources.size(), static_cast<int>(kIdleTime.count()));
        vyncore::threads::RunDueCalls(); // timers and descriptors of VST3 plug-ins
        if (auto const now = Clock::now(); now >= nextIdle) {
            editor.EditorIdle(); // VST 2.x plug-ins live on it
            nextIdle = now + kIdleTime;
        }
        if (resized.exchange(false))
            window.SetSize(editor.GetEditorBounds());
        window.HandleEvents();
    }
}

static void ShowEditor(AudioFilter& filter, std::chrono::seconds duration) {
    EditorWindow window(vyncore::string::UTF16to8(filter.GetDisplayName()));
    boost::intrusive_ptr<AudioFilterEditor> const editor = filter.CreateCustomEditor();
    if (!editor)
        throw std::runtime_error("gives no editor");
    window.SetSize(editor->GetEditorBounds());
    editor->OpenEditor(window.GetHandle());
    bool const open = editor->IsOpen();
    if (open) {
        auto const bounds = editor->GetEditorBounds(); // some tell it only now
        window.SetSize(bounds);
        std::printf("The editor is open, %d by %d pixels.\n", bounds.right - bounds.left, bounds.bottom - bounds.top);
        RunMainLoop(window, *editor, Clock::now() + duration);
        editor->CloseEditor(); // before the window goes
    }
    filter.DestroyCustomEditor(editor);
    if (!open)
        throw std::runtime_error("refused the window");
}

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3)
        return std::fprintf(stderr, "usage: editor_window PLUG-IN [SECONDS]\n"), 2;
    XInitThreads(); // plug-ins may have threads of their own
    Initialize(true);
    bool shown = false;
    try {
        ShowEditor(*MakeFilter(argv[1]), std::chrono::seconds(argc == 3 ? std::atoi(argv[2]) : 24 * 60 * 60));
        shown = true;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "editor_window: %s: %s\n", argv[1], error.what());
    } catch (...) { // a plug-in may throw anything
        std::fprintf(stderr, "editor_window: %s threw something\n", argv[1]);
    }
    Terminate();
    return shown ? 0 : 1;
}
