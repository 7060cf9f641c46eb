// Clearing and copying values, and the wrapper that owns one.
#include "platform/ole/tagZVARIANT.h"
#include "tests/platform/ole/VariantTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;
using zdm::Variant;

/// Counts its references; it dies with the test.
struct Counted final : IUnknown {
  ULONG count = 1;
  virtual ~Counted() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
  ULONG STDMETHODCALLTYPE Release() override { return --count; }
};

VARIANT Raw(int type) {
  VARIANT value;
  VariantInit(&value);
  value.vt = static_cast<VARTYPE>(type);
  return value;
}

TEST(VariantClear, RefusesTypesNoValueHas) {
  for (const int type : {15, int{VT_VOID}, int{VT_LPWSTR}, int{VT_FILETIME}, VT_ARRAY | VT_EMPTY,
                         VT_BYREF | VT_NULL, VT_VECTOR | VT_I4, VT_RESERVED | VT_I4, 0xFFFF}) {
    VARIANT value = Raw(type);
    EXPECT_EQ(VariantClear(&value), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(value.vt, type);
    VARIANT target = Raw(VT_I4);
    EXPECT_EQ(VariantCopy(&target, &value), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(target.vt, VT_I4);
  }
}

TEST(VariantClear, RefusesALockedArray) {
  VARIANT value = Raw(VT_ARRAY | VT_I4);
  value.parray = SafeArrayCreateVector(VT_I4, 0, 3);
  SAFEARRAY* const array = value.parray;
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
  EXPECT_EQ(VariantClear(&value), DISP_E_ARRAYISLOCKED);
  if (!UnderWine()) {  // which forgets the array
    EXPECT_EQ(value.vt, VT_ARRAY | VT_I4);
  }
  ASSERT_EQ(SafeArrayUnaccessData(array), S_OK);
  value.vt = VT_ARRAY | VT_I4;
  value.parray = array;
  EXPECT_EQ(VariantClear(&value), S_OK);
}

TEST(VariantCopy, DuplicatesTextAndArrays) {
  VARIANT odd = Raw(VT_BSTR);
  odd.bstrVal = SysAllocStringByteLen("a\0\0\0b", 5);
  VARIANT array = Raw(VT_ARRAY | VT_R8);
  array.parray = SafeArrayCreateVector(VT_R8, 1, 2);
  for (VARIANT* source : {&odd, &array}) {
    VARIANT copy = Raw(VT_EMPTY);
    ASSERT_EQ(VariantCopy(&copy, source), S_OK);
    EXPECT_EQ(copy.vt, source->vt);
    EXPECT_NE(copy.byref, source->byref);
    if (source == &odd) {
      ASSERT_EQ(SysStringByteLen(copy.bstrVal), 5U);
      EXPECT_EQ(std::memcmp(copy.bstrVal, "a\0\0\0b", 5), 0);
    }
    EXPECT_EQ(VariantCopy(&copy, &copy), S_OK);  // nothing happens
    EXPECT_EQ(VariantClear(&copy), S_OK);
    EXPECT_EQ(VariantClear(source), S_OK);
  }
}

TEST(VariantCopy, CountsReferencesToObjects) {
  Counted object;
  {
    VARIANT value = Raw(VT_UNKNOWN);
    value.punkVal = &object;
    const Variant first(value);
    EXPECT_EQ(object.count, 2U);
    Variant second = first;
    EXPECT_EQ(object.count, 3U);
    EXPECT_EQ(second.ChangeType(VT_DISPATCH), E_NOINTERFACE);
    EXPECT_EQ(object.count, 3U);
    EXPECT_EQ(second.ChangeType(VT_EMPTY), S_OK);
    EXPECT_EQ(object.count, 2U);
  }
  EXPECT_EQ(object.count, 1U);
}

TEST(VariantCopyInd, CopiesWhatAReferencePointsAt) {
  Variant text = Text("text");
  BSTR string = text.Get().bstrVal;
  VARIANT inner = Raw(VT_BYREF | VT_BSTR);
  inner.pbstrVal = &string;
  VARIANT outer = Raw(VT_BYREF | VT_VARIANT);
  outer.pvarVal = &inner;
  for (VARIANT* reference : {&inner, &outer}) {
    Variant copy;
    ASSERT_EQ(VariantCopyInd(copy.Out(), reference), S_OK);
    EXPECT_EQ(Describe(copy.Get()), "\"text\"");
    EXPECT_NE(copy.Get().bstrVal, string);
  }
  inner = Raw(VT_BYREF | VT_VARIANT);
  inner.pvarVal = &outer;
  Variant copy;
  EXPECT_EQ(VariantCopyInd(copy.Out(), &outer), E_INVALIDARG);  // not into a circle
}

TEST(Variant, MovesAndHandsOverWithoutCopying) {
  Variant source = Text("text");
  const OLECHAR* const string = source.Get().bstrVal;
  Variant moved = std::move(source);
  EXPECT_EQ(moved.Get().bstrVal, string);
  Variant assigned;
  assigned = std::move(moved);
  VARIANT detached = assigned.Detach();
  EXPECT_TRUE(assigned.IsEmpty());
  EXPECT_EQ(detached.bstrVal, string);
  assigned.Attach(detached);
  EXPECT_EQ(assigned.Get().bstrVal, string);
}

TEST(Variant, ThrowsAPlainFailureWhereACopyTellsTheReason) {
  const VARIANT bad = Raw(VT_VOID);
  VARIANT target = Raw(VT_EMPTY);
  EXPECT_EQ(zdm::CopyVariant(&target, bad), DISP_E_BADVARTYPE);
  try {
    const Variant copy(bad);
    FAIL() << "no exception";
  } catch (const CAtlException& error) {
    EXPECT_EQ(error.m_hr, E_FAIL);
  }
}

TEST(Variant, LayoutIsTheSystems) {
  EXPECT_EQ(sizeof(VARIANT), 24U);
  VARIANT value = Dec(true, 0x11223344, 0x5566778899AABBCC, 7).Get();
  BYTE bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  const BYTE expected[] = {VT_DECIMAL, 0,    7,    0x80, 0x44, 0x33, 0x22, 0x11,
                           0xCC,       0xBB, 0xAA, 0x99, 0x88, 0x77, 0x66, 0x55};
  EXPECT_EQ(std::memcmp(bytes, expected, sizeof expected), 0);
  EXPECT_EQ(reinterpret_cast<BYTE*>(&value.lVal) - reinterpret_cast<BYTE*>(&value), 8);
}

TEST(TagZVariant, ValuesShareTheirPlace) {
  tagZVARIANT value = {};
  value.vt = VT_I4;
  value.value.lVal = -2;
  EXPECT_EQ(value.value.iVal, -2);
  EXPECT_EQ(value.value.ulVal, 0xFFFFFFFEU);
  EXPECT_EQ(reinterpret_cast<BYTE*>(&value.value) - reinterpret_cast<BYTE*>(&value), 8);
}

}  // namespace
