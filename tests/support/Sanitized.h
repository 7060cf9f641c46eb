// Whether the address sanitizer looks on, whatever the compiler calls it.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define ZDM_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZDM_ADDRESS_SANITIZER 1
#endif
#endif
