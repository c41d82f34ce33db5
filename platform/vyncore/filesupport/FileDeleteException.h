#pragma once

#include "vyncore/Export.h"

#include <stdexcept>

namespace vyncore::filesupport {

/// Thrown when a file that is to be replaced or removed stays; what() is one line without the path.
class VYN_API file_delete_exception : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace vyncore::filesupport
