#include "vynscripting/ParameterErrorException.h"

namespace vynscripting {

ParameterErrorException::ParameterErrorException() = default;
ParameterErrorException::~ParameterErrorException() = default;

char const* ParameterErrorException::what() const noexcept {
    return "parameter error";
}

} // namespace vynscripting
