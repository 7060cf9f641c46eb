#include "document/AttachedDispAttrib.h"

#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/IZReltnColl.h"

IZDispAttrib* zdm::GetAttachedDispAttrib(IZDMObject& object) {
  IZReltnColl* relations = object.GetReltnColl();
  if (relations == nullptr) return nullptr;
  for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
    if (auto* attribute = ViewAs<IZDispAttrib>(relations->GetNext(pos))) return attribute;
  }
  return nullptr;
}

void zdm::AttachDispAttrib(IZDMObject& object, IZDispAttrib* attribute) {
  IZDispAttrib* present = GetAttachedDispAttrib(object);
  if (present == attribute) return;
  if (present == nullptr) return object.AddRelation(attribute);
  IZReltnColl* relations = object.GetReltnColl();
  const LONGLONG pos = relations->Find(present, 0);
  if (attribute != nullptr) {
    relations->SetAt(pos, attribute);
  } else {
    relations->RemoveAt(pos);
  }
}
