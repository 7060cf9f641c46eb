// The form a VARIANT has in a stream, the same on every system. Layout: above WriteVariant in
// VariantStream.cpp.
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

/// Writes `value` at the position. Arrays, references and types without a form of their own are
/// written as VT_EMPTY, objects as null ones.
/// @return the result of the stream, STG_E_MEDIUMFULL after a short write, or that of turning a
///         damaged DECIMAL into text; in the last case nothing was written.
ZDM_API HRESULT WriteVariant(IStream* stream, const VARIANT& value);

/// Clears `*value` and reads one at the position. Objects come back null; none is ever created.
/// @return E_FAIL for damage: an unknown type, a missing byte, a text length that is odd or goes
///         past the end, a text that is no number, a class id. `*value` is then VT_EMPTY.
ZDM_API HRESULT ReadVariant(IStream* stream, VARIANT* value);

}  // namespace zdm
