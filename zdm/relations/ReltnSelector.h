// The two tests by which a selector picks relations; every user of a selector names the one it
// applies. They differ in what is neither ZR_DIFFUSIBLE nor ZR_NONDIFFUSIBLE.
#pragma once

#include "zdm/relations/IZRelation.h"
#include "zdm/relations/eZRelation.h"

namespace zdm {

/// Other values, ZR_ALL too, are masks: they select relations whose status holds every bit.
inline bool SelectsStrictly(eZRelation selector, IZRelation& reltn) {
  if (selector == ZR_DIFFUSIBLE) return reltn.IsReltnDiffusible();
  if (selector == ZR_NONDIFFUSIBLE) return !reltn.IsReltnDiffusible();
  return reltn.JudgeReltnStatus(static_cast<LONG>(selector));
}

/// Other values select every relation.
inline bool SelectsLoosely(eZRelation selector, IZRelation& reltn) {
  if (selector == ZR_DIFFUSIBLE) return reltn.IsReltnDiffusible();
  if (selector == ZR_NONDIFFUSIBLE) return !reltn.IsReltnDiffusible();
  return true;
}

}  // namespace zdm
