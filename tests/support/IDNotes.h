// A visitor that looks inside every relation and writes down the IDs it is offered.
#pragma once

#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <string>

namespace zdm::test {

/// Lives on the stack. Answers true to the ID `stopAt`.
class IDNotes : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using ZReltnVisitor::Visit;
  explicit IDNotes(LONG stopAt = 0) : stopAt_(stopAt) {}

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* oid) override {
    askedRoot = root;
    askedOwner = owner;
    return Note(oid);
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation* reltn, OID** oid) override {
    if (reltn == nullptr) text += '*';
    const bool stops = Note(*oid);
    if (newTarget != nullptr) *oid = newTarget;
    return stops;
  }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) override { return Note(*pid); }

  std::string text;  // each ID followed by a blank, after '*' when no relation is named for it
  OID* newTarget = nullptr;  // where targets are moved to
  IZDMObject* askedRoot = nullptr;
  IZDMObject* askedOwner = nullptr;

 private:
  bool Note(const KID* record) {
    text += record != nullptr ? std::to_string(record->ID) + ' ' : "- ";
    return record != nullptr && record->ID == stopAt_;
  }

  LONG stopAt_;
};

}  // namespace zdm::test
