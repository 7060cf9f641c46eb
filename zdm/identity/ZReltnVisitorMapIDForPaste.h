// Pastes objects into a document: clones whose owners are managers there already. Each gets the
// next soft ID and its place in its owner's list; then what the pasted objects themselves refer to
// is led over to what was pasted with them. Only relations with ZRS_PASTED are looked into: one
// that refers to an object that was not pasted is no longer valid, and keeps its target. Made
// directly, not by the factory; it may live on the stack.
#pragma once

#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/IDMap.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZRelation.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <unordered_set>

struct IZDMObjColl;

class ZDM_API ZReltnVisitorMapIDForPaste : public ZReltnVisitor<IZReltnVisitor> {
  ZDM_OBJECT(ZReltnVisitorMapIDForPaste)
 public:
  virtual bool IsDumpRef() { return false; }
  // The new ID; the ID itself without an entry. Of no object and no record 0.
  virtual LONG MapID(LONG id);
  virtual LONG MapID(IZDMObject* object);
  virtual LONG MapID(OID* oid);
  // Add an entry, in place of any for the same old ID. Return 0.
  virtual LONG AddMapIDPair(LONG from, LONG to);
  virtual LONG AddMapIDPair(IZDMObject* from, IZDMObject* to);
  virtual LONG AddMapIDPair(OID* from, OID* to);
  /// Objects of a pasted manager get new IDs too, right behind it in list order, and stay listed
  /// where they are. Each object is pasted once, however often it is met. References are looked at
  /// in the objects of the collection, not in those below them.
  virtual void Paste(IZDatabase* db, IZDMObjColl* objects);

  using ZReltnVisitor::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  /// The record pasted in place of `*oid`. False.
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  /// Leads over the target, or the first step of the path that a reference from top level takes to
  /// it; what lies behind that step is shared. A reference from inside a nested structure stays.
  /// False.
  bool MapCID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, CID* cid) override;

 private:
  virtual void PasteToDatabase(IZDMObject* object);

  bool Enlist(IZDMObject* object, bool isListed);
  void Cut();

  ZRefPtr<IZRelation> currentRelation_;  // that is looked into
  ZRefPtr<IZDatabase> database_;
  COIDManager* ids_ = nullptr;    // of the document
  CPIDManager* paths_ = nullptr;  // of the document
  zdm::IDMap map_;
  std::unordered_set<const CZObject*> met_;  // by the present pass of Paste
};
