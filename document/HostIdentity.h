// When an object of the document's own classes counts as the same as another one
// (IZDMObject::JudgeSame).
#pragma once

#include "zdm/host/IZDatabase.h"
#include "zdm/model/IZDMObject.h"

namespace zdm {

/// Objects of two documents with the same class and the same ID.
inline bool IsCounterpart(IZDMObject& object, IZDMObject& other) {
  if (object.GetID() == 0 || other.GetID() != object.GetID()) return false;
  if (!(other.GetZRID() == object.GetZRID())) return false;
  const IZDatabase* here = object.GetDatabase();
  const IZDatabase* there = other.GetDatabase();
  return here != nullptr && there != nullptr && here != there;
}

}  // namespace zdm
