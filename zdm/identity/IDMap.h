// What the remapping visitors have in common: old IDs and the new ones in their place.
#pragma once

#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"

#include <map>

namespace zdm {

class IDMap {
 public:
  /// The ID itself without an entry.
  LONG Of(LONG id) const {
    const auto found = ids_.find(id);
    return found != ids_.end() ? found->second : id;
  }
  /// In place of an entry for the same ID.
  void Add(LONG from, LONG to) { ids_[from] = to; }
  void Clear() { ids_.clear(); }

  static LONG IDOf(IZDMObject* object) {
    return object != nullptr ? static_cast<LONG>(object->GetID()) : 0;
  }
  static LONG IDOf(const OID* oid) { return oid != nullptr ? oid->ID : 0; }

 private:
  std::map<LONG, LONG> ids_;
};

}  // namespace zdm
