// The extended data of one object: an ordered map from key to collection, one reference each.
// Stream form: above Save in CZExtDataMgr.cpp.
#pragma once

#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/extdata/IZExtDataMgr.h"
#include "zdm/framework/IZObjectImpl.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/module/ClassTable.h"

#include <map>

class ZDM_API CZExtDataMgr : public IZObjectImpl<IZExtDataMgr> {
  ZDM_OBJECT(CZExtDataMgr)
 public:
  using IZObjectImpl::Clone;

  CZExtDataMgr() = default;
  CZExtDataMgr(const CZExtDataMgr&) = delete;
  CZExtDataMgr& operator=(const CZExtDataMgr&) = delete;
  ~CZExtDataMgr() override;

  // Its own operation, after getVersion.
  virtual bool IsDumpRef() { return false; }

  IZExtDataCollection* GetCollection(const GUID& key) override;
  IZExtDataCollection* QueryCollection(const GUID& key) override;
  void RemoveCollection(const GUID& key) override;
  void RemoveAll() override;
  void Clone(IZExtDataMgr** out) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  /// A collection that breaks off takes no other's place.
  void Load(IZStream* stream, IZDatabase* database) override;
  void GetKeys(SAFEARRAY** out) override;

 private:
  struct KeyOrder {
    bool operator()(const GUID& left, const GUID& right) const;
  };
  using Groups = std::map<GUID, ZRefPtr<IZExtDataCollection>, KeyOrder>;

  Groups groups_;
};
