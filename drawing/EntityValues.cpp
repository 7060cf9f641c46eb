#include "drawing/EntityValues.h"

#include "drawing/CZDMDrawing.h"
#include "drawing/Numbers.h"
#include "drawing/WrittenGroups.h"

namespace zdm {

EntityValues::EntityValues(IZDMObject& object) {
  const DrawingPart* part = PartOf(&object);
  const CZDMDrawing* drawing = DrawingOf(object);
  if (part == nullptr) return;
  const TextCodec codec = drawing != nullptr ? drawing->GetCodec() : TextCodec();
  groups_ = WrittenGroups(object, *part, codec).head;
}

double EntityValues::Real(LONG code, double otherwise) const {
  return ParseReal(Text(code)).value_or(otherwise);
}

LONG EntityValues::Integer(LONG code, LONG otherwise) const {
  return ParseLong(Text(code)).value_or(otherwise);
}

XYZ EntityValues::Point(LONG code, const XYZ& otherwise) const {
  return {Real(code, otherwise.x), Real(code + 10, otherwise.y), Real(code + 20, otherwise.z)};
}

}  // namespace zdm
