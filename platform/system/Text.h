// 16-bit text: to and from UTF-8, lower case, comparison without regard to case.
#pragma once

#include "platform/ole/ole.h"

#include <string>
#include <string_view>

#if !defined(_WIN32)
/// Lower-cases `count` units in place, each by itself. A letter that is not the upper case of its
/// lower case stays (dotted capital I, capital sharp s, the ohm sign), so do surrogates.
/// Returns `count`, or 0 for null.
ZDM_API DWORD CharLowerBuffW(WCHAR* text, DWORD count);
#endif

namespace zdm {

using WideString = std::basic_string<OLECHAR>;
using WideView = std::basic_string_view<OLECHAR>;

/// UTF-8 of `text`; a surrogate without its other half becomes U+FFFD.
ZDM_API std::string ToUtf8(WideView text);

/// UTF-16 of `text`; every longest piece that begins like a character but is none becomes one
/// U+FFFD.
ZDM_API WideString FromUtf8(std::string_view text);

/// Lower-cases copies of both, over their whole length, with CharLowerBuffW and compares them as
/// names are compared (VarBstrCmp, user's default locale, no flags). For what a user reads, such as
/// hatch patterns; technical text compares with CStringW::CompareNoCase.
/// Throws CAtlException(E_OUTOFMEMORY) when a copy cannot be allocated.
ZDM_API bool EqualIgnoringCase(WideView left, WideView right);

}  // namespace zdm
