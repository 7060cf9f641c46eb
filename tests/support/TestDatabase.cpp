#include "tests/support/TestDatabase.h"

#include "zdm/identity/OID.h"

#include <cstring>

namespace zdm::test {

ZDM_OBJECT_BODY(TestDatabase)

TestDatabase::TestDatabase() {
  RegisterDocumentClasses();
  SetID(static_cast<ULONG>(-1));
  SetOwner(this);
  SetObjectValid(true);
  oids.SetRootOID(GetOID());
  oids.Init();
}

void TestDatabase::CreateByType(BYTE type, IZDMObject** out) {
  *out = type == 7 ? zdm::MakeObject<IZDMObject, CZDMPlainObject>().Detach() : nullptr;
}

void TestDatabase::Add(IZDMObject* object, LONG id) {
  object->SetOwner(this);
  if (id == 0) {
    oids.AssignItemID(object, false, false);
    return;
  }
  object->SetID(static_cast<ULONG>(id));
  object->SetStatus(ZOS_ATTACHED);
  object->SetStatus(ZOS_VALID);
  oids.AddOID(object->GetOID());
  oids.ReSort();
}

ZRefPtr<IZDMObject> TestDatabase::MakeObject(const OLECHAR* name, LONG id) {
  auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetName(name);
  Add(object, id);
  return object;
}

ZRefPtr<IZSingleReltn> RelationTo(IZDMObject* target) {
  auto relation = MakeObject<IZSingleReltn, CZPlainSingleReltn>();
  relation->SetReltnObj(target);
  return relation;
}

std::vector<BYTE> BytesOf(IZRelation& object, IZDatabase* database) {
  ByteStream stream;
  object.Save(&stream, database);
  return stream.GetBytes();
}

ULONGLONG LoadBytes(IZRelation& object, std::vector<BYTE> bytes, IZDatabase* database) {
  ByteStream stream(std::move(bytes));
  object.Load(&stream, database);
  return stream.GetPosition();
}

LONG NumberAt(const std::vector<BYTE>& bytes, std::size_t offset) {
  LONG number = 0;
  std::memcpy(&number, bytes.data() + offset, sizeof(number));
  return number;
}

}  // namespace zdm::test
