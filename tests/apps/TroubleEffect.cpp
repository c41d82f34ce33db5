// A VST 2.x effect that does what the environment variable TROUBLE says, most of it in its editor. With nothing said it
// shows a window and is well-behaved.

#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <array>
#include <atomic>
#include <cfenv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <limits>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <X11/Xlib.h>

using namespace vynaudiofilterhost::vst;

namespace {

constexpr int kParameters = 10;
constexpr int kIdlesBefore = 5;

struct Rectangle {
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 200;
    std::int16_t right = 300;
};

AEffect* theEffect = nullptr; ///< the last that was made
AudioMasterFunction theHost = nullptr;
Rectangle theRectangle;
std::array<std::atomic<float>, kParameters> theValues{}; ///< set on any thread
Display* theDisplay = nullptr;
Window theParent = 0;
Window theWindow = 0;
int theIdles = 0;
std::atomic<bool> theEnd = false;
std::thread theFlood;

bool IsAsked(std::string_view trouble) {
    char const* const asked = std::getenv("TROUBLE");
    return asked && trouble == asked;
}

// Says so on standard error, where the host has sent what modules print.
void HangFor(std::string_view trouble) {
    if (!IsAsked(trouble))
        return;
    std::cerr << "hangs" << std::endl;
    while (true)
        ::pause();
}

void FloodGestures() {
    for (int i = 0; !theEnd; i = (i + 1) % kParameters) {
        theHost(theEffect, audioMasterBeginEdit, i, 0, nullptr, 0.0F);
        theHost(theEffect, audioMasterAutomate, i, 0, nullptr, 0.5F);
        theHost(theEffect, audioMasterEndEdit, i, 0, nullptr, 0.0F);
    }
}

void Open(void* parent) {
    theDisplay = XOpenDisplay(nullptr);
    theParent = reinterpret_cast<Window>(parent);
    theWindow = XCreateSimpleWindow(theDisplay, theParent, 0, 0, 300, 200, 0, 0, 0xFF0000);
    XMapWindow(theDisplay, theWindow);
    XSync(theDisplay, False);
    if (IsAsked("flood"))
        theFlood = std::thread(FloodGestures);
}

void Close() {
    HangFor("hang when closed");
    theEnd = true;
    if (theFlood.joinable())
        theFlood.join();
    if (!IsAsked("break when unloaded"))
        XCloseDisplay(theDisplay);
}

void Break() {
    ::shutdown(ConnectionNumber(theDisplay), SHUT_RDWR);
    XSync(theDisplay, False);
}

struct Unloading {
    ~Unloading() {
        if (IsAsked("break when unloaded"))
            Break();
    }
} const theUnloading;

void Idle() {
    if (++theIdles != kIdlesBefore)
        return;
    HangFor("hang");
    if (IsAsked("break on a thread"))
        std::thread(Break).detach();
    if (IsAsked("hide")) {
        XUnmapWindow(theDisplay, theParent);
        XSync(theDisplay, False);
    }
    if (IsAsked("grow"))
        theHost(theEffect, audioMasterSizeWindow, 8193, 100, nullptr, 0.0F);
}

std::intptr_t Dispatch(AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void* data, float) {
    switch (opcode) {
    case effEditGetRect:
        *static_cast<Rectangle**>(data) = &theRectangle;
        return 1;
    case effEditOpen:
        Open(data);
        return 1;
    case effEditClose:
        Close();
        return 0;
    case effEditIdle:
        Idle();
        return 0;
    default:
        return 0;
    }
}

void Process(AEffect* effect, float** in, float** out, std::int32_t frames) {
    HangFor("hang in a block");
    if (IsAsked("crash in a block"))
        std::raise(SIGSEGV);
    if (IsAsked("learn its latency"))
        effect->initialDelay = 100;
    if (IsAsked("round up"))
        std::fesetround(FE_UPWARD);
    for (int channel = 0; channel < 2; ++channel)
        std::memcpy(out[channel], in[channel], static_cast<std::size_t>(frames) * sizeof(float));
    if (IsAsked("give no number"))
        out[1][0] = std::numeric_limits<float>::quiet_NaN();
}

// One value more each time that it is asked for.
float Drift() {
    static float value = 0.0F;
    return value += 0.001F;
}

} // namespace

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(AudioMasterFunction host) {
    HangFor("hang when loaded");
    theHost = host;
    theEffect = new AEffect{};
    theEffect->magic = kEffectMagic;
    theEffect->dispatcher = Dispatch;
    theEffect->setParameter = [](AEffect*, std::int32_t index, float value) {
        theValues[static_cast<std::size_t>(index)] = value;
    };
    theEffect->getParameter = [](AEffect*, std::int32_t index) {
        return IsAsked("drift") && index == 3 ? Drift() : theValues[static_cast<std::size_t>(index)].load();
    };
    theEffect->processReplacing = Process;
    theEffect->numParams = kParameters;
    theEffect->numInputs = 2;
    theEffect->numOutputs = 2;
    theEffect->flags = effFlagsHasEditor | effFlagsCanReplacing;
    theEffect->uniqueID = 0x54726F75;
    return theEffect;
}
