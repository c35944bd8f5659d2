#pragma once

#include "Platform/Error.h"

#include <cerrno>
#include <system_error>

namespace Platform {

/// What the system says of one of its error numbers.
inline tl::unexpected<Error> systemError(int number = errno, Error::Kind kind = Error::Kind::failed)
{
    return tl::make_unexpected(Error{
        .kind = kind, .message = QString::fromStdString(std::generic_category().message(number))});
}

} // namespace Platform
