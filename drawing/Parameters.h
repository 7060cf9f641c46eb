// Parameters of drawing objects: groups that occur once in a record, typed, over a definition for
// each group code; and for the attributes of an insert, or of a block, a text over a definition for
// each tag. The groups stay as they are: a parameter is a view of its group, and where it was
// changed its value is written.
#pragma once

#include "drawing/GroupDefinitions.h"
#include "drawing/GroupRelations.h"
#include "drawing/Warnings.h"

struct IZDMObjMgr;

namespace zdm {

class Parameters {
 public:
  Parameters(CZDocument& document, const TextCodec& codec, Warnings& warnings)
      : definitions_(document), codec_(codec), warnings_(warnings) {}

  /// Those of one object of a drawing. Objects of OBJECTS have none.
  /// @param line  of its first group, for warnings.
  void Make(IZDMObject& object, ULONG line);

 private:
  void MakeOfAttributes(IZDMObjMgr& manager);

  GroupDefinitions definitions_;
  TextCodec codec_;
  Warnings& warnings_;
};

/// The groups whose parameters say something else by now.
void CollectParameterEdits(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                           GroupEdits* edits);

}  // namespace zdm
