// Variables of the process's environment as 16-bit text.
#pragma once

#include "platform/ole/CStringW.h"

#include <cstddef>

namespace zdm {

/// Copies the value of the environment variable `name`, converted from the process's code page
/// (away from Windows from UTF-8), and its terminator into `buffer`.
/// @param required  receives the units that the value takes, terminator included; 0 if not defined.
/// @param buffer    may be null with `capacity` 0, to ask for the size.
/// @param capacity  of `buffer`, in units.
/// @return 0; EINVAL for a null `required` or `name`, or a null `buffer` with a capacity; ERANGE
///         when a buffer that is not null is too small: it is then an empty text, or with
///         `capacity` 0 untouched.
ZDM_API int GetEnvironment(std::size_t* required, OLECHAR* buffer, std::size_t capacity,
                           const char* name);

/// True, and the text in `value`, when the variable is defined (also as empty); else false, and
/// `value` is unchanged.
ZDM_API bool GetEnvironment(const char* name, CStringW& value);

}  // namespace zdm
