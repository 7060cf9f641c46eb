#include "zdm/properties/CZProperty.h"

template class IZPropertyImpl<IZProperty>;

ZDM_OBJECT_BODY(CZProperty)
