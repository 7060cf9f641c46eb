// The scale chooser. Its entries are copied but not stored.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyScaleIndex.h"
#include "zdm/properties/LabelledEntries.h"

class ZDM_API CZPropertyScaleIndex : public IZPropertyImpl<IZPropertyScaleIndex> {
  ZDM_OBJECT(CZPropertyScaleIndex)
 public:
  /// Appends the entries of `source` to those present.
  void CopyFrom(IZProperty* source) override;

  ULONG GetScaleCount() override { return added_; }
  void SetScale(double ratio) override { SetDouble(ratio); }
  double GetScale() override { return GetDouble(); }
  bool GetScaleText(double ratio, BSTR* label) override;
  void AddScale(double ratio, const OLECHAR* label) override;
  void GetFirstScale(double* ratio, BSTR* label) override { entries_.GetFirst(ratio, label); }
  bool GetNextScale(double* ratio, BSTR* label) override { return entries_.GetNext(ratio, label); }
  void RemoveAllScales() override { entries_.RemoveAll(); }
  void AddStandardScale(double ratio) override;
  void AddStandardScales() override;
  void AddScales(const double* ratios, LONG count) override;

 private:
  zdm::LabelledEntries<double> entries_;
  ULONG added_ = 0;
};
