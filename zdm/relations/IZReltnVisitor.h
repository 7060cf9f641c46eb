// What is shown every reference that an object holds: it may look inside, rewrite a reference in
// place, or stop the walk. A result of true ends the walk at once and is handed up to whoever
// started it; false lets it go on.
// In every operation `root` is the object at which the walk began (null when it was started without
// one) and `owner` the object that holds what is offered. IZReltnVisitorImpl has the defaults.
#pragma once

#include "platform/core/IZObject.h"

class CID;
class OID;
class PID;
class UID;
struct IZDMObject;
struct IZRelation;
struct IZReltnColl;

struct ZDM_INTERFACE IZReltnVisitor : IZObject {
  /// A collection that `owner` holds.
  virtual bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) = 0;  // 3
  /// A relation that `owner` holds, directly or as an element of a collection.
  virtual bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) = 0;  // 4
  /// The record of the owner of `owner`; null when it has none.
  virtual bool Visit(IZDMObject* root, IZDMObject* owner, OID* ownerOid) = 0;  // 5
  /// Not called by the library, like the next.
  virtual bool Visit(IZDMObject* root, IZDMObject* owner) = 0;  // 6
  virtual bool Visit(IZDMObject* root) = 0;                     // 7
  // In the four below `reltn` is the relation that holds the record, null when the caller has none.
  virtual bool MapUID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, UID* uid) = 0;  // 8
  virtual bool MapCID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, CID* cid) = 0;  // 9
  /// The target of a single reference; `*oid` may be replaced.
  virtual bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) = 0;  // 10
  /// A path; `*pid` may be replaced.
  virtual bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) = 0;  // 11
};
