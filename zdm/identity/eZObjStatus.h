// Bits of an object's status (OID::Status) that the library sets or tests, by number, 0 to 63. The
// others belong to the host.
#pragma once

#include "platform/ole/ole.h"

enum eZObjStatus : LONG {
  /// The object was added to the manager of its owner.
  ZOS_ATTACHED = 1,
  /// The object is live. Only valid objects are saved, counted and followed.
  ZOS_VALID = 2,
  /// What the diffuse visitor spreads by default.
  ZOS_DIFFUSEMARK = 3,
  /// The object changed or depends on a changed one; its own word on its geometry counts.
  ZOS_AFFECTED = 4,
  /// Visited mark of the deduce visitor.
  ZOS_DEDUCEVISITED = 5,
  /// COIDManager::Clean drops the ID.
  ZOS_DELETED = 8,
  /// The object reaches a reference manager through its relations.
  ZOS_HASREFMGR = 10,
  /// The object is loading itself; also the scratch mark of the self-containment test.
  ZOS_LOADING = 15,
  /// Visited mark of object collections.
  ZOS_COLLECTMARK = 16,
  /// Visited mark of object managers, used under the status lock (OID::c_ObjStatusLock).
  ZOS_VISITMARK = 19
};
