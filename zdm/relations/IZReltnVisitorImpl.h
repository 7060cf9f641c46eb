// The defaults of visitors: a collection's valid elements are offered one by one, compound records
// are taken apart into their OID and paths, and everything else is passed by. A visitor that wants
// to look inside relations overrides Visit(root, owner, IZRelation*) and calls Accept on them.
// T is IZReltnVisitor or an interface derived from it. Adds no data.
#pragma once

#include "zdm/framework/IZObjectImpl.h"
#include "zdm/relations/IZReltnVisitor.h"

template <class T>
class IZReltnVisitorImpl : public IZObjectImpl<T> {
 public:
  /// Shows this visitor to the collection's valid elements; false for null.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) override;
  bool Visit(IZDMObject*, IZDMObject*, IZRelation*) override { return false; }
  bool Visit(IZDMObject*, IZDMObject*, OID*) override { return false; }
  bool Visit(IZDMObject*, IZDMObject*) override { return false; }
  bool Visit(IZDMObject*) override { return false; }
  /// Offers the record's CID, without a relation; false for null and without a CID.
  bool MapUID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, UID* uid) override;
  /// Offers ReltnOID, RefPID and SelfPID in this order, without a relation, each unless it is null,
  /// until one answers true. What the visitor stores in one stays there. False for null.
  bool MapCID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, CID* cid) override;
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID**) override { return false; }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID**) override { return false; }
};

#include "zdm/relations/IZReltnVisitorImpl.inl"
