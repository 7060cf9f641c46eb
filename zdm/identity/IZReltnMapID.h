// A visitor that leads references over to other objects: it maps old IDs to new ones and rewrites
// each reference it is offered to the record of the new ID in the document it works on. An ID
// without an entry stands for itself.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"

struct IZDatabase;

struct ZDM_INTERFACE IZReltnMapID : IZReltnVisitor {
  /// The document whose tables answer from now on; one reference is held. Null for none: then
  /// references are left alone.
  virtual void Initialize(IZDatabase* db) = 0;  // 12
  virtual void ClearMap() = 0;                  // 13
  // The new ID; the ID itself without an entry. Of no object and no record 0.
  virtual LONG MapID(LONG id) = 0;             // 14
  virtual LONG MapID(IZDMObject* object) = 0;  // 15
  virtual LONG MapID(OID* oid) = 0;            // 16
  // What becomes of a reference whose new ID the document does not list: it stays (true), or
  // becomes null (false, at first).
  virtual void get_UseOriginIfMapFailed(bool* out) = 0;  // 17
  virtual void put_UseOriginIfMapFailed(bool use) = 0;   // 18
  // Add an entry, in place of any for the same old ID. Return 0.
  virtual LONG AddMapIDPair(LONG from, LONG to) = 0;                // 19
  virtual LONG AddMapIDPair(IZDMObject* from, IZDMObject* to) = 0;  // 20
  virtual LONG AddMapIDPair(OID* from, OID* to) = 0;                // 21
};
