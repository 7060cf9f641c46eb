#include "zdm/parameters/CZDMParameter.h"

#include "zdm/relations/IZReltnDiffuse.h"

ZDM_OBJECT_BODY(CZDMParameter)

void CZDMParameter::CopyFrom(IZDMObject* source, LONG) {
  IZDMObjectImpl::CopyFrom(source, zdm::kCopyMode);
  if (auto* parameter = zdm::ViewAs<IZParameter>(source)) IZParameterImpl::CopyFrom(parameter);
}

bool CZDMParameter::JudgeSame(IZDMObject* other) {
  auto* parameter = zdm::ViewAs<IZParameter>(other);
  return parameter != nullptr && IsEqual(parameter);
}

bool CZDMParameter::VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) {
  LONG spread = -1;
  if (auto* diffuse = zdm::ViewAs<IZReltnDiffuse>(visitor)) diffuse->get_Status(&spread);
  if (spread != ZOS_AFFECTED) return IZDMObjectImpl::VisitReferences(root, visitor);
  if (JudgeStatus(ZOS_AFFECTED)) return true;
  SetStatus(ZOS_AFFECTED);
  if (reltnColl_ == nullptr) return true;
  for (LONGLONG pos = reltnColl_->GetHeadPosition(); pos != 0;) {
    const ZRefPtr<IZRelation> relation = reltnColl_->GetNext(pos);
    auto* single = zdm::ViewAs<IZSingleReltn>(relation.Get());
    if (single != nullptr) visitor->Visit(root, this, static_cast<IZRelation*>(single));
  }
  return true;
}

void CZDMParameter::GetDisplayName(BSTR* out) {
  *out = zdm::Bstr(OLESTR("CZDMParameter")).Detach();
}

void CZDMParameter::LoadOwnData(IZStream* stream, IZDatabase* database) {
  IZParameterImpl::LoadBody(stream, database);
}

void CZDMParameter::SaveOwnData(IZStream* stream, IZDatabase* database) {
  IZParameterImpl::SaveBody(stream, database);
}
