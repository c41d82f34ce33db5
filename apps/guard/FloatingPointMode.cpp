#include "guard/FloatingPointMode.h"

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace vynguard {

#if defined(__x86_64__)

namespace {

constexpr std::uint32_t kVectorNoted = 0x3F;
constexpr std::uint32_t kVectorForAudio = 0x9FC0; // flush to zero, nothing traps, denormals are zero

constexpr unsigned kStackMasks = 0x3F;
constexpr unsigned kStackRounding = 0xC00;

std::uint16_t GetStackControl() noexcept {
    std::uint16_t control = 0;
    asm volatile("fnstcw %0" : "=m"(control));
    return control;
}

// What was noted while it didn't trap would trap later.
void SetStackControl(std::uint16_t control) noexcept {
    asm volatile("fnclex\n\tfldcw %0" : : "m"(control));
}

} // namespace

FloatingPointMode FloatingPointMode::Get() noexcept {
    FloatingPointMode mode;
    mode.mVector = _mm_getcsr();
    mode.mStack = GetStackControl();
    return mode;
}

void FloatingPointMode::Set() const noexcept {
    _mm_setcsr(mVector);
    if (GetStackControl() != mStack)
        SetStackControl(mStack);
}

FloatingPointMode FloatingPointMode::MakeForAudio() const noexcept {
    FloatingPointMode mode;
    mode.mVector = kVectorForAudio;
    mode.mStack = static_cast<std::uint16_t>((mStack | kStackMasks) & ~kStackRounding);
    return mode;
}

bool FloatingPointMode::operator==(FloatingPointMode const& other) const noexcept {
    return ((mVector ^ other.mVector) & ~kVectorNoted) == 0 && mStack == other.mStack;
}

#else

FloatingPointMode FloatingPointMode::Get() noexcept {
    return {};
}

void FloatingPointMode::Set() const noexcept {}

FloatingPointMode FloatingPointMode::MakeForAudio() const noexcept {
    return *this;
}

bool FloatingPointMode::operator==(FloatingPointMode const& other) const noexcept {
    return mVector == other.mVector && mStack == other.mStack;
}

#endif

} // namespace vynguard
