#include "document/CZDMPlainObject.h"

#include <utility>

ZDM_OBJECT_BODY(CZDMPlainObject)

void CZDMPlainObject::GetName(BSTR* name) {
  if (!name_.IsNull()) name_.CopyTo(name);
}

void CZDMPlainObject::CopyFrom(IZDMObject* source, LONG mode) {
  if (source == nullptr) return;
  zdm::Bstr name;
  source->GetName(name.Out());
  IZDMObjectImpl::CopyFrom(source, mode);
  name_ = std::move(name);
}

bool CZDMPlainObject::JudgeSame(IZDMObject* other) {
  if (IZDMObjectImpl::JudgeSame(other)) return true;
  if (other == nullptr || other->GetID() != GetID() || GetID() == 0) return false;
  if (!(other->GetZRID() == GetZRID())) return false;
  const IZDatabase* here = GetDatabase();
  const IZDatabase* there = other->GetDatabase();
  return here != nullptr && there != nullptr && here != there;
}

// Own data: the name, as IZStream::WriteBSTR writes it.
void CZDMPlainObject::SaveOwnData(IZStream* stream, IZDatabase*) { stream->WriteBSTR(name_.Get()); }

void CZDMPlainObject::LoadOwnData(IZStream* stream, IZDatabase*) {
  zdm::Bstr name;
  stream->ReadBSTR(name.Out());
  name_ = std::move(name);
}
