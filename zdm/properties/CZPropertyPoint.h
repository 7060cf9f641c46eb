// The point property. Its coordinates are not stored: an array has no form in a stream.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyPoint.h"

class ZDM_API CZPropertyPoint : public IZPropertyImpl<IZPropertyPoint> {
  ZDM_OBJECT(CZPropertyPoint)
 public:
  CZPropertyPoint();

  ULONG GetExtra3() override { return static_cast<ULONG>(number_); }
  void SetExtra3(ULONG value) override { number_ = static_cast<LONG>(value); }
  void ResetValue() override;
  /// Also takes which coordinates are uniform.
  void CopyFrom(IZProperty* source) override;
  /// Among points: a coordinate stays uniform when it is in both and differs by no more than 1e-5;
  /// false when none is.
  bool MergeWith(IZProperty* other) override;

  bool GetPoint(XYZ* out) override;
  void SetPoint(const XYZ& point) override;
  void SetUniformX(bool flag) override { isUniformX_ = flag; }
  bool IsUniformX() override { return isUniformX_; }
  void SetUniformY(bool flag) override { isUniformY_ = flag; }
  bool IsUniformY() override { return isUniformY_; }
  void SetUniformZ(bool flag) override { isUniformZ_ = flag; }
  bool IsUniformZ() override { return isUniformZ_; }
  void GetPair(double* first, double* second) override;
  void SetPair(double first, double second) override;
  void SetPointFromArray(const double* coordinates) override;
  void CombinePoint(const XYZ&) override {}

 private:
  bool isUniformX_ = true;
  bool isUniformY_ = true;
  bool isUniformZ_ = true;
  double first_ = 0.0;
  double second_ = 0.0;
  LONG number_ = -1;
};
