// Relation status bits, and the selector that picks relations by them.
#pragma once

#include "platform/ole/ole.h"

/// Bits of a relation's status word that the library sets or tests. The others belong to the
/// relation classes of the host and are carried unchanged.
enum eZReltnStatus : LONG {
  /// Set by every relation constructor. Only valid relations are visited, saved and compared.
  ZRS_VALID = 0x00800000,
  /// The diffuse visitor follows the relation.
  ZRS_DIFFUSIBLE = 0x40000000,
  /// Marked by the isolation operations of the status visitor.
  ZRS_ISOLATED = 0x00200000,
  /// Paste remapping descends into the relation.
  ZRS_PASTED = 0x00100000
};

/// Any other value is a mask of status bits; see SelectsStrictly and SelectsLoosely.
enum eZRelation : ULONG {
  ZR_ALL = 0x00040000,
  ZR_DIFFUSIBLE = 0x40000000,
  ZR_NONDIFFUSIBLE = 0x80000000
};
