// One-dimensional safe arrays: bounds, elements and their ownership, locks.
#include "platform/ole/Bstr.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using zdm::Bstr;

struct Destroy {
  void operator()(SAFEARRAY* array) const { EXPECT_EQ(SafeArrayDestroy(array), S_OK); }
};
using ArrayPtr = std::unique_ptr<SAFEARRAY, Destroy>;

ArrayPtr MakeArray(VARTYPE type, LONG lowerBound, ULONG count) {
  return ArrayPtr(SafeArrayCreateVector(type, lowerBound, count));
}

Bstr StringAt(SAFEARRAY* array, LONG index) {
  Bstr string;
  EXPECT_EQ(SafeArrayGetElement(array, &index, string.Out()), S_OK);
  return string;
}

TEST(SafeArray, KnowsItsTypeAndBounds) {
  const struct {
    VARTYPE type;
    UINT size;
  } rows[] = {{VT_BSTR, sizeof(BSTR)},
              {VT_R8, 8},
              {VT_I2, 2},
              {VT_I4, 4},
              {VT_UI1, 1},
              {VT_BOOL, 2},
              {VT_DATE, 8}};
  for (const auto& row : rows) {
    for (const ULONG count : {3U, 0U}) {
      SCOPED_TRACE(row.type);
      const ArrayPtr array = MakeArray(row.type, -1, count);
      ASSERT_NE(array, nullptr);
      VARTYPE type = VT_EMPTY;
      LONG lower = 9;
      LONG upper = 9;
      EXPECT_EQ(SafeArrayGetVartype(array.get(), &type), S_OK);
      EXPECT_EQ(SafeArrayGetLBound(array.get(), 1, &lower), S_OK);
      EXPECT_EQ(SafeArrayGetUBound(array.get(), 1, &upper), S_OK);
      EXPECT_EQ(type, row.type);
      EXPECT_EQ(lower, -1);
      EXPECT_EQ(upper, static_cast<LONG>(count) - 2);
      EXPECT_EQ(SafeArrayGetElemsize(array.get()), row.size);
      EXPECT_EQ(SafeArrayGetDim(array.get()), 1u);
      EXPECT_EQ(array->rgsabound[0].cElements, count);
      EXPECT_EQ(array->cbElements, row.size);
      EXPECT_EQ((array->fFeatures & FADF_BSTR) != 0, row.type == VT_BSTR);
    }
  }
  EXPECT_EQ(SafeArrayCreateVector(VT_NULL, 0, 1), nullptr);
}

TEST(SafeArray, RefusesIndicesAndDimensionsOutsideItsBounds) {
  const ArrayPtr array = MakeArray(VT_R8, 1, 2);
  double value = 0.5;
  for (LONG index : {LONG{0}, LONG{3}, LONG{-2147483647}, LONG{2147483647}}) {
    EXPECT_EQ(SafeArrayPutElement(array.get(), &index, &value), DISP_E_BADINDEX) << index;
    EXPECT_EQ(SafeArrayGetElement(array.get(), &index, &value), DISP_E_BADINDEX) << index;
  }
  LONG bound = 0;
  EXPECT_EQ(SafeArrayGetLBound(array.get(), 0, &bound), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayGetUBound(array.get(), 2, &bound), DISP_E_BADINDEX);
}

TEST(SafeArray, StringsGoInAndComeOutAsCopies) {
  const ArrayPtr array = MakeArray(VT_BSTR, 0, 2);
  LONG index = 1;
  {
    const Bstr string(OLESTR("a\0b"), 3);
    EXPECT_EQ(SafeArrayPutElement(array.get(), &index, string.Get()), S_OK);
    EXPECT_EQ(SafeArrayPutElement(array.get(), &index, string.Get()), S_OK);  // frees the former
  }
  EXPECT_EQ(StringAt(array.get(), 1), Bstr(OLESTR("a\0b"), 3));
  EXPECT_TRUE(StringAt(array.get(), 0).IsNull());
  EXPECT_EQ(SafeArrayPutElement(array.get(), &index, nullptr), S_OK);
  EXPECT_EQ(StringAt(array.get(), 1), Bstr(OLESTR("")));
}

TEST(SafeArray, NumbersStandSideBySideAndLocksKeepItFromBeingDestroyed) {
  const ArrayPtr array = MakeArray(VT_R8, 5, 3);
  LONG index = 7;
  double value = 2.25;
  EXPECT_EQ(SafeArrayPutElement(array.get(), &index, &value), S_OK);
  void* data = nullptr;
  EXPECT_EQ(SafeArrayAccessData(array.get(), &data), S_OK);
  EXPECT_EQ(data, array->pvData);
  EXPECT_EQ(static_cast<double*>(data)[2], 2.25);
  SafeArrayAccessData(array.get(), &data);
  EXPECT_EQ(array->cLocks, 2u);
  SafeArrayUnaccessData(array.get());
  EXPECT_EQ(SafeArrayDestroy(array.get()), DISP_E_ARRAYISLOCKED);
  SafeArrayUnaccessData(array.get());
  EXPECT_EQ(SafeArrayUnaccessData(array.get()), E_UNEXPECTED);
}

TEST(SafeArray, CopyHasItsOwnStringsAndNoLocks) {
  const ArrayPtr array = MakeArray(VT_BSTR, 7, 2);
  LONG index = 8;
  EXPECT_EQ(SafeArrayPutElement(array.get(), &index, Bstr(OLESTR("old")).Get()), S_OK);
  void* data = nullptr;
  SafeArrayAccessData(array.get(), &data);
  SAFEARRAY* out = nullptr;
  ASSERT_EQ(SafeArrayCopy(array.get(), &out), S_OK);
  SafeArrayUnaccessData(array.get());
  const ArrayPtr copy(out);
  EXPECT_EQ(copy->cLocks, 0u);
  EXPECT_EQ(SafeArrayPutElement(array.get(), &index, Bstr(OLESTR("new")).Get()), S_OK);
  EXPECT_EQ(StringAt(copy.get(), 8).View(), OLESTR("old"));
  EXPECT_TRUE(StringAt(copy.get(), 7).IsNull());
  EXPECT_EQ(SafeArrayCopy(nullptr, &out), S_OK);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(SafeArrayCopy(array.get(), nullptr), E_INVALIDARG);
}

}  // namespace
