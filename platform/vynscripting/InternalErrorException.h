#pragma once

#include "vyncore/Export.h"

#include <exception>

namespace vynscripting {

/// A call could not be brought to the thread that it belongs to, or not in time.
class VYN_API InternalErrorException : public std::exception {
public:
    InternalErrorException();
    ~InternalErrorException() override;

    /// [any-thread]
    char const* what() const noexcept override;
};

} // namespace vynscripting
