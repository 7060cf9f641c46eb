// The manager of a document's categories. Its index by number fills through AddCategory,
// InsertAfter, InsertBefore, AttachTail and AssertValid, and never through the other adds; the
// first category of a number stays in it as long as it lives, also after it was removed from the
// manager. The index is not stored: AssertValid fills it after loading.
#pragma once

#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/categories/ZCategoryReltnMap.h"
#include "zdm/framework/WeakView.h"
#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/module/ClassTable.h"

#include <map>

class ZDM_API CZDMCategoryMgr : public IZDMObjMgrImpl<IZCategoryMgr> {
  ZDM_OBJECT(CZDMCategoryMgr)
 public:
  using IZDMObjMgrImpl::CopyFrom;

  /// Named "*ZCategoryMgr".
  CZDMCategoryMgr();

  /// Filled by RebuildReltnMap; empty before.
  ZCategoryReltnMap& GetReltnMap() { return reltnMap_; }

  // IZDMObject and IZDMObjMgr.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// Indexes the objects of the list in its order.
  void AssertValid(IZDatabase* database) override;
  LONG InsertAfter(IZDMObject* object, LONGLONG* pos) override;
  LONG InsertBefore(IZDMObject* object, LONGLONG* pos) override;
  void AttachTail(IZObject* object) override;

  // IZCategoryMgr.
  void AddCategory(IZDMObject* object) override;
  IZCategory* GetCategoryByNumber(LONG number) override;
  void CreateCategoryReltnColl(IZReltnColl** out) override;
  void RebuildReltnMap() override;
  bool ApplyCategoryDispAttrib(ULONG number, IZObject* target) override;
  IZCategory* GetOrCreateCategory(ULONG number, const OLECHAR* name) override;

 private:
  void Index(IZObject* object);

  std::map<LONG, zdm::WeakView<IZCategory>> index_;
  ZCategoryReltnMap reltnMap_;
};
