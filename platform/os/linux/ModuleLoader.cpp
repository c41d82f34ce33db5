#include "os/ModuleLoader.h"

#include "os/FileSystem.h"
#include "os/linux/ModuleFormat.h"
#include "os/linux/NativePath.h"
#include "os/Thread.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <atomic>
#include <dlfcn.h>
#include <exception>
#include <map>
#include <string_view>

namespace os {

namespace {

char const* WhyNotAFile(vyncore::UString const& path) {
    switch (GetFileKind(path)) {
    case FileKind::kFile:
        return nullptr;
    case FileKind::kDirectory:
        return "it is a folder, not a module";
    case FileKind::kOther:
        return "it is no regular file";
    case FileKind::kNone:
        break;
    }
    return path.empty() ? "no path was given" : "there is no such file";
}

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < ' ' || byte == 0x7f;
}

// The loader's messages begin with the path, and hold whatever bytes a module has in its tables.
std::string CleanReason(std::string_view text, std::string const& path) {
    std::string const prefix = path + ": ";
    while (text.starts_with(prefix))
        text.remove_prefix(prefix.size());
    std::string line = vyncore::string::UTF16to8(vyncore::string::UTF8to16(text));
    std::replace_if(line.begin(), line.end(), IsControl, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return line.empty() ? "the system gives no reason" : line;
}

// The system declares these as never throwing, although a module's own start-up and clean-up code runs inside them.
// Called by that name, an exception would end the process before any handler saw it; through these pointers it arrives.
void* (*volatile const kOpen)(char const*, int) = dlopen;
int (*volatile const kClose)(void*) = dlclose;

// Modules whose start-up code threw, and the reason. The system counts them as open, so that opening one again would
// give a module whose objects were never made. Never destroyed: static objects may open modules while they go.
std::map<FileIdentity, std::string>& ModulesThatThrew() {
    static std::map<FileIdentity, std::string>& modules = *new std::map<FileIdentity, std::string>;
    return modules;
}

// The thread that holds the loader's lock for good, 0 while there is none. The lock lets its holder in again.
std::atomic<unsigned> theBlockingThread{0};

void SetLoaderBlocked() {
    theBlockingThread.store(GetCurrentThreadID(), std::memory_order_release);
}

bool WouldWaitForEver() {
    unsigned const holder = theBlockingThread.load(std::memory_order_acquire);
    return holder != 0 && holder != GetCurrentThreadID();
}

void* Open(std::string const& path, std::string& reason) {
    if (void* const module = kOpen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
        return module;
    char const* const message = dlerror();
    char const* const explanation = ExplainRefusedModule(path);
    reason = explanation ? explanation : CleanReason(message ? message : "", path);
    return nullptr;
}

void* OpenGuarded(std::string const& path, FileIdentity const& identity, std::string& reason) {
    if (auto const found = ModulesThatThrew().find(identity); found != ModulesThatThrew().end()) {
        reason = found->second;
        return nullptr;
    }
    try {
        return Open(path, reason);
    } catch (std::exception const& exception) {
        reason = CleanReason(std::string("its start-up code threw: ") + exception.what(), path);
    } catch (...) {
        reason = "its start-up code threw an exception";
    }
    SetLoaderBlocked();
    ModulesThatThrew().emplace(identity, reason);
    return nullptr;
}

} // namespace

HINSTANCE__* OpenModule(vyncore::UString const& path, std::string& reason) {
    reason.clear();
    if (char const* const why = WhyNotAFile(path)) {
        reason = why;
        return nullptr;
    }
    if (WouldWaitForEver()) {
        reason = "a module that threw while it was loaded blocks the system's loader for this thread";
        return nullptr;
    }
    std::string native = ToNativePath(path).value_or("");
    // Without a slash dlopen would look through the library path.
    if (native.find('/') == std::string::npos)
        native.insert(0, "./");
    FileIdentity const identity = GetFileIdentity(path).value_or(FileIdentity{});
    return static_cast<HINSTANCE__*>(OpenGuarded(native, identity, reason));
}

void CloseModule(HINSTANCE__* module) noexcept {
    if (!module || WouldWaitForEver())
        return;
    try {
        kClose(module);
    } catch (...) {
        // The module's own clean-up threw; nobody is left who could do anything about it.
        SetLoaderBlocked();
    }
}

void* FindExport(HINSTANCE__* module, char const* name) noexcept {
    return module && name && !WouldWaitForEver() ? dlsym(module, name) : nullptr;
}

bool IsLoaderBlocked() noexcept {
    return theBlockingThread.load(std::memory_order_acquire) != 0;
}

} // namespace os
