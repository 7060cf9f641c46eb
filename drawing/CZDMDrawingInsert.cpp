#include "drawing/CZDMDrawingInsert.h"

#include "drawing/CZDMDrawingBlock.h"
#include "drawing/EntityValues.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupRelations.h"
#include "zdm/relations/IZSingleReltn.h"

#include <cmath>
#include <numbers>

ZDM_OBJECT_BODY(CZDMDrawingInsert)

void CZDMDrawingInsert::GetTransform(GeMatrix& matrix) {
  const zdm::EntityValues insert(*this);
  CZDMDrawingBlock* block = zdm::BlockOf(*this);
  const XYZ base = block != nullptr ? zdm::EntityValues(*block).Point(10) : XYZ{};
  const XYZ scale = {insert.Real(41, 1.0), insert.Real(42, 1.0), insert.Real(43, 1.0)};
  const double turn = insert.Real(50) * std::numbers::pi / 180.0;
  matrix = GeMatrix::MakeTranslation(-base) * GeMatrix::MakeScale({}, scale) *
           GeMatrix::MakeRotation({}, {0, 0, 1}, turn) *
           GeMatrix::MakeTranslation(insert.Point(10)) *
           zdm::ExtrusionFrame(insert.Point(210, {0, 0, 1}));
}

namespace zdm {

CZDMDrawingBlock* BlockOf(IZDMObject& object) {
  const DrawingPart* part = PartOf(&object);
  if (part == nullptr || !RefersToBlock(part->Type())) return nullptr;
  IZSingleReltn* relation = RelationOf(object, part->Groups().IndexOf(kNameCode));
  return relation != nullptr ? dynamic_cast<CZDMDrawingBlock*>(relation->GetReltnObject())
                             : nullptr;
}

GeMatrix ExtrusionFrame(const XYZ& direction) {
  constexpr double kNearlyUp = 1.0 / 64.0;
  XYZ z = direction;
  if (!z.Normalize()) return {};
  const bool isNearlyUp = std::abs(z.x) < kNearlyUp && std::abs(z.y) < kNearlyUp;
  XYZ x = isNearlyUp ? XYZ{0, 1, 0}.Cross(z) : XYZ{0, 0, 1}.Cross(z);
  if (!x.Normalize()) return {};
  return GeMatrix::MakeFrame({}, x, z.Cross(x), z);
}

}  // namespace zdm
