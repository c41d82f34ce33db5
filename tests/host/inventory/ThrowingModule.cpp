#include <stdexcept>

namespace {

struct ThrowsAtStart {
    ThrowsAtStart() { throw std::runtime_error("no licence"); }
} const theObject;

} // namespace
