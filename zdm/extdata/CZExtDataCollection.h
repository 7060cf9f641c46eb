// The items of one group, in order, over the list that all collections share. An element may be
// null; such a one is neither saved nor copied. Stream form: above Save in CZExtDataCollection.cpp.
#pragma once

#include "zdm/extdata/IZExtData.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/framework/IZListImpl.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZExtDataCollection : public IZListImpl<IZExtDataCollection, IZExtData> {
  ZDM_OBJECT(CZExtDataCollection)
 public:
  using IZListImpl::Clone;

  CZExtDataCollection() = default;
  ~CZExtDataCollection() override;

  // Its own operation, after getVersion.
  virtual bool IsDumpRef() { return false; }

  void Clone(IZExtDataCollection** out) override;
  /// Null and the collection itself change nothing; an item that cannot be cloned is left out.
  void CopyFrom(IZExtDataCollection* source) override;
  /// A collection that is met again inside itself is written as an empty one, so that saving ends;
  /// nesting that could not be read back throws CAtlException(E_FAIL).
  void Save(IZStream* stream, IZDatabase* database) override;
  /// An item whose class is unknown, or fails to load, becomes a proxy that keeps its bytes.
  void Load(IZStream* stream, IZDatabase* database) override;

 private:
  void LoadItem(IZStream* stream, IZDatabase* database);
  void LoadCustomItem(IZStream* stream, IZDatabase* database);

  bool saving_ = false;
};
