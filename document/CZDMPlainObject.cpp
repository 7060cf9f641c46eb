#include "document/CZDMPlainObject.h"

#include "document/Counterpart.h"

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
  return IZDMObjectImpl::JudgeSame(other) ||
         (other != nullptr && zdm::AreCounterparts(*this, *other));
}

// Own data: the name, as IZStream::WriteBSTR writes it.
void CZDMPlainObject::SaveOwnData(IZStream* stream, IZDatabase*) { stream->WriteBSTR(name_.Get()); }

void CZDMPlainObject::LoadOwnData(IZStream* stream, IZDatabase*) {
  zdm::Bstr name;
  stream->ReadBSTR(name.Out());
  name_ = std::move(name);
}
