// The stored form of an array of parameters, and what damage does to it.
#include "tests/parameters/ParameterSupport.h"
#include "tests/support/CapturedOutput.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/relations/IZReltnColl.h"

#include <gtest/gtest.h>

using namespace zdm::test;

namespace {

class ArrayStream : public testing::Test {
 protected:
  Bytes Saved(IZParameterArray* array) {
    ByteStream stream;
    array->Save(&stream, &db);
    return stream.GetBytes();
  }
  HRESULT Load(IZParameterArray* array, const Bytes& bytes) {
    ByteStream stream(bytes);
    const HRESULT result = Thrown([&] { array->Load(&stream, &db); });
    EXPECT_TRUE(result != S_OK || stream.GetPosition() == bytes.size());
    return result;
  }
  static ZRefPtr<IZParameterArray> MakeArray() {
    return zdm::NewOf<IZParameterArray, CZParameterArray>();
  }
  /// A parameter of each type of value.
  ZRefPtr<IZParameterArray> MakeFull() {
    auto array = MakeArray();
    array->BeginAdd();
    for (BYTE type = 0; type < 10; ++type) {
      const auto parameter = MakeParameter(db.Make(static_cast<BYTE>(20 - type)));
      if (ZDfValue* value = ZDfValueRxClass::CreateZDfValue(type)) {
        parameter->SetValue(value);
        value->Release();
      }
      parameter->SetKey(type);
      parameter->SetFlags(static_cast<USHORT>(0x100 + type));
      array->Add(parameter, 0);
    }
    array->EndAdd();
    array->GetAt(10 - 1)->SetFlags(3);
    array->SetParamDouble(&(key_ = Key(19)), 1.5);
    array->SetParamRelation(&(key_ = Key(17)), db.manager, true);
    array->SetParamString(&(key_ = Key(16)), OLESTR("oak"));
    array->SetParamLong(&(key_ = Key(14)), -5);
    return array;
  }

  Definitions db;
  GUID key_ = {};
  const zdm::CapturedOutput output_;  // a parameter without value is reported when it is loaded
};

TEST_F(ArrayStream, IsFlagsCountAndTheRecordsInOrder) {
  const auto array = MakeArray();
  array->BeginAdd();
  const auto number = MakeParameter();
  number->SetLong(5);
  array->Add(number, 0);
  array->AddBoolParameter(db.manager, &(key_ = Key(1)), true, 0x0104);
  db.Make(1);
  array->AddBoolParameter(db.manager, &key_, true, 0x0104);
  const Bytes open = Saved(array);
  array->EndAdd();
  EXPECT_EQ(Saved(array), Hex("00 03000000 "                          // flags, three
                              "0401 FFFF 01 "                         // flags, key, definition
                              "00008040 FFFFFFFF 00000000 02000000 "  // a relation to it
                              "00 07 01 "                             // no link, a bool
                              "0A00 FFFF 00 00 06 05000000 "          // without it, a long
                              "0401 FFFF 01 "                         // of an unknown one
                              "00008040 FFFFFFFF 00000000 00000000 00 07 01"));
  EXPECT_EQ(open, (Bytes{1, 0, 0, 0, 0}));
}

TEST_F(ArrayStream, BringsBackEveryTypeOfValue) {
  const auto array = MakeFull();
  const Bytes bytes = Saved(array);
  const auto loaded = MakeArray();
  const auto owner = zdm::MakeObject<Notified, Notified>();
  loaded->SetOwner(owner.Get());
  EXPECT_EQ(Load(loaded, bytes), S_OK);
  EXPECT_EQ(owner->notices, 0);
  ASSERT_EQ(loaded->GetCount(), 10);
  for (LONG i = 0; i < 10; ++i) {
    EXPECT_EQ(loaded->GetAt(i)->GetOwner(), loaded.Get());
    // Collections are never the same.
    const BYTE type = TypeOf(array->GetAt(i)->GetValue());
    EXPECT_EQ(loaded->GetAt(i)->IsEqual(array->GetAt(i)), type != 9) << int{type};
  }
  EXPECT_EQ(Saved(loaded), bytes);
  EXPECT_EQ(loaded->GetParameter(Key(17))->GetRelation(), db.manager.Get());
  EXPECT_EQ(output_.Messages().size(), 1u);  // the one without value
}

TEST_F(ArrayStream, KeepsItsFlagsAndAnOpenBitThatOpensNothing) {
  const auto array = MakeArray();
  EXPECT_EQ(Load(array, {0x81, 0, 0, 0, 0}), S_OK);
  array->Add(MakeParameter(), 0);
  EXPECT_EQ(Saved(array)[0], 0x81);
  array->EndAdd();
  EXPECT_EQ(Saved(array)[0], 0x80);
  EXPECT_TRUE(array->IsEmpty());
}

// A scan finds what a binary search in the stored order may miss.
TEST_F(ArrayStream, FindsEveryParameterInAnyStoredOrder) {
  Bytes bytes = {0, 3, 0, 0, 0};
  for (const BYTE number : Bytes{3, 1, 2}) {
    const auto parameter = MakeParameter(db.Make(number));
    ByteStream stream;
    parameter->Save(&stream, &db);
    bytes = Join({bytes, stream.GetBytes()});
  }
  const auto array = MakeArray();
  EXPECT_EQ(Load(array, bytes), S_OK);
  for (const BYTE number : Bytes{1, 2, 3}) {
    IZParameter* const found = array->GetParameter(Key(number));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(KeyOf(found), Key(number));
  }
  EXPECT_EQ(array->GetAt(0), array->GetParameter(Key(3)));
  EXPECT_TRUE(array->IsExist(Key(1)));
  EXPECT_FALSE(array->IsExist(Key(3)));
}

TEST_F(ArrayStream, ACountThatTheStreamCannotHoldIsDamage) {
  const auto array = MakeArray();
  EXPECT_EQ(Load(array, {0, 0xFF, 0xFF, 0xFF, 0xFF}), S_OK);  // -1: none
  EXPECT_EQ(Load(array, {0, 0xFF, 0xFF, 0xFF, 0x7F}), E_FAIL);
  EXPECT_TRUE(array->IsEmpty());
}

TEST_F(ArrayStream, WhatWasReadBeforeTheEndStays) {
  const Bytes bytes = Saved(MakeFull());
  LONG most = 0;
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    SCOPED_TRACE(size);
    const auto array = MakeArray();
    EXPECT_EQ(Load(array, Cut(bytes, size)), E_FAIL);
    EXPECT_GE(array->GetCount(), most);
    most = array->GetCount();
    for (LONG i = 0; i < most; ++i) EXPECT_EQ(array->GetAt(i)->GetOwner(), array.Get());
  }
  EXPECT_EQ(most, 9);
}

}  // namespace
