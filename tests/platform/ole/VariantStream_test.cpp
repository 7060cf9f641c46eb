// The stream form of a value: its bytes, what comes back, and what damage does.
#include "platform/ole/VariantStream.h"

#include "tests/platform/ole/VariantTestSupport.h"
#include "tests/support/TestStream.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace zdm::test;
using zdm::ReadVariant;
using zdm::Variant;
using zdm::WriteVariant;
using Bytes = std::vector<BYTE>;

Bytes Saved(const Variant& value) {
  TestStream stream;
  EXPECT_EQ(WriteVariant(&stream, value.Get()), S_OK);
  return stream.bytes;
}

/// The value read, or "damage"; the whole of `bytes` must have been used.
std::string Loaded(const Bytes& bytes) {
  TestStream stream(bytes);
  Variant value = Text("old");
  const HRESULT result = ReadVariant(&stream, Inside(value));
  if (FAILED(result)) {
    EXPECT_EQ(result, E_FAIL);
    EXPECT_TRUE(value.IsEmpty());
    return "damage";
  }
  EXPECT_EQ(stream.position, bytes.size());
  return std::to_string(value.type()) + " " + Describe(value.Get());
}

struct Form {
  const char* name;
  Variant value;
  Bytes bytes;
};

std::vector<Form> Forms() {
  return {
      {"empty", Empty(), {0, 0, 2, 0, 0, 0, 0, 0}},
      {"null", Empty(VT_NULL), {1, 0, 2, 0, 0, 0, 0, 0}},
      {"i1", I1(-2), {16, 0, 0xFE}},
      {"ui1", UI1(200), {17, 0, 200}},
      {"i2", I2(-2), {2, 0, 0xFE, 0xFF}},
      {"ui2", UI2(0x1234), {18, 0, 0x34, 0x12}},
      {"bool", Bool(VARIANT_TRUE), {11, 0, 0xFF, 0xFF}},
      {"i4", I4(-2), {3, 0, 0xFE, 0xFF, 0xFF, 0xFF}},
      {"ui4", UI4(0x12345678), {19, 0, 0x78, 0x56, 0x34, 0x12}},
      {"int", Make(VT_INT, LONG{7}), {22, 0, 7, 0, 0, 0}},
      {"uint", Make(VT_UINT, LONG{8}), {23, 0, 8, 0, 0, 0}},
      {"r4", R4(1), {4, 0, 0, 0, 0x80, 0x3F}},
      {"error", Make(VT_ERROR, E_FAIL), {10, 0, 5, 0x40, 0, 0x80}},
      {"r8", R8(-1.5), {5, 0, 0, 0, 0, 0, 0, 0, 0xF8, 0xBF}},
      {"cy", Cy(15000), {6, 0, 0x98, 0x3A, 0, 0, 0, 0, 0, 0}},
      {"date", Date(2), {7, 0, 0, 0, 0, 0, 0, 0, 0, 0x40}},
      {"i8", I8(-1), {20, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
      {"ui8", UI8(1), {21, 0, 1, 0, 0, 0, 0, 0, 0, 0}},
      {"null text", Variant::FromText(nullptr), {8, 0, 0, 0, 0, 0}},
      {"empty text", Text(""), {8, 0, 2, 0, 0, 0, 0, 0}},
      {"text", Text("ab"), {8, 0, 6, 0, 0, 0, 'a', 0, 'b', 0, 0, 0}},
      {"decimal", Dec(true, 0, 5, 1), {14, 0, 10, 0, 0, 0, '-', 0, '0', 0, '.', 0, '5', 0, 0, 0}},
      {"unknown", Empty(VT_UNKNOWN), {13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
      {"dispatch", Empty(VT_DISPATCH), {9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
  };
}

TEST(VariantStream, WritesAndReadsEveryForm) {
  for (const Form& form : Forms()) {
    EXPECT_EQ(Saved(form.value), form.bytes) << form.name;
    EXPECT_EQ(Loaded(form.bytes),
              std::to_string(form.value.type()) + " " + Describe(form.value.Get()))
        << form.name;
  }
  // A text where none belongs is read over.
  EXPECT_EQ(Loaded({0, 0, 6, 0, 0, 0, 'a', 0, 'b', 0, 0, 0}), "0 empty");
  for (const Variant& value :
       {Dec(false, 0xFFFFFFFF, ~ULONGLONG{0}, 0), Dec(true, 0xFFFFFFFF, ~ULONGLONG{0}, 28)}) {
    EXPECT_EQ(Loaded(Saved(value)), "14 " + Describe(value.Get()));
  }
  VARIANT text = {};
  text.vt = VT_BSTR;
  text.bstrVal = SysAllocStringByteLen("a\0\0\0b", 5);
  Variant owner;
  owner.Attach(text);
  EXPECT_EQ(Saved(owner), (Bytes{8, 0, 6, 0, 0, 0, 'a', 0, 0, 0, 0, 0})) << "without the odd byte";
}

TEST(VariantStream, AMissingEndIsDamageAtEveryByte) {
  for (const Form& form : Forms()) {
    for (Bytes cut = form.bytes; !cut.empty();) {
      cut.pop_back();
      EXPECT_EQ(Loaded(cut), "damage") << form.name << " cut at " << cut.size();
    }
  }
}

TEST(VariantStream, DamageLeavesAnEmptyValue) {
  struct {
    const char* name;
    Bytes bytes;
  } const rows[] = {
      {"array type", {3, 0x20, 2, 0, 0, 0, 0, 0}},
      {"reference type", {3, 0x40, 2, 0, 0, 0, 0, 0}},
      {"type no value has", {15, 0, 2, 0, 0, 0, 0, 0}},
      {"variant in a variant", {12, 0, 2, 0, 0, 0, 0, 0}},
      {"odd length", {8, 0, 3, 0, 0, 0, 'a', 0, 0, 0}},
      {"length past the end", {8, 0, 8, 0, 0, 0, 'a', 0, 'b', 0, 0, 0}},
      {"huge length", {8, 0, 0xFE, 0xFF, 0xFF, 0xFF, 'a', 0, 0, 0}},
      {"decimal of no text", {14, 0, 0, 0, 0, 0}},
      {"decimal of letters", {14, 0, 4, 0, 0, 0, 'x', 0, 0, 0}},
      {"decimal with a zero", {14, 0, 8, 0, 0, 0, '1', 0, 0, 0, '2', 0, 0, 0}},
      {"class id", {13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}},
  };
  for (const auto& row : rows) EXPECT_EQ(Loaded(row.bytes), "damage") << row.name;
}

TEST(VariantStream, WritesWhatHasNoFormAsEmptyAndAnObjectAsNone) {
  LONG number = 5;
  VARIANT reference = {};
  reference.vt = VT_BYREF | VT_I4;
  reference.plVal = &number;
  VARIANT array = {};
  array.vt = VT_ARRAY | VT_UI1;  // even the one array that the system turns into text
  array.parray = SafeArrayCreateVector(VT_UI1, 0, 4);
  Variant owner;
  owner.Attach(array);
  Variant straySign = Dec(false, 0, 1, 0);
  Inside(straySign)->decVal.sign = 0x01;
  for (const Variant& value : {Variant(reference), owner, straySign, Dec(false, 0, 1, 29),
                               Dec(false, 0, 1, 128), Dec(false, 0, 1, 255)}) {
    EXPECT_EQ(Saved(value), Saved(Empty())) << value.type();
  }
  TestStream object;
  object.references = 1;
  VARIANT unknown = {};
  unknown.vt = VT_UNKNOWN;
  unknown.punkVal = &object;
  EXPECT_EQ(Saved(Variant(unknown)), Saved(Empty(VT_UNKNOWN)));
  EXPECT_EQ(object.references, 1);
}

struct StreamWithoutSize final : TestStream {
  using TestStream::TestStream;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return failure; }
};

TEST(VariantStream, NeedsThePlaceOfTheEndButNotStat) {
  Variant value = Text("old");
  StreamWithoutSize silent(Saved(Text("ab")));
  silent.tellsSize = false;
  EXPECT_EQ(ReadVariant(&silent, Inside(value)), silent.failure);
  EXPECT_TRUE(value.IsEmpty());
  TestStream stream({9, 9, 9, 8, 0, 6, 0, 0, 0, 'a', 0, 'b', 0, 0, 0, 9});
  stream.tellsSize = false;
  stream.position = 3;
  ASSERT_EQ(ReadVariant(&stream, value.Out()), S_OK);
  EXPECT_EQ(Describe(value.Get()), "\"ab\"");
  EXPECT_EQ(stream.position, stream.bytes.size() - 1);
}

TEST(VariantStream, PassesOnAFullMediumAndTheResultOfAFailingStream) {
  for (const Form& form : Forms()) {
    for (std::size_t size = 0; size < form.bytes.size(); ++size) {
      TestStream stream;
      stream.room = size;
      EXPECT_EQ(WriteVariant(&stream, form.value.Get()), STG_E_MEDIUMFULL) << form.name;
    }
    TestStream target;
    target.failAfter = 0;
    EXPECT_EQ(WriteVariant(&target, form.value.Get()), target.failure) << form.name;
    TestStream source(form.bytes);
    source.failAfter = 1;  // after the type
    Variant value = Text("old");
    EXPECT_EQ(ReadVariant(&source, Inside(value)), source.failure) << form.name;
    EXPECT_TRUE(value.IsEmpty());
  }
}

}  // namespace
