// A property with a second, paired value (CZPropertyPair).
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyPair : IZProperty {};
