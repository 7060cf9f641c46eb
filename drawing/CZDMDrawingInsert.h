// An insert: shows a block somewhere else, turned, scaled, in rows and columns; with the attributes
// that follow it.
#pragma once

#include "drawing/DrawingObject.h"

class CZDMDrawingInsert : public DrawingObject<IZDMObjMgrImpl<IZDMObjMgr>> {
  ZDM_OBJECT(CZDMDrawingInsert)
 public:
  /// From the block's space into that of the insert; the first of rows and columns.
  void GetTransform(GeMatrix& matrix) override;
};

class CZDMDrawingBlock;

namespace zdm {

/// The block that an insert or a dimension shows (borrowed); null without one.
CZDMDrawingBlock* BlockOf(IZDMObject& object);

/// The arbitrary axes that belong to an extrusion direction: from those of an entity into space.
GeMatrix ExtrusionFrame(const XYZ& direction);

}  // namespace zdm
