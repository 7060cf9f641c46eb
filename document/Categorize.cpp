#include "document/Categorize.h"

#include "document/CZDocument.h"
#include "platform/ole/CAtlException.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/relations/IZReltnColl.h"

namespace zdm {

IZCategoryReltn* GetCategoryReltn(IZDMObject& object) {
  IZReltnColl* relations = object.GetReltnColl();
  if (relations == nullptr) return nullptr;
  for (LONGLONG pos = relations->GetValidHeadPosition(); pos != 0;) {
    if (auto* relation = ViewAs<IZCategoryReltn>(relations->GetValidNext(pos))) return relation;
  }
  return nullptr;
}

IZCategory* SetCategory(CZDocument& document, IZDMObject& object, LONG number, WideView name) {
  if (number < 1) throw CAtlException(E_INVALIDARG);
  document.MakeDefaults();
  const auto category = Attached(document.GetCategoryMgr()->GetOrCreateCategory(
      static_cast<ULONG>(number), WideString(name).c_str()));
  if (category == nullptr) throw CAtlException(E_FAIL);
  IZCategoryReltn* former = GetCategoryReltn(object);
  if (former != nullptr && former->GetCategory() == category) return category;
  const ZRefPtr<IZCategoryReltn> relation = category->CreateCategoryReltn();
  if (relation == nullptr) throw CAtlException(E_FAIL);
  if (former != nullptr) object.GetReltnColl()->RemoveItem(former);
  object.AddRelation(relation);
  document.SetModified(true);
  return category;
}

}  // namespace zdm
