#include "zdm/properties/CZPropertyPoint.h"

#include "zdm/framework/QueryZInterface.h"
#include "zdm/properties/PropertyType.h"

#include <cmath>

ZDM_OBJECT_BODY(CZPropertyPoint)

namespace {

constexpr VARTYPE kPointType = VT_ARRAY | VT_R8;
constexpr ULONG kCoordinates = 3;

/// False, and `*point` unchanged, for anything but an array of three doubles.
bool ReadPoint(const VARIANT& value, XYZ* point) {
  if (value.vt != kPointType || SafeArrayGetDim(value.parray) != 1) return false;
  LONG first = 0;
  LONG last = 0;
  if (FAILED(SafeArrayGetLBound(value.parray, 1, &first)) ||
      FAILED(SafeArrayGetUBound(value.parray, 1, &last)) ||
      LONGLONG{last} - first + 1 != kCoordinates) {
    return false;
  }
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(value.parray, &data))) return false;
  *point = XYZ::FromArray(static_cast<const double*>(data));
  SafeArrayUnaccessData(value.parray);
  return true;
}

bool Same(double left, double right) {
  constexpr double kTolerance = 1e-5;
  return std::abs(left - right) <= kTolerance;
}

}  // namespace

CZPropertyPoint::CZPropertyPoint() { record_.type = zdm::kPropertyPoint; }

void CZPropertyPoint::ResetValue() {
  isUniformX_ = isUniformY_ = isUniformZ_ = true;
  IZPropertyImpl::ResetValue();
}

void CZPropertyPoint::CopyFrom(IZProperty* source) {
  if (!TakeFrom(source)) return;
  const auto& from = static_cast<CZPropertyPoint&>(*source);
  isUniformX_ = from.isUniformX_;
  isUniformY_ = from.isUniformY_;
  isUniformZ_ = from.isUniformZ_;
}

bool CZPropertyPoint::MergeWith(IZProperty* other) {
  auto* point = zdm::ViewAs<IZPropertyPoint>(other);
  if (point == nullptr || !point->IsFlag20()) return IZPropertyImpl::MergeWith(other);
  XYZ own;
  XYZ others;
  const bool alike = GetPoint(&own) == point->GetPoint(&others);  // both a point, or both none
  isUniformX_ = isUniformX_ && point->IsUniformX() && alike && Same(own.x, others.x);
  isUniformY_ = isUniformY_ && point->IsUniformY() && alike && Same(own.y, others.y);
  isUniformZ_ = isUniformZ_ && point->IsUniformZ() && alike && Same(own.z, others.z);
  return isUniformX_ || isUniformY_ || isUniformZ_;
}

bool CZPropertyPoint::GetPoint(XYZ* out) {
  *out = {};
  return ReadPoint(record_.value.Get(), out);
}

void CZPropertyPoint::SetPoint(const XYZ& point) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_R8, 0, kCoordinates);
  if (array == nullptr) throw CAtlException(E_OUTOFMEMORY);
  VARIANT value;
  VariantInit(&value);
  value.vt = kPointType;
  value.parray = array;
  record_.value.Attach(value);
  void* data = nullptr;
  const HRESULT result = SafeArrayAccessData(array, &data);
  if (FAILED(result)) throw CAtlException(result);
  point.ToArray(static_cast<double*>(data));
  SafeArrayUnaccessData(array);
}

void CZPropertyPoint::GetPair(double* first, double* second) {
  *first = first_;
  *second = second_;
}

void CZPropertyPoint::SetPair(double first, double second) {
  first_ = first;
  second_ = second;
}

void CZPropertyPoint::SetPointFromArray(const double* coordinates) {
  const auto number = static_cast<LONG>(GetExtra3());
  if (number < 1) return;
  SetPoint(XYZ::FromArray(coordinates + 4 * LONGLONG{number} - 3));
}
