// Comparison of BSTRs by the rules of the user's language.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Types.h"

constexpr LCID LOCALE_USER_DEFAULT = 0x400;
constexpr ULONG NORM_IGNORECASE = 1;
constexpr HRESULT VARCMP_LT = 0;
constexpr HRESULT VARCMP_EQ = 1;
constexpr HRESULT VARCMP_GT = 2;

/// Compares two strings over their whole length; null equals empty, and both come before any other.
/// @param locale  0: code unit by code unit (the system's order differs); any other: by the user's
/// default locale (accents and
///                case count, composed and decomposed letters are equal).
/// @param flags   0, or NORM_IGNORECASE (not with locale 0); E_INVALIDARG for others.
/// @return VARCMP_LT, VARCMP_EQ or VARCMP_GT; E_OUTOFMEMORY.
ZDM_API HRESULT VarBstrCmp(BSTR left, BSTR right, LCID locale, ULONG flags);
