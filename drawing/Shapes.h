// The entities of a drawing as lines, areas and texts in a plane, to look at.
#pragma once

#include "platform/geometry/GeMatrix.h"
#include "platform/system/Text.h"

#include <array>
#include <functional>
#include <vector>

class CPIDManager;
class CZDMDrawing;

namespace zdm {

struct Shape {
  enum class Kind { kLine, kArea, kText };

  Kind kind = Kind::kLine;
  ULONG color = 0;          // 0x00RRGGBB
  std::vector<XYZ> points;  // of a line or an area
  WideString text;
  GeMatrix placement;   // of a text: its baseline begins at the origin, letters are 1 high
  double anchor = 0.0;  // 0: the text begins at the origin, 0.5: centre, 1: it ends there
};

/// Shows every entity of model space, and those of the blocks at every pooled path of inserts, on
/// visible layers. At most kMostShapes.
void ShowShapes(CZDMDrawing& drawing, CPIDManager& paths,
                const std::function<void(const Shape&)>& show);

constexpr std::size_t kMostShapes = 2'000'000;

}  // namespace zdm
