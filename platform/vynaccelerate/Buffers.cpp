#include "vynaccelerate/Buffers.h"

#include <algorithm>
#include <limits>
#include <new>

namespace vynaccelerate::utility {
namespace {

constexpr std::align_val_t kAlignment{64};
constexpr std::size_t kMaxCount = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(float);

} // namespace

float* Malloc_Float(std::size_t count) noexcept {
    if (count > kMaxCount)
        return nullptr;
    return static_cast<float*>(::operator new(count * sizeof(float), kAlignment, std::nothrow));
}

void Free(float* buffer) noexcept {
    ::operator delete(buffer, kAlignment);
}

void Zero(std::size_t count, float* buffer) noexcept {
    std::fill_n(buffer, count, 0.0f);
}

} // namespace vynaccelerate::utility
