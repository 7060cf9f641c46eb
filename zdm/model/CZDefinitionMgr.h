// The manager of a document's definitions; see IZDefinitionMgr.h. What it refers to may be deleted.
// Names of indexes: its own, stored with it, not copied. Stream form: above SaveOwnData in
// CZDefinitionMgr.cpp.
#pragma once

#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDefinitionMgr : public IZDMObjMgrImpl<IZDefinitionMgr> {
  ZDM_OBJECT(CZDefinitionMgr)
 public:
  /// Named "*DefinitionMgr".
  CZDefinitionMgr();
  CZDefinitionMgr(const CZDefinitionMgr&) = delete;
  CZDefinitionMgr& operator=(const CZDefinitionMgr&) = delete;
  ~CZDefinitionMgr() override;

  // IZDefinitionMgr.
  IZDefinition* FindDefinition(const GUID* key) override;
  void AddDefinition(IZObject* definition) override;
  void GetNameByKey(LONG key, BSTR* out) override;
  void RegisterName(LONG key, const OLECHAR* name) override;
  ZDefinitionNames* GetNameTable() override { return &names_; }
  void SortKeysByRegistration(std::vector<LONG>& keys) override;
  bool HasDefinition(const GUID* key) override;

  // IZDMObject.
  /// A count of names that cannot be right throws CAtlException(E_FAIL); names that were read stay.
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

 private:
  void Insert(ULONG seq, LONG key, zdm::Bstr name);
  template <class Accepts>
  IZDefinition* FindFirst(Accepts accepts);

  ZDefinitionNames names_;
};
