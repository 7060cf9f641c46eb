// Leads everything that an object refers to over to other records: relations and what hangs below
// them, parameters, paths, the current object of a manager. Also relations that are not valid and
// collections in collections, which no walk is offered, so that nothing keeps a record of another
// document. A reference over paths is led over as a whole or not at all. Lives on the stack.
#pragma once

#include "document/References.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <vector>

class CPIDManager;
struct IZParameterArray;

namespace zdm {

class ReferenceMapper : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  /// @param paths  the table of the paths that references get; null: references stay as they are,
  ///     and are only asked about.
  explicit ReferenceMapper(CPIDManager* paths) : paths_(paths) {}

  void Map(IZDMObject* object);

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool MapCID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, CID* cid) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

 protected:
  /// The record in place of `record`; null cuts the reference.
  virtual OID* Replacement(OID* record) = 0;
  /// Told of every record that a walk meets, in its order.
  /// @param isCut  the reference refers to nothing from now on.
  virtual void Note(OID* record, ReferenceVia via, bool isCut) = 0;

 private:
  void MapHidden(IZDMObject* owner, IZReltnColl* coll, bool isNested);
  void MapValues(IZDMObject* owner, IZParameterArray& parameters);
  void MapCurrent(IZDMObject* object);
  ReferenceVia ViaOf(const void* leaf);
  bool CanMap(const PID* path);
  PID* Mapped(PID* path);
  void NoteMet(OID* record, ReferenceVia via, bool isCut) {
    if (!isHidden_) Note(record, via, isCut);
  }
  void NotePath(const PID* path, bool isCut);

  CPIDManager* const paths_;
  std::vector<const void*> inParameters_;  // where the parameters' references stand, in walk order
  std::size_t nextInParameters_ = 0;
  bool isHidden_ = false;  // what is led over now is not met by a walk
};

}  // namespace zdm
