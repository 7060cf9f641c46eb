// The enumerated choice. Its entries are copied and stored with it.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyIndex.h"
#include "zdm/properties/LabelledEntries.h"

class ZDM_API CZPropertyIndex : public IZPropertyImpl<IZPropertyIndex> {
  ZDM_OBJECT(CZPropertyIndex)
 public:
  CZPropertyIndex();

  /// Appends the entries of `source` to those present.
  void CopyFrom(IZProperty* source) override;
  LONG GetLong() override { return static_cast<LONG>(GetIndex()); }
  void SetLong(LONG value) override { SetIndex(static_cast<ULONG>(value)); }
  ULONG GetExtra3() override { return GetIndex(); }
  void SetExtra3(ULONG value) override { SetIndex(value); }
  void Save(IZStream* stream) override;
  /// Appends the entries read to those present.
  void Load(IZStream* stream) override;

  ULONG GetEntryCount() override { return entries_.GetCount(); }
  bool GetEntryText(ULONG index, BSTR* label) override;
  void AddEntry(ULONG index, const OLECHAR* label) override;
  void GetFirstEntry(ULONG* index, BSTR* label) override { entries_.GetFirst(index, label); }
  bool GetNextEntry(ULONG* index, BSTR* label) override { return entries_.GetNext(index, label); }
  void RemoveAllEntries() override { entries_.RemoveAll(); }

 private:
  ULONG GetIndex() const;
  void SetIndex(ULONG index) { SetShort(static_cast<SHORT>(index)); }

  zdm::LabelledEntries<ULONG> entries_;
};
