// A relation to one object, held by the object's ID record.
#pragma once

#include "zdm/relations/IZRelation.h"

class OID;

struct ZDM_INTERFACE IZSingleReltn : IZRelation {
  /// The target becomes the record of `object`; none when it is null or no IZDMObject.
  virtual void SetReltnObj(IZObject* object) = 0;  // 61
  /// The target's object (borrowed); null without a target, or while no object carries its ID.
  virtual IZDMObject* GetReltnObject() = 0;  // 62
  /// The same when this relation and that object are valid, else null.
  virtual IZDMObject* GetValidReltnObject() = 0;  // 63
  /// Stores the record (borrowed; null for none).
  virtual void SetReltnOID(OID* oid) = 0;  // 64
  virtual OID* GetReltnOID() = 0;          // 65
};
