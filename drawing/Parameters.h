// Parameters of drawing objects: groups that occur once in a record, typed, over a definition for
// each group code. The groups stay in the own data; a parameter is a view of its group, and where
// it was changed its value is written.
#pragma once

#include "drawing/GroupRelations.h"
#include "drawing/Warnings.h"

class CZDocument;

namespace zdm {

class Parameters {
 public:
  Parameters(CZDocument& document, const TextCodec& codec, Warnings& warnings)
      : document_(document), codec_(codec), warnings_(warnings) {}

  /// The parameters of one object of a drawing.
  /// @param line  of its first group, for warnings.
  void Make(IZDMObject& object, ULONG line);

 private:
  CZDocument& document_;
  TextCodec codec_;
  Warnings& warnings_;
};

/// The groups whose parameters say something else by now.
void CollectParameterEdits(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                           GroupEdits* edits);

}  // namespace zdm
