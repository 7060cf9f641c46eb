#include "zdm/parameters/ParameterTarget.h"

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/IZReltnVisitor.h"

#include <utility>

namespace zdm {

void ParameterTarget::Make(bool diffusible) {
  if (reltn_ != nullptr) return;
  reltn_ = CreateAs<IZSingleReltn>(kPlainReltnClass);
  if (reltn_ != nullptr) reltn_->SetReltnDiffusible(diffusible);
}

/// Only records that objects brought along: one that the relation was given otherwise comes from an
/// ID table, and may have no object yet.
void ParameterTarget::Hold(OID* record) {
  if (record != held_) OID::GiveUp(std::exchange(held_, OID::Take(record)), nullptr);
}

void ParameterTarget::SetObject(IZDMObject* object, bool diffusible) {
  Make(diffusible);
  if (reltn_ == nullptr || object == nullptr) return;
  reltn_->SetReltnObj(object);
  Hold(reltn_->GetReltnObject() == object ? reltn_->GetReltnOID() : nullptr);
}

void ParameterTarget::Reset() {
  reltn_.Reset();
  Hold(nullptr);
}

ZRefPtr<IZSingleReltn> ParameterTarget::Exchange(ZRefPtr<IZSingleReltn> reltn) {
  std::swap(reltn_.p, reltn.p);
  return reltn;
}

bool ParameterTarget::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  if (reltn_ == nullptr) return false;
  const ZRefPtr<IZSingleReltn> offered = reltn_;
  const bool ends = visitor->Visit(root, owner, offered.Get());
  if (held_ != nullptr && offered->GetReltnOID() != held_) Hold(nullptr);
  return ends;
}

// One byte: 1 when the relation's own record follows, otherwise 0.

void ParameterTarget::Save(IZStream* stream, IZDatabase* database) const {
  const BYTE flag = reltn_ != nullptr ? 1 : 0;
  stream->Write(&flag, sizeof(flag));
  if (reltn_ != nullptr) reltn_->Save(stream, database);
}

void ParameterTarget::Load(IZStream* stream, IZDatabase* database, bool diffusible) {
  BYTE flag;
  stream->Read(&flag, sizeof(flag));
  if (flag != 1) return;
  Make(diffusible);
  if (reltn_ == nullptr) throw CAtlException(E_FAIL);
  reltn_->Load(stream, database);
  if (reltn_->GetReltnOID() != held_) Hold(nullptr);
}

}  // namespace zdm
