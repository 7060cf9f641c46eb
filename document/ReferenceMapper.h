// Leads everything that an object refers to over to other records: relations and what hangs below
// them, parameters, paths, the current object of a manager. Also relations that are not valid and
// collections in collections, which no walk is offered, so that nothing keeps a record of another
// document. A reference over paths is led over as a whole or not at all. Lives on the stack.
#pragma once

#include "document/ReferenceFate.h"
#include "document/References.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <vector>

class CPIDManager;
struct IZParameter;

namespace zdm {

class ReferenceMapper : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  /// @param paths  the table of the paths that references get; null: references stay as they are,
  ///     and are only asked about.
  /// @param notes  whether Note is told.
  ReferenceMapper(CPIDManager* paths, bool notes) : paths_(paths), notes_(notes) {}

  void Map(IZDMObject* object);
  /// References of the object that was mapped last stay as they were, as what comes in their place
  /// is not there yet: they are to be mapped again, when it is.
  bool IsUnfinished() const { return isUnfinished_; }
  /// Without notes; what has no other target by now stays.
  void MapAgain(IZDMObject* object);

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool MapCID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, CID* cid) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

 protected:
  struct Target {
    OID* record;  // null cuts the reference
    ReferenceFate fate;
    bool isInside;  // of the set, as `record` is
    bool isLater;   // it is not there yet, and `record` not the one
  };
  /// What stands in place of `record`.
  /// @param again  it may have been mapped before.
  virtual Target TargetFor(OID* record, bool again) = 0;
  /// Told of every record outside of the set that a walk meets, in its order, and of those inside
  /// that are cut.
  virtual void Note(OID* record, ReferenceVia via, ReferenceFate fate) = 0;

 private:
  struct Prospect {
    bool canMap = true;
    bool isLater = false;
  };

  void MapAll(IZDMObject* object);
  Target TargetOf(OID* record) { return TargetFor(record, isAgain_); }
  void MapHidden(IZDMObject* owner, IZReltnColl* coll, bool isNested);
  void MapParameter(IZDMObject* object, IZParameter& parameter);
  void MapValue(IZDMObject* owner, IZParameter& parameter);
  void MapCurrent(IZDMObject* object);
  ReferenceVia ViaOf(const void* leaf);
  Prospect ProspectOf(const PID* path);
  PID* Mapped(PID* path);
  void NoteMet(OID* record, ReferenceVia via, const Target& target);
  void NotePath(const PID* path, bool isCut);

  CPIDManager* const paths_;
  bool notes_;
  bool isAgain_ = false;  // what is mapped now may have been mapped before
  bool isUnfinished_ = false;
  std::vector<const void*> inParameters_;  // where the parameters' references stand, in walk order
  std::size_t nextInParameters_ = 0;
  bool isParameter_ = false;  // what is walked now is a parameter itself
  bool isHidden_ = false;     // what is led over now is not met by a walk
  int depth_ = 0;             // of collections and relations in each other
};

}  // namespace zdm
