#include "document/Recovered.h"

#include "document/CZDocument.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjMgr.h"

namespace zdm {

namespace {

constexpr const OLECHAR* kName = OLESTR("Recovered");

}  // namespace

IZDMObjMgr* RecoveredManager(CZDocument& document) {
  if (auto* found = ViewAs<IZDMObjMgr>(document.FindByNameStatus(kName, ZOS_VALID))) return found;
  const auto made = MakeObject<IZDMObjMgr, CZDMObjMgr>();
  made->SetName(kName);
  document.AddTail(made);
  return made;
}

void Adopt(CZDocument& document, IZDMObject* object) { Adopt(*RecoveredManager(document), object); }

void Adopt(IZDMObjMgr& recovered, IZDMObject* object) {
  recovered.AttachTail(object);
  object->SetStatus(ZOS_ATTACHED);
  object->SetObjectValid(true);
}

}  // namespace zdm
