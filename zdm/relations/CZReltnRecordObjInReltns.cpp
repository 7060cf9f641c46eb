#include "zdm/relations/CZReltnRecordObjInReltns.h"

#include "platform/geometry/GeBox.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/PathOffer.h"
#include "zdm/relations/ReltnSelector.h"

ZDM_OBJECT_BODY(CZReltnRecordObjInReltns)

CZReltnRecordObjInReltns::CZReltnRecordObjInReltns(const CZReltnRecordObjInReltns& other)
    : CZObject(other),
      IZReltnCollImpl(),
      selector_(other.selector_),
      target_(other.target_),
      out_(other.out_) {
  List::AddTailList(other);
}

CZReltnRecordObjInReltns& CZReltnRecordObjInReltns::operator=(
    const CZReltnRecordObjInReltns& other) {
  if (this == &other) return *this;
  List::RemoveAll();
  List::AddTailList(other);
  selector_ = other.selector_;
  target_ = other.target_;
  TakeReceiver(other.out_);
  return *this;
}

// Here, so that an element which looks at the collection as it goes finds it whole.
CZReltnRecordObjInReltns::~CZReltnRecordObjInReltns() { List::RemoveAll(); }

void CZReltnRecordObjInReltns::UnionElementBoxes(GeBox* box, GiContext* context) {
  ForEach([&](IZRelation& element) {
    GeBox part;
    element.GetGeBox(&part, nullptr, context);
    box->UnionBoxToSelf(part);
  });
}

void CZReltnRecordObjInReltns::SetElementStatus(LONG bits) {
  ForEach([&](IZRelation& element) { element.SetReltnStatus(bits); });
}

void CZReltnRecordObjInReltns::ClearElementStatus(LONG bits) {
  ForEach([&](IZRelation& element) { element.ClearReltnStatus(bits); });
}

void CZReltnRecordObjInReltns::AssertValid(IZDatabase*) {
  ForEach([](IZRelation& element) { element.AssertValid(nullptr); });
}

void CZReltnRecordObjInReltns::Initialize(eZRelation selector, IZDMObject* target,
                                          IZReltnColl* out) {
  selector_ = selector;
  target_ = target != nullptr ? target->GetOID() : nullptr;
  TakeReceiver(out);
}

/// Holding itself, it would never go.
void CZReltnRecordObjInReltns::TakeReceiver(IZReltnColl* out) {
  out_ = out != static_cast<IZReltnColl*>(this) ? out : nullptr;
}

bool CZReltnRecordObjInReltns::Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) {
  if (coll == nullptr || (out_ == nullptr && coll == static_cast<IZReltnColl*>(this))) return false;
  // It may be the receiver, which grows.
  const LONGLONG last = coll->GetValidTailPosition();
  LONGLONG next = coll->GetValidHeadPosition();
  for (LONGLONG pos = 0; next != 0 && pos != last;) {
    pos = next;
    Visit(root, owner, coll->GetValidNext(next));
  }
  return false;
}

bool CZReltnRecordObjInReltns::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr || !zdm::SelectsLoosely(selector_, *reltn)) return false;
  if (!reltn->Accept(root, owner, this)) return false;
  if (out_ != nullptr) {
    out_->AddTail(reltn);
  } else {
    List::AddTail(reltn);
  }
  return false;
}

bool CZReltnRecordObjInReltns::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  return *oid != nullptr && *oid == target_;
}

bool CZReltnRecordObjInReltns::MapPID(IZDMObject* root, IZDMObject* owner, IZRelation*, PID** pid) {
  return zdm::OfferPath(*this, root, owner, *pid);
}
