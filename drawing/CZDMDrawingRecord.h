// A record of a drawing that holds no others: an entity, an entry of a table, a variable of the
// header, an object that a dictionary names.
#pragma once

#include "document/NamedObject.h"
#include "drawing/DrawingObject.h"

class CZDMDrawingRecord : public DrawingObject<NamedObject<IZDMObject>> {
  ZDM_OBJECT(CZDMDrawingRecord)
};
