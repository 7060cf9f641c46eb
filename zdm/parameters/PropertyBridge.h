// How values pass between parameters and properties, by the type code of the definition's property.
#pragma once

#include "zdm/parameters/HeldValue.h"

struct IZProperty;

namespace zdm {

/// Shows a value in a property; one that is not of the kind that the type wants is not shown.
/// @param handled  becomes true for the types that are converted, whatever the value, except 29.
ZDM_API void ShowValue(ULONG type, ZDfValue* value, IZProperty& property, bool& handled);

/// Takes what an edited property has into the value, if that is of the kind that the type wants.
/// @param handled  becomes true for the types that are converted; 8, 21 and 29 are not.
ZDM_API void TakeValue(ULONG type, HeldValue& value, IZProperty& property, bool& handled);

}  // namespace zdm
