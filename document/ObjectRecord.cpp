#include "document/ObjectRecord.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"

#include <cstring>

namespace zdm {

namespace {

void Bind(CZDocument& document, const ObjectHeader& header, IZDMObject* object) {
  COIDManager& ids = *document.GetOIDManager();
  ids.RegisterSelf(header.id, object);
  if (header.ownerId != 0) object->SetOwnerOID(document.GetOIDByID(header.ownerId));
}

/// Loads all of the record and nothing beyond it.
bool Load(CZDocument& document, IZDMObject* object, ULONG offset, std::size_t length,
          IZStream* stream) {
  object->SetStatus(ZOS_LOADING);
  bool isLoaded = false;
  try {
    stream->Seek(offset, STREAM_SEEK_SET);
    object->Load(stream, &document);
    isLoaded = stream->GetPosition() == offset + length;
  } catch (const CAtlException& failure) {
    if (failure.m_hr == E_OUTOFMEMORY) throw;
  }
  object->ClearStatus(ZOS_LOADING);
  return isLoaded;
}

}  // namespace

bool LoadObject(CZDocument& document, LONG id, ULONG offset, std::span<const BYTE> record,
                IZStream* stream) {
  ObjectHeader header;
  if (record.size() < sizeof(header) + sizeof(ULONG)) return false;
  std::memcpy(&header, record.data(), sizeof(header));
  if (header.id != id || id == kRootID) return false;
  OID* oid = document.GetOIDManager()->GetOIDByID(id);
  if (oid == nullptr || oid->Object != nullptr) return false;

  auto object = CreateAs<IZDMObject>(header.classId);
  if (object != nullptr) {
    ZCore::GetZFactory()->RegisterCreated(object, header.classId);
    Bind(document, header, object);
    if (Load(document, object, offset, record.size(), stream)) {
      static_cast<void>(object.Detach());
      return true;
    }
    object.Reset();
  }
  auto absent = MakeObject<CZDMAbsentObject, CZDMAbsentObject>();
  Bind(document, header, absent);
  absent->TakeRecord(record, &document);
  static_cast<void>(absent.Detach());
  return true;
}

}  // namespace zdm
