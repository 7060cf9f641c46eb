// The values of one record as they would be written now, by group code.
#pragma once

#include "drawing/GroupList.h"
#include "platform/geometry/XYZ.h"

#include <optional>

struct IZDMObject;

namespace zdm {

class EntityValues {
 public:
  /// Of nothing for what is no object of a drawing.
  explicit EntityValues(IZDMObject& object);

  const GroupList& Groups() const { return groups_; }
  std::string_view Text(LONG code) const { return groups_.Find(code); }
  double Real(LONG code, double otherwise = 0.0) const;
  LONG Integer(LONG code, LONG otherwise = 0) const;
  /// The coordinates under `code`, `code` + 10, `code` + 20.
  XYZ Point(LONG code, const XYZ& otherwise = {}) const;

 private:
  GroupList groups_;
};

}  // namespace zdm
