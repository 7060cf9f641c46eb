// A plain list of parameters.
#pragma once

#include "zdm/framework/IZList.h"

struct IZParameter;

struct ZDM_INTERFACE IZParameterColl : IZList<IZObject, IZParameterColl, IZParameter> {};
