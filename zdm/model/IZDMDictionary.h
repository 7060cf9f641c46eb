// A manager that is a named container of objects: no operations of its own, but callers can tell
// it from other managers.
#pragma once

#include "zdm/model/IZDMObjMgr.h"

struct ZDM_INTERFACE IZDMDictionary : IZDMObjMgr {};
