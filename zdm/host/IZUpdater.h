// Who asks for an update (IZRelation::Update). The library passes it on and calls nothing of it.
#pragma once

#include "platform/core/IZObject.h"

struct ZDM_INTERFACE IZUpdater : IZObject {};
