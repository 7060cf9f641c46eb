#include "document/CZDispAttrib.h"

ZDM_OBJECT_BODY(CZDispAttrib)

void CZDispAttrib::CopyFrom(IZRelation* other) {
  IZRelationImpl::CopyFrom(other);
  if (other != nullptr && other->getZRClass() == gpDesc) {
    values_ = static_cast<CZDispAttrib*>(other)->values_;  // as nearly all are
  } else if (auto* source = dynamic_cast<zdm::DispValueSource*>(other)) {
    values_ = source->GetValues();
  }
}

// Display attribute record.
//   size      field
//     12      relation record (IZRelationImpl)
//   variable  display values (zdm::DispValues)
void CZDispAttrib::Save(IZStream* stream, IZDatabase* database) {
  IZRelationImpl::Save(stream, database);
  values_.Save(stream);
}

void CZDispAttrib::Load(IZStream* stream, IZDatabase* database) {
  IZRelationImpl::Load(stream, database);
  values_.Load(stream);
}

bool CZDispAttrib::JudgeSame(IZRelation* other) {
  auto* source = dynamic_cast<zdm::DispValueSource*>(other);
  return source != nullptr && source->GetValues() == values_;
}
