// The form a VARIANT has in a stream, the same on every system. Layout: above WriteVariant in
// VariantStream.cpp.
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

/// Writes `value` at the position. Arrays, references, types without a form of their own and a
/// damaged DECIMAL (scale above 28, stray bits beside the sign) are written as VT_EMPTY, objects as
/// null ones. Of a text of an odd number of bytes the last is left out.
/// @return S_OK; the failure of the stream; STG_E_MEDIUMFULL after a short write; E_OUTOFMEMORY.
ZDM_API HRESULT WriteVariant(IStream* stream, const VARIANT& value);

/// Clears `*value` and reads one at the position. Objects come back null; none is ever created.
/// A text that comes with VT_EMPTY or VT_NULL is read over.
/// @return S_OK; E_FAIL for damage: an unknown type, a missing byte, a text length that is odd or
///         goes past the end, a DECIMAL of a text that is no number or holds a zero, a class id;
///         the failure of the stream; E_OUTOFMEMORY. `*value` is then VT_EMPTY. When it cannot be
///         cleared (a locked array, a type no value has), the result of VariantClear; nothing was
///         read.
ZDM_API HRESULT ReadVariant(IStream* stream, VARIANT* value);

}  // namespace zdm
