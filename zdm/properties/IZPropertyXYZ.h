// A coordinate triple; a kind by its class alone.
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyXYZ : IZProperty {};
