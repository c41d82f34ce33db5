#pragma once

#include "vyncore/Export.h"

#include <exception>

namespace vynscripting {

/// An item can't work with its arguments, or with the object that it was called on. A script sees an error that names
/// the item; the exception itself has no text to tell.
class VYN_API ParameterErrorException : public std::exception {
public:
    ParameterErrorException();
    ~ParameterErrorException() override;

    /// [any-thread]
    char const* what() const noexcept override;
};

} // namespace vynscripting
