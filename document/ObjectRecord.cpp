#include "document/ObjectRecord.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"

#include <cstring>

namespace zdm {

bool IsFree(CZDocument& document, LONG id) {
  const OID* oid = id != kRootID ? document.GetOIDManager()->GetOIDByID(id) : nullptr;
  return oid != nullptr && oid->Object == nullptr;
}

void BindObject(CZDocument& document, LONG id, LONG ownerId, IZDMObject* object) {
  document.GetOIDManager()->RegisterSelf(id, object);
  if (ownerId != 0) object->SetOwnerOID(document.GetOIDByID(ownerId));
}

bool LoadGuarded(IZDMObject* object, const std::function<void()>& load) {
  struct Loading {
    IZDMObject* object;
    explicit Loading(IZDMObject* loaded) : object(loaded) { object->SetStatus(ZOS_LOADING); }
    ~Loading() { object->ClearStatus(ZOS_LOADING); }
  };
  try {
    const Loading loading(object);
    load();
    return true;
  } catch (const CAtlException& failure) {
    if (failure.m_hr == E_OUTOFMEMORY) throw;
    return false;
  }
}

bool LoadObject(CZDocument& document, LONG id, ULONG offset, std::span<const BYTE> record,
                IZStream* stream) {
  ObjectHeader header;
  if (record.size() < sizeof(header) + sizeof(ULONG)) return false;
  std::memcpy(&header, record.data(), sizeof(header));
  if (header.id != id || !IsFree(document, id)) return false;

  auto object = CreateAs<IZDMObject>(header.classId);
  if (object != nullptr) {
    ZCore::GetZFactory()->RegisterCreated(object, header.classId);
    BindObject(document, header.id, header.ownerId, object);
    object->GetOID()->AuxWord1 = header.auxWord1;  // the ID table does not store it
    const auto load = [&] {
      stream->Seek(offset, STREAM_SEEK_SET);
      object->Load(stream, &document);
      if (stream->GetPosition() != offset + record.size()) throw CAtlException(E_FAIL);
    };
    if (LoadGuarded(object, load)) {
      static_cast<void>(object.Detach());
      return true;
    }
    object.Reset();
  }
  auto absent = MakeObject<CZDMAbsentObject, CZDMAbsentObject>();
  BindObject(document, header.id, header.ownerId, absent);
  absent->TakeRecord(record, &document);
  static_cast<void>(absent.Detach());
  return true;
}

}  // namespace zdm
