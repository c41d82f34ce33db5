#include "vynscripting/InternalErrorException.h"

namespace vynscripting {

InternalErrorException::InternalErrorException() = default;
InternalErrorException::~InternalErrorException() = default;

char const* InternalErrorException::what() const noexcept {
    return "internal error";
}

} // namespace vynscripting
