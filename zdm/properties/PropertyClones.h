// Copies of the members of a list of properties.
#pragma once

#include "zdm/framework/CZList.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/framework/Raised.h"
#include "zdm/properties/IZProperty.h"

namespace zdm {

/// Appends a clone of each member of `source` to `clones`, in order; members that are null or
/// cannot be cloned are left out. A list that is met again inside itself counts as empty, and
/// nesting deeper than that of records throws CAtlException(E_FAIL).
/// @param beingCopied  a flag of `source` for this alone.
template <class Coll>
void AddClones(Coll& source, bool& beingCopied, CZList<IZProperty>& clones) {
  if (beingCopied) return;
  const Raised copying(beingCopied);
  const LoadDepth nested;
  for (LONGLONG pos = source.GetHeadPosition(); pos != 0;) {
    const auto clone = CloneAs<IZProperty>(source.GetNext(pos));
    if (clone != nullptr) clones.AddTail(clone);
  }
}

}  // namespace zdm
