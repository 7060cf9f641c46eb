// Tree data that the application attaches to an object (IZDMObject::SetTreeData). The library holds
// it with one reference and hands it out; it is neither copied nor stored.
#pragma once

#include "platform/core/IZObject.h"

struct ZDM_INTERFACE IZTreeData : IZObject {};
