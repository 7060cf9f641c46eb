// Memory from the system in pages of 64 KB, each of which begins at a multiple of its size.
#pragma once

#include "platform/Export.h"

#include <cstddef>

namespace zdm {

constexpr std::size_t kPageSize = 0x10000;

/// A page of zeros; null without memory.
ZDM_API void* TakePage() noexcept;
/// `page` is one that TakePage gave.
ZDM_API void GiveBackPage(void* page) noexcept;

}  // namespace zdm
