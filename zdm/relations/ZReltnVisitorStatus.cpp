#include "zdm/relations/ZReltnVisitorStatus.h"

#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/ReltnSelector.h"

ZDM_OBJECT_BODY(ZReltnVisitorStatus)

void ZReltnVisitorStatus::Initialize(eZRelation selector, LONG bits, bool set) {
  selector_ = selector;
  bits_ = bits;
  set_ = set;
}

bool ZReltnVisitorStatus::Visit(IZDMObject*, IZDMObject*, IZRelation* reltn) {
  if (reltn == nullptr || !zdm::SelectsStrictly(selector_, *reltn)) return false;
  if (set_) {
    reltn->SetReltnStatus(bits_);
  } else {
    reltn->ClearReltnStatus(bits_);
  }
  return false;
}

void ZReltnVisitorStatus::Isolate(IZDMObject* object, eZRelation selector, bool set) {
  Initialize(selector, ZRS_ISOLATED, set);
  if (object != nullptr) object->VisitReferences(object, this);
}

void ZReltnVisitorStatus::Isolate(IZDMObjColl* objects, eZRelation selector, bool set) {
  Initialize(selector, ZRS_ISOLATED, set);
  if (objects == nullptr) return;
  for (LONGLONG pos = objects->GetHeadPosition(); pos != 0;) {
    IZDMObject* object = objects->GetNext(pos);
    if (object != nullptr) object->VisitReferences(object, this);
  }
}
