#include "zdm/categories/CZDMCategoryMgr.h"

#include "zdm/categories/CategoryTree.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/host/IZCategoryDispAttrib.h"
#include "zdm/host/IZDMModel.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/identity/ObjectOptions.h"

ZDM_OBJECT_BODY(CZDMCategoryMgr)

CZDMCategoryMgr::CZDMCategoryMgr() {
  SetName(OLESTR("*ZCategoryMgr"));
  ClearOptionAllowed(zdm::kReferencesCount);
}

void CZDMCategoryMgr::CopyFrom(IZDMObject* source, LONG) {
  IZDMObjMgrImpl::CopyFrom(source, zdm::kCopyMode);
}

// The index.

void CZDMCategoryMgr::Index(IZObject* object) {
  auto* category = zdm::ViewAs<IZCategory>(object);
  if (category == nullptr) return;
  auto& entry = index_[static_cast<LONG>(category->GetNumber())];
  if (entry.Get() == nullptr) entry = zdm::WeakView(category);
}

IZCategory* CZDMCategoryMgr::GetCategoryByNumber(LONG number) {
  const auto found = index_.find(number);
  return found != index_.end() ? found->second.Get() : nullptr;
}

void CZDMCategoryMgr::AssertValid(IZDatabase* database) {
  IZDMObjMgrImpl::AssertValid(database);
  for (LONGLONG pos = GetHeadPosition(); pos != 0;) Index(GetNext(pos));
}

LONG CZDMCategoryMgr::InsertAfter(IZDMObject* object, LONGLONG* pos) {
  const LONG result = IZDMObjMgrImpl::InsertAfter(object, pos);
  if (SUCCEEDED(result)) Index(object);
  return result;
}

LONG CZDMCategoryMgr::InsertBefore(IZDMObject* object, LONGLONG* pos) {
  const LONG result = IZDMObjMgrImpl::InsertBefore(object, pos);
  if (SUCCEEDED(result)) Index(object);
  return result;
}

void CZDMCategoryMgr::AttachTail(IZObject* object) {
  IZDMObjMgrImpl::AttachTail(object);
  Index(object);
}

void CZDMCategoryMgr::AddCategory(IZDMObject* object) {
  AddTail(object);
  Index(object);
}

// Relations.

void CZDMCategoryMgr::CreateCategoryReltnColl(IZReltnColl** out) {
  *out = nullptr;
  const zdm::TreeStep<zdm::Counting>::Sum sum;
  auto relations = zdm::NewOf<IZReltnColl, CZReltnColl>();
  for (LONGLONG pos = GetHeadPosition(); pos != 0;) {
    auto* category = zdm::ViewAs<IZCategory>(GetNext(pos));
    if (category == nullptr || category->GetParentCategory() != nullptr) continue;
    const ZRefPtr<IZCategoryReltn> tree = category->CreateCategoryReltn();
    if (tree != nullptr) relations->AddTail(tree.Get());
  }
  *out = relations.Detach();
}

void CZDMCategoryMgr::RebuildReltnMap() {
  reltnMap_.Initialize();
  ZRefPtr<IZReltnColl> relations;
  CreateCategoryReltnColl(relations.Out());
  reltnMap_.SetCategoryColl(relations);
}

// Defaults of the document.

bool CZDMCategoryMgr::ApplyCategoryDispAttrib(ULONG number, IZObject* target) {
  auto* display = zdm::ViewAs<IZDisplay>(target);
  IZCategory* category = GetCategoryByNumber(static_cast<LONG>(number));
  if (display == nullptr || category == nullptr) return false;
  const auto attribute = zdm::CreateAs<IZCategoryDispAttrib>(zdm::kCategoryDispAttribClass);
  if (attribute == nullptr) return false;
  attribute->SetCategory(category);
  attribute->SetEnabled(true);
  attribute->AttachTo(display);
  return true;
}

IZCategory* CZDMCategoryMgr::GetOrCreateCategory(ULONG number, const OLECHAR* name) {
  ZRefPtr<IZCategory> category = GetCategoryByNumber(static_cast<LONG>(number));
  if (category != nullptr) return category.Detach();
  auto* model = zdm::ViewAs<IZDMModel>(GetDatabase());
  IZDMObjMgr* materials = model != nullptr ? model->GetMaterialMgr() : nullptr;
  IZDispAttrib* attribute = model != nullptr ? model->GetDefaultDispAttrib() : nullptr;
  if (materials == nullptr || attribute == nullptr) return nullptr;
  IZDMObject* material = materials->FindByName(zdm::kDefaultMaterialName);
  category = zdm::CreateAs<IZCategory, CZDMCategory>();
  if (category == nullptr) return nullptr;
  category->SetMaterial(material);
  category->SetReference(material);
  category->SetNumber(number);
  category->SetCategoryName(name);
  category->SetFlag2000(false);
  category->SetProjectionDispAttrib(attribute);
  category->SetSectionDispAttrib(attribute);
  AddCategory(category);
  return category.Detach();
}
