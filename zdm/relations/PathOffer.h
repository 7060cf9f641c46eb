// How a visitor that follows single references follows paths.
#pragma once

#include "zdm/identity/PID.h"
#include "zdm/relations/IZReltnVisitor.h"

namespace zdm {

/// Offers the records of `path` in order to the visitor's MapOID, without a relation, until one
/// answers true. Paths are shared, so what the visitor stores is dropped. False for null.
inline bool OfferPath(IZReltnVisitor& visitor, IZDMObject* root, IZDMObject* owner,
                      const PID* path) {
  if (path == nullptr) return false;
  for (OID* oid : path->OIDs) {
    if (visitor.MapOID(root, owner, nullptr, &oid)) return true;
  }
  return false;
}

}  // namespace zdm
