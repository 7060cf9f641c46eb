#include "document/Counterpart.h"

#include "zdm/host/IZDatabase.h"
#include "zdm/model/IZDMObject.h"

bool zdm::AreCounterparts(IZDMObject& left, IZDMObject& right) {
  if (left.GetID() != right.GetID() || left.GetID() == 0) return false;
  if (!(left.GetZRID() == right.GetZRID())) return false;
  const IZDatabase* here = left.GetDatabase();
  const IZDatabase* there = right.GetDatabase();
  return here != nullptr && there != nullptr && here != there;
}
