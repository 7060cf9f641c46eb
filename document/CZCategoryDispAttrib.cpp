#include "document/CZCategoryDispAttrib.h"

#include "platform/core/IZStream.h"
#include "zdm/categories/IZCategorizing.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/relations/IZReltnVisitor.h"

ZDM_OBJECT_BODY(CZCategoryDispAttrib)

IZCategory* CZCategoryDispAttrib::GetCategory() const {
  return category_ != nullptr ? zdm::ViewAs<IZCategory>(category_->Object) : nullptr;
}

zdm::DispValues CZCategoryDispAttrib::GetValues() {
  IZCategory* category = isEnabled_ ? GetCategory() : nullptr;
  if (category == nullptr) return {};
  IZDispAttrib* attribute = category->GetProjectionDispAttrib();
  bool isVisible = category->IsCategoryVisible();
  auto* categorizing = zdm::ViewAs<IZCategorizing>(category);
  if (categorizing != nullptr && categorizing->GetCategoryReltn() != nullptr) {
    attribute = categorizing->GetCategorizedDispAttrib(true);
    isVisible = categorizing->IsCategorizedVisible();
  }
  auto* source = dynamic_cast<zdm::DispValueSource*>(attribute);
  zdm::DispValues values = source != nullptr ? source->GetValues() : zdm::DispValues();
  values.isVisible = values.isVisible && isVisible;
  return values;
}

void CZCategoryDispAttrib::SetCategory(IZCategory* category) {
  category_ = category != nullptr ? category->GetOID() : nullptr;
  zdm::ChangeWatch::Changed(*this);
}

void CZCategoryDispAttrib::AttachTo(IZDisplay* display) {
  if (display != nullptr) display->AttachDispAttrib(this);
}

void CZCategoryDispAttrib::CopyFrom(IZRelation* other) {
  IZRelationImpl::CopyFrom(other);
  auto* source = dynamic_cast<CZCategoryDispAttrib*>(other);
  if (source == nullptr) return;
  category_ = source->category_;
  zdm::ChangeWatch::Changed(*this);
  isEnabled_ = source->isEnabled_;
}

// Category display attribute record, 17 bytes, little-endian.
//   offset  size  field
//        0    12  relation record (IZRelationImpl)
//       12     4  ID of the category, 0 for none
//       16     1  1 when enabled, else 0
void CZCategoryDispAttrib::Save(IZStream* stream, IZDatabase* database) {
  IZRelationImpl::Save(stream, database);
  const LONG id = category_ != nullptr ? category_->ID : 0;
  stream->Write(&id, sizeof(id));
  stream->WriteFlag(isEnabled_);
}

void CZCategoryDispAttrib::Load(IZStream* stream, IZDatabase* database) {
  IZRelationImpl::Load(stream, database);
  LONG id;
  stream->Read(&id, sizeof(id));
  isEnabled_ = stream->ReadFlag();
  category_ = id != 0 && database != nullptr ? database->GetOIDByID(id) : nullptr;
  zdm::ChangeWatch::Changed(*this);
}

bool CZCategoryDispAttrib::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  zdm::ChangeWatch::Watch(*this);
  const OID* const category = category_;
  if (category == nullptr) return false;
  const bool isDone = visitor->MapOID(root, owner, this, &category_);
  if (category_ != category) zdm::ChangeWatch::Changed(*this);
  return isDone;
}

bool CZCategoryDispAttrib::JudgeSame(IZRelation* other) {
  auto* attribute = dynamic_cast<CZCategoryDispAttrib*>(other);
  return attribute != nullptr && attribute->category_ == category_ &&
         attribute->isEnabled_ == isEnabled_;
}
