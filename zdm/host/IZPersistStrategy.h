// How an object read from a stream reaches its manager, where the plain way
// (IZDMObjMgr::AttachTail) does not do.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObjMgr;
struct IZDMObject;

struct ZDM_INTERFACE IZPersistStrategy : IZObject {
  /// Puts `object`, loaded and with its owner set, into `manager` (neither is null). The strategy
  /// leaves it in a manager, which holds a reference, or drops it: the reader then gives up the
  /// only one, and the record keeps its ID without an object. Attached and valid status follow
  /// afterwards.
  virtual void Add(IZDMObjMgr* manager, IZDMObject* object) = 0;  // 3
};
