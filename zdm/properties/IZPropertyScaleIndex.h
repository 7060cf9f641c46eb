// A choice among drawing scales. A scale is a ratio, drawing length over real length, with a label;
// labels are never parsed. The value is the ratio chosen, whether or not it is among the entries.
// Labels handed out are copies for the caller (SysFreeString) and may be null.
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyScaleIndex : IZProperty {
  /// Scales ever added; removing does not count back.
  virtual ULONG GetScaleCount() = 0;        // 62
  virtual void SetScale(double ratio) = 0;  // 63
  /// 0 when the value is no double.
  virtual double GetScale() = 0;  // 64
  /// Label of the first entry within 1e-5; false and null if none.
  virtual bool GetScaleText(double ratio, BSTR* label) = 0;       // 65
  virtual void AddScale(double ratio, const OLECHAR* label) = 0;  // 66
  // The one cursor over the entries. GetFirstScale throws CAtlException(E_FAIL) when there are
  // none; GetNextScale answers false past the last one, and until the next GetFirstScale.
  virtual void GetFirstScale(double* ratio, BSTR* label) = 0;  // 67
  virtual bool GetNextScale(double* ratio, BSTR* label) = 0;   // 68
  virtual void RemoveAllScales() = 0;                          // 69
  /// Adds a scale with the label it has in ScaleLabels.def within 1e-4, or else a null one.
  virtual void AddStandardScale(double ratio) = 0;  // 70
  /// The 38 scales that ScaleLabels.def lists as standard.
  virtual void AddStandardScales() = 0;  // 71
  /// As AddStandardScale, for `count` ratios.
  virtual void AddScales(const double* ratios, LONG count) = 0;  // 72
};
