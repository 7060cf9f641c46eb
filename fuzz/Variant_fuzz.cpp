// Hostile bytes as a value in a stream: read, copied, converted to every type, compared with what
// came of that, written back and read again. The same bytes as the fields of a DECIMAL, which no
// stream form vouches for.
#include "fuzz/Fuzz.h"
#include "platform/ole/Variant.h"
#include "platform/ole/VariantStream.h"
#include "tests/support/TestStream.h"

#include <cmath>
#include <cstring>

namespace {

using namespace zdm::test;
using zdm::Variant;
using Bytes = std::vector<BYTE>;

bool IsNan(const Variant& value) {
  const VARIANT& v = value.Get();
  if (v.vt == VT_R4) return std::isnan(v.fltVal);
  return (v.vt == VT_R8 || v.vt == VT_DATE) && std::isnan(v.dblVal);
}

HRESULT Compare(const Variant& left, const Variant& right) {
  VARIANT a = left.Get();
  VARIANT b = right.Get();
  return VarCmp(&a, &b, LOCALE_USER_DEFAULT, 0);
}

/// Opposite answers both ways, where there is an order.
void RequireOrder(const Variant& left, const Variant& right) {
  const HRESULT forth = Compare(left, right);
  const HRESULT back = Compare(right, left);
  constexpr auto kLast = static_cast<HRESULT>(VARCMP_GT);
  if (FAILED(forth) || FAILED(back) || forth > kLast || back > kLast) return;
  Require(forth + back == kLast || IsNan(left) || IsNan(right));
}

Bytes Written(const Variant& value) {
  TestStream stream;
  Require(zdm::WriteVariant(&stream, value.Get()) == S_OK);
  return stream.bytes;
}

void ConvertAndCompare(const Variant& value) {
  const HRESULT self = Compare(value, value);
  Require(FAILED(self) || self == static_cast<HRESULT>(VARCMP_EQ) || IsNan(value) ||
          value.type() == VT_NULL);
  constexpr int kLastType = VT_UINT;
  for (int type = 0; type <= kLastType + 1; ++type) {
    Variant converted;
    const HRESULT result =
        zdm::ConvertVariant(converted.Out(), value.Get(), static_cast<VARTYPE>(type));
    Require(SUCCEEDED(result) ? converted.type() == type : converted.IsEmpty());
    if (SUCCEEDED(result)) RequireOrder(value, converted);
  }
}

void Copy(const Variant& value) {
  VARIANT reference = {};
  reference.vt = VT_BYREF | VT_VARIANT;
  reference.pvarVal = const_cast<VARIANT*>(&value.Get());
  Variant copy;
  Require(VariantCopy(copy.Out(), reference.pvarVal) == S_OK && copy.type() == value.type());
  Require(VariantCopyInd(copy.Out(), &reference) == S_OK && copy.type() == value.type());
  Require(zdm::CopyVariant(copy.Out(), value.Get()) == S_OK);
  Require(Written(copy) == Written(value));
}

#if !defined(_WIN32)  // the system's own need not bear it
void TryAsDecimal(const Bytes& bytes) {
  DECIMAL fields = {};
  constexpr std::size_t kType = sizeof fields.wReserved;
  if (bytes.size() < sizeof fields - kType) return;
  std::memcpy(reinterpret_cast<BYTE*>(&fields) + kType, bytes.data(), sizeof fields - kType);
  VARIANT raw;
  raw.decVal = fields;
  raw.vt = VT_DECIMAL;
  const Variant value(raw);
  ConvertAndCompare(value);
  Copy(value);
}
#endif

}  // namespace

ZDM_FUZZ(bytes) {
#if !defined(_WIN32)
  TryAsDecimal(bytes);
#endif
  TestStream stream(bytes);
  Variant value;
  if (FAILED(zdm::ReadVariant(&stream, value.Out()))) {
    Require(value.IsEmpty());
    return;
  }
  ConvertAndCompare(value);
  Copy(value);

  // What was read is written in one way: a second pass gives the same bytes.
  TestStream written(Written(value));
  Variant again;
  Require(zdm::ReadVariant(&written, again.Out()) == S_OK);
  Require(again.type() == value.type());
  Require(Written(again) == written.bytes);
}
