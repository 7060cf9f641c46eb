#include "zdm/model/CZDefinition.h"

#include "zdm/framework/CreateAs.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZProperty.h"
#include "zdm/properties/IZPropertyColl.h"

ZDM_OBJECT_BODY(CZDefinition)

CZDefinition::CZDefinition() { ClearOptionAllowed(zdm::kReferencesCount); }
CZDefinition::~CZDefinition() = default;

// The property.

void CZDefinition::SetProperty(IZProperty* property, bool share) {
  if (property_ != nullptr && property != nullptr && property_->EqualTo(property)) return;
  property_ = share ? ZRefPtr<IZProperty>(property) : zdm::CloneAs<IZProperty>(property);
}

void CZDefinition::GetName(BSTR* out) {
  if (out != nullptr && property_ != nullptr) property_->GetName(out);
}

GUID* CZDefinition::GetKey(GUID* out) {
  if (property_ != nullptr) return property_->GetGUID(out);
  *out = GUID_UNSET;
  return out;
}

bool CZDefinition::MatchKey(const GUID& key) {
  return property_ != nullptr && property_->HasGUID(key);
}

ULONG CZDefinition::PropertyCall() { return property_ != nullptr ? property_->GetType() : 0; }

void CZDefinition::AddPropertyCopyTo(IZPropertyColl* coll) {
  const auto copy = zdm::CloneAs<IZProperty>(property_);
  if (copy != nullptr && coll != nullptr) coll->AddTail(copy.Get());
}

void CZDefinition::AssertValid(IZDatabase*) {
  if (property_ != nullptr) property_->Reserved60();
}

// The manager.

IZDefinitionMgr* CZDefinition::GetDefinitionMgr() {
  return zdm::ViewAs<IZDefinitionMgr>(GetOwner());
}

void CZDefinition::GetIndexName(BSTR* out) {
  if (IZDefinitionMgr* manager = GetDefinitionMgr()) manager->GetNameByKey(index_, out);
}

// Copying and comparing.

void CZDefinition::SetExtra(const ZDefinitionExtra* extra) {
  if (extra == extra_.get()) return;
  extra_ = extra != nullptr ? std::make_unique<ZDefinitionExtra>(*extra) : nullptr;
}

void CZDefinition::CopyFrom(IZDMObject* source, LONG) {
  IZDMObjectImpl::CopyFrom(source, zdm::kCopyMode);
  auto* definition = zdm::ViewAs<IZDefinition>(source);
  if (definition == nullptr) return;
  kind_ = definition->GetKind();
  index_ = definition->GetIndex();
  flags_ = definition->GetFlags();
  SetProperty(definition->GetProperty(), false);
  SetExtra(definition->GetExtra());
}

bool CZDefinition::JudgeSame(IZDMObject* other) {
  auto* definition = zdm::ViewAs<IZDefinition>(other);
  if (definition == nullptr) return false;
  GUID own;
  GUID others;
  return *GetKey(&own) == *definition->GetKey(&others);
}

// Own data, behind the parameters.
//   size      field
//      4      index, signed
//      4      kind
//     16      class id of the property; zeros without one, and for one that no factory makes
//   variable  the property's own record; nothing behind zeros
//      1      1 when the extra data follow, else 0
//     24      extra data as they are
void CZDefinition::SaveOwnData(IZStream* stream, IZDatabase*) {
  stream->Write(&index_, sizeof(index_));
  stream->Write(&kind_, sizeof(kind_));
  GUID classId = GUID_NULL;
  if (property_ != nullptr) property_->GetClassID(&classId);
  stream->Write(&classId, sizeof(classId));
  if (!(classId == GUID_NULL)) property_->Save(stream);
  const BYTE hasExtra = extra_ != nullptr ? 1 : 0;
  stream->Write(&hasExtra, sizeof(hasExtra));
  if (extra_ != nullptr) stream->Write(extra_.get(), sizeof(*extra_));
}

void CZDefinition::LoadOwnData(IZStream* stream, IZDatabase*) {
  struct {
    LONG index;
    ULONG kind;
    GUID propertyClass;
  } head;
  static_assert(sizeof(head) == 24, "read as it lies");
  stream->Read(&head, sizeof(head));
  index_ = head.index;
  kind_ = head.kind;
  ZRefPtr<IZProperty> property;
  if (!(head.propertyClass == GUID_NULL)) {
    property = zdm::CreateAs<IZProperty>(head.propertyClass);
    if (property == nullptr) throw CAtlException(E_FAIL);
    property->Load(stream);
  }
  property_ = property;
  BYTE hasExtra;
  stream->Read(&hasExtra, sizeof(hasExtra));
  if (hasExtra != 1) return;
  ZDefinitionExtra extra;
  stream->Read(&extra, sizeof(extra));
  extra_ = std::make_unique<ZDefinitionExtra>(extra);
}
