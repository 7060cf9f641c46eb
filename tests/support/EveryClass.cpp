#include "tests/support/EveryClass.h"

#include "document/CZDMAbsentObject.h"
#include "platform/core/CZRClass.h"
#include "platform/core/ZCore.h"
#include "platform/system/Text.h"
#include "tests/support/TestDatabase.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/CZDMProxyObject.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/relations/IZReltnColl.h"

namespace zdm::test {

namespace {

constexpr GUID kForeignClass = ParseGuid("F0F0F0F0-0002-4000-8000-0123456789AB");
constexpr GUID kForeignKey = ParseGuid("F0F0F0F0-0003-4000-8000-0123456789AB");

/// Writes records of a class that nobody has.
class Foreign : public CZDMPlainObject {
  void WriteHeader(IZStream* stream) override {
    const ObjectHeader header = {
        kForeignClass,     7, 8, static_cast<LONG>(GetID()), static_cast<LONG>(GetOwnerID()), 9,
        GetOptionAllowed()};
    stream->Write(&header, sizeof(header));
  }
};

void AddExtData(IZDMObject* object) {
  const auto add = [&](const OLECHAR* name, auto value) {
    ZExtDataWrapper::AddExtData(object, kForeignKey, name, value, true);
  };
  add(OLESTR("long"), LONG{-3});
  add(OLESTR("flag"), true);
  add(OLESTR("short"), SHORT{-2});
  add(OLESTR("byte"), BYTE{200});
  add(OLESTR("float"), 0.1F);
  add(OLESTR("double"), 0.1);
  add(OLESTR("text"), static_cast<const OLECHAR*>(OLESTR("\u56FE\u5C42")));
}

/// What the library and the document register themselves.
bool IsOurs(const CZRClass& description) {
  return !(description.GetModuleID() == TestModule::kID) &&
         !(description.GetClassID() == CZDocument::kClassID) &&
         !(description.GetClassID() == CZDMAbsentObject::kClassID);
}

}  // namespace

ZRefPtr<CZDocument> DocumentOfEveryClass() {
  auto document = MakeObject<CZDocument, CZDocument>();
  document->SetName(OLESTR("Every class"));
  document->MakeDefaults();
  auto carrier = MakeObject<IZDMObject, CZDMPlainObject>();
  auto gone = MakeObject<IZDMObject, CZDMPlainObject>();
  auto manager = MakeObject<IZDMObjMgr, CZDMObjMgr>();
  carrier->SetName(OLESTR("Carrier"));
  document->AddTail(manager);
  manager->AddTail(gone);
  manager->AddTail(carrier);
  manager->SetCurrent(carrier);
  AddExtData(carrier);
  document->GetPIDManager()->QueryPID(carrier);

  for (const CZRClass* description : ZCore::GetZFactory()->GetClasses()) {
    if (!IsOurs(*description)) continue;
    const ZRefPtr<IZObject> made = Attached(description->Create()->GetIZObject());
    if (auto* object = ViewAs<IZDMObject>(made)) {
      object->SetName(FromUtf8(description->GetName()).c_str());
      document->AddTail(object);
      object->AddRelation(RelationTo(carrier));
    } else if (auto* relation = ViewAs<IZRelation>(made)) {
      if (auto* single = ViewAs<IZSingleReltn>(relation)) single->SetReltnObj(carrier);
      carrier->AddRelation(relation);
    }
    if (auto* proxy = dynamic_cast<CZDMProxyObject*>(made.Get())) {
      proxy->SetClassGuid(&kForeignClass);
      proxy->SetData("bytes of a stranger", 19);
    }
  }
  document->AddTail(MakeObject<IZDMObject, Foreign>());
  carrier->AddRelation(RelationTo(gone));
  gone->SetObjectValid(false);
  const auto stray = MakeObject<IZDMObject, CZDMPlainObject>();
  document->AddTail(stray);
  stray->SetOwner(carrier);
  manager->MoveToHead(manager->GetTailPosition());
  document->MoveToHead(document->GetTailPosition());
  return document;
}

}  // namespace zdm::test
