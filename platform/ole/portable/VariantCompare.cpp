// VarCmp. Which comparison is used depends on the types alone, as in the system.
#include "platform/ole/portable/Variant.h"
#include "platform/ole/portable/VariantDecimal.h"
#include "platform/ole/portable/VariantTypes.h"

namespace {

template <typename T>
HRESULT Order(const T& left, const T& right) {
  if (left == right) return static_cast<HRESULT>(VARCMP_EQ);
  return static_cast<HRESULT>(left < right ? VARCMP_LT : VARCMP_GT);
}

/// A value as `type`; what is out of its range goes to the end it lies at.
class As {
 public:
  As(const VARIANT& value, VARTYPE type) {
    VariantInit(&value_);
    result_ = VariantChangeTypeEx(&value_, &value, 0, 0, type);
    // A DECIMAL that stays one is not looked at on the way.
    if (value_.vt == VT_DECIMAL && !zdm::IsValid(value_.decVal)) result_ = E_INVALIDARG;
    if (result_ != DISP_E_OVERFLOW) return;
    VARIANT real;
    VariantInit(&real);
    result_ = VariantChangeTypeEx(&real, &value, 0, 0, VT_R8);
    beyond_ = real.dblVal < 0 ? -1 : 1;
  }

  HRESULT result() const { return result_; }
  int beyond() const { return beyond_; }  // -1 or 1 out of range
  const VARIANT& value() const { return value_; }

 private:
  VARIANT value_;  // holds numbers only
  HRESULT result_;
  int beyond_ = 0;
};

/// Compares two numbers of a type that both can be turned into.
HRESULT CompareAs(const VARIANT& left, const VARIANT& right, VARTYPE type) {
  const As a(left, type);
  const As b(right, type);
  if (FAILED(a.result())) return a.result();
  if (FAILED(b.result())) return b.result();
  if (a.beyond() != 0 || b.beyond() != 0) return Order(a.beyond(), b.beyond());
  switch (type) {
    case VT_DECIMAL: {
      const int order = Compare(zdm::Decimal::FromDECIMAL(a.value().decVal),
                                zdm::Decimal::FromDECIMAL(b.value().decVal));
      return Order(order, 0);
    }
    case VT_R4:
      return Order(a.value().fltVal, b.value().fltVal);
    case VT_R8:
      return Order(a.value().dblVal, b.value().dblVal);
    case VT_CY:
      return Order(a.value().cyVal.int64, b.value().cyVal.int64);
    default:
      return Order(a.value().llVal, b.value().llVal);
  }
}

/// Types that can be compared at all.
bool IsComparable(VARTYPE type) {
  switch (type) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_UI1:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_BOOL:
    case VT_DECIMAL:
      return true;
    default:
      return false;
  }
}

/// Types whose code the comparison does not know.
bool IsUnknown(VARTYPE type) {
  return type == VT_INT || type == VT_UINT || !zdm::IsVariantType(type) ||
         (type & ~VT_TYPEMASK) != 0;
}

}  // namespace

HRESULT VarCmp(VARIANT* left, VARIANT* right, LCID locale, ULONG flags) {
  if (left == nullptr || right == nullptr) return E_INVALIDARG;
  // The system takes a machine integer for 32 bits on the left and does not know it on the right,
  // where 64 unsigned bits are unknown, too.
  const VARTYPE leftType = left->vt == VT_INT ? VARTYPE{VT_I4} : left->vt;
  const VARTYPE rightType = right->vt;
  if (IsUnknown(leftType) || IsUnknown(rightType) || rightType == VT_UI8) return DISP_E_BADVARTYPE;
  if (leftType == VT_ERROR && rightType == VT_ERROR) return static_cast<HRESULT>(VARCMP_EQ);
  if (!IsComparable(leftType) || !IsComparable(rightType)) return DISP_E_TYPEMISMATCH;

  const auto either = [&](VARTYPE type) { return leftType == type || rightType == type; };
  if (either(VT_NULL)) return static_cast<HRESULT>(VARCMP_NULL);
  if (either(VT_BSTR)) {
    const bool leftText = leftType == VT_BSTR || leftType == VT_EMPTY;
    const bool rightText = rightType == VT_BSTR || rightType == VT_EMPTY;
    if (leftText && rightText) {
      return VarBstrCmp(leftType == VT_BSTR ? left->bstrVal : nullptr,
                        rightType == VT_BSTR ? right->bstrVal : nullptr, locale, flags);
    }
    return static_cast<HRESULT>(leftText ? VARCMP_GT : VARCMP_LT);
  }
  for (const VARTYPE type : {VT_DECIMAL, VT_R4, VT_R8}) {
    if (either(type)) return CompareAs(*left, *right, type);
  }
  if (either(VT_DATE)) return CompareAs(*left, *right, VT_R8);
  return CompareAs(*left, *right, either(VT_CY) ? VT_CY : VT_I8);
}
