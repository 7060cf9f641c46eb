// What an item holds, hands out, and writes.
#include "zdm/extdata/CZExtDataObj.h"

#include "tests/extdata/ExtDataSupport.h"
#include "tests/support/TestDatabase.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace zdm::test;

BYTE TypeOf(IZExtDataAccess& item) {
  BYTE type = 0xEE;
  EXPECT_EQ(item.GetType(&type), S_OK);
  return type;
}

std::string TextOf(IZExtDataAccess& item) {
  zdm::Bstr text;
  EXPECT_EQ(item.GetString(text.Out()), S_OK);
  return text.IsNull() ? "null" : std::string(text.View().begin(), text.View().end());
}

struct TypeCase {
  const char* name;
  BYTE type;
  std::function<void(IZExtDataAccess&)> set;
  Bytes record;  // of an item named n
};

std::vector<TypeCase> Types() {
  std::vector<TypeCase> types = {
      {"none", 0, [](auto&) {}, {}},
      {"byte", 1, [](auto& item) { item.SetByte(0xFE); }, {0xFE}},
      {"short", 2, [](auto& item) { item.SetShort(-2); }, {0xFE, 0xFF}},
      {"float", 3, [](auto& item) { item.SetFloat(1.5F); }, {0, 0, 0xC0, 0x3F}},
      {"long", 4, [](auto& item) { item.SetLong(-2); }, {0xFE, 0xFF, 0xFF, 0xFF}},
      {"ulong", 5, [](auto& item) { item.SetULong(0xFFFFFFFE); }, {0xFE, 0xFF, 0xFF, 0xFF}},
      {"double", 6, [](auto& item) { item.SetDouble(1.5); }, {0, 0, 0, 0, 0, 0, 0xF8, 0x3F}},
      {"string", 7, [](auto& item) { item.SetString(OLESTR("s")); }, {4, 0, 0, 0, 's', 0, 0, 0}},
      {"empty string", 7, [](auto& item) { item.SetString(OLESTR("")); }, {2, 0, 0, 0, 0, 0}},
      {"null string", 7, [](auto& item) { item.SetString(nullptr); }, {0, 0, 0, 0}},
      {"bool", 8, [](auto& item) { item.SetBool(true); }, {1}},
      {"collection",
       9,
       [](auto& item) { item.SetCollection(MakeItems({MakeItem(nullptr, 7)})); },
       {1, 0, 0, 0, 4, 0, 0, 0, 0, 7, 0, 0, 0}},
      {"object", 10, [](auto& item) { item.SetObject(zdm::Attached(new CZDMPlainObject)); }, {}},
  };
  for (TypeCase& type : types) {
    type.record = Join({{type.type, 4, 0, 0, 0, 'n', 0, 0, 0}, type.record});
  }
  return types;
}

TEST(ExtDataObj, StoresEachTypeAndReadsItBack) {
  for (const TypeCase& type : Types()) {
    SCOPED_TRACE(type.name);
    auto item = MakeItem(OLESTR("n"));
    type.set(*item);
    EXPECT_EQ(TypeOf(*item), type.type);
    EXPECT_EQ(Saved(*item), type.record);

    // Over a value that has to go; then a copy of what was read.
    auto loaded = MakeItem(OLESTR("old"));
    loaded->SetString(OLESTR("old"));
    ULONGLONG read = 0;
    EXPECT_EQ(Load(*loaded, type.record, &read), S_OK);
    EXPECT_EQ(read, type.record.size());
    ZRefPtr<IZExtData> copy;
    loaded->Clone(copy.Out());
    EXPECT_EQ(Saved(*copy), type.record);
  }
}

TEST(ExtDataObj, AnswersToGettersOfItsOwnTypeOnly) {
  BYTE byte = 9;
  SHORT int16 = 9;
  float float32 = 9;
  LONG int32 = 9;
  ULONG uint32 = 9;
  double float64 = 9;
  BSTR text = nullptr;
  bool flag = true;
  IZExtDataCollection* items = nullptr;
  IZDMObject* object = nullptr;
  const auto ask = [&](IZExtDataAccess& item) {
    const LONG results[] = {item.GetByte(&byte),        item.GetShort(&int16),
                            item.GetFloat(&float32),    item.GetLong(&int32),
                            item.GetULong(&uint32),     item.GetDouble(&float64),
                            item.GetString(&text),      item.GetBool(&flag),
                            item.GetCollection(&items), item.GetObject(&object)};
    BYTE answering = 0;
    for (BYTE type = 1; type <= 10; ++type) {
      if (results[type - 1] == S_OK)
        answering = type;
      else
        EXPECT_EQ(results[type - 1], E_FAIL);
    }
    SysFreeString(text);
    text = nullptr;
    return answering;
  };
  for (const TypeCase& type : Types()) {
    auto item = MakeItem(OLESTR("n"));
    if (type.type == zdm::kExtNone) {
      EXPECT_EQ(ask(*item), 0);
      EXPECT_EQ(int32, 9);  // untouched
    }
    type.set(*item);
    EXPECT_EQ(ask(*item), type.type) << type.name;
  }
  EXPECT_EQ(byte, 0xFE);
  EXPECT_EQ(int16, -2);
  EXPECT_EQ(float32, 1.5F);
  EXPECT_EQ(int32, -2);
  EXPECT_EQ(uint32, 0xFFFFFFFE);
  EXPECT_EQ(float64, 1.5);
}

TEST(ExtDataObj, HoldsOneReferenceWhileItHoldsTheValue) {
  auto items = MakeItems({});
  auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto item = MakeItem(OLESTR("n"), items);
  EXPECT_EQ(item->SetCollection(items), S_OK);  // itself again
  IZExtDataCollection* held = nullptr;
  item->GetCollection(&held);
  EXPECT_EQ(held, items.Get());
  ZRefPtr<IZExtData> copy;
  item->Clone(copy.Out());
  EXPECT_EQ(items->GetReferenceCount(), 3u);  // here, the item's and the copy's
  copy = nullptr;
  item->SetObject(object);
  EXPECT_EQ(items->GetReferenceCount(), 1u);
  EXPECT_EQ(object->GetReferenceCount(), 2u);
  item->SetString(OLESTR("s"));
  EXPECT_EQ(object->GetReferenceCount(), 1u);
  item->SetLong(5);
  EXPECT_EQ(item->GetString(zdm::Bstr().Out()), E_FAIL);
  item->SetObject(object);
  item = nullptr;
  EXPECT_EQ(object->GetReferenceCount(), 1u);
}

TEST(ExtDataObj, ThatHoldsItsObjectIsSavedWithoutItAndEndsWhenItIsCleared) {
  constexpr GUID kKey = {1, 0, 0, {}};
  TestDatabase db;
  auto object = db.MakeObject(OLESTR("wall"));
  {
    const auto item = MakeItem(OLESTR("self"));
    item->SetObject(object);
    object->SetExtData(kKey, item);
  }
  auto loaded = db.MakeObject();
  LoadBytes(*loaded, BytesOf(*object, &db), &db);
  auto* read = zdm::ViewAs<IZExtDataAccess>(loaded->GetExtData(kKey, OLESTR("self")));
  ASSERT_NE(read, nullptr);
  IZDMObject* none = object;
  EXPECT_EQ(read->GetObject(&none), S_OK);
  EXPECT_EQ(none, nullptr);
  auto clone = zdm::CloneAs<IZDMObject>(object.Get());
  EXPECT_EQ(object->GetReferenceCount(), 3u);  // here, its own item's and the clone's
  object->ClearExtData();                      // the cycle is the caller's to break
  clone = nullptr;
  EXPECT_EQ(object->GetReferenceCount(), 1u);
}

TEST(ExtDataObj, EndsWithTheValueThatHoldsIt) {
  auto items = MakeItems({});
  auto item = MakeItem(OLESTR("n"), items);
  items->AddTail(item);
  IZExtDataAccess* inside = item.Get();
  item = nullptr;
  items = nullptr;
  EXPECT_EQ(inside->SetLong(5), S_OK);  // the collection goes, and the item with it
}

TEST(ExtDataObj, ExchangesVariantsOfFourTypes) {
  const struct {
    LONGLONG bits;
    VARTYPE vt;
    BYTE type;
  } rows[] = {{0xFFFE, VT_I2, zdm::kExtShort},
              {0xFFFFFFFE, VT_I4, zdm::kExtLong},
              {0x3FC00000, VT_R4, zdm::kExtFloat},
              {0xFFFFFFFE, VT_UI4, zdm::kExtULong}};
  auto item = MakeItem(nullptr);
  tagZVARIANT variant;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.vt);
    variant = {row.vt, {row.bits}};
    EXPECT_EQ(item->SetVariant(&variant), S_OK);
    EXPECT_EQ(TypeOf(*item), row.type);
    variant.value.llVal = 0;
    EXPECT_EQ(item->GetVariant(&variant), S_OK);
    EXPECT_EQ(variant.value.llVal, row.bits);
    item->SetString(OLESTR("s"));
    EXPECT_EQ(item->GetVariant(&variant), S_OK);  // another type: 0
    EXPECT_EQ(variant.value.llVal, 0);
  }
  variant = {VT_BSTR, {77}};  // a type that is not exchanged changes nothing
  EXPECT_EQ(item->SetVariant(&variant), S_OK);
  EXPECT_EQ(item->GetVariant(&variant), S_OK);
  EXPECT_EQ(TypeOf(*item), zdm::kExtString);
  EXPECT_EQ(variant.value.llVal, 77);
}

TEST(ExtDataObj, TakesOnlyTheNameOfAnItemWithoutValue) {
  auto item = MakeItem(OLESTR("n"), 5);
  item->CopyFrom(MakeNote(OLESTR("note"), 1));
  EXPECT_EQ(NameOf(*item), "note");
  EXPECT_EQ(TypeOf(*item), zdm::kExtLong);
  item->CopyFrom(nullptr);
  item->CopyFrom(item);
  EXPECT_EQ(NameOf(*item), "note");
}

TEST(ExtDataObj, DamageLeavesTheItemAsItWas) {
  const Bytes plain = Types().front().record;
  std::vector<Bytes> damaged(4, plain);
  damaged[0][0] = 11;  // types that there are not
  damaged[1][0] = 20;
  damaged[2][0] = 0xFF;
  damaged[3][4] = 0x7F;  // a name past the end
  for (const TypeCase& type : Types()) {
    if (type.type == zdm::kExtCollection) continue;
    for (std::size_t size = 0; size < type.record.size(); ++size) {
      damaged.push_back(Cut(type.record, size));
    }
  }
  for (const Bytes& bytes : damaged) {
    SCOPED_TRACE(&bytes - damaged.data());
    auto item = MakeItem(OLESTR("old"));
    item->SetString(OLESTR("kept"));
    EXPECT_EQ(Load(*item, bytes), E_FAIL);
    EXPECT_EQ(NameOf(*item) + TextOf(*item), "oldkept");
  }
}

TEST(ExtDataObj, RefusesNowhereToAnswerTo) {
  auto item = MakeItem(nullptr, 5);
  for (const LONG result : {item->GetLong(nullptr), item->GetType(nullptr),
                            item->GetVariant(nullptr), item->SetVariant(nullptr)}) {
    EXPECT_EQ(result, E_INVALIDARG);
  }
  EXPECT_EQ(TypeOf(*item), zdm::kExtLong);
}

TEST(ExtDataObj, AnyByteButZeroIsTrue) {
  auto item = MakeItem(nullptr);
  EXPECT_EQ(Load(*item, {8, 0, 0, 0, 0, 0xC8}), S_OK);
  bool value = false;
  EXPECT_EQ(item->GetBool(&value), S_OK);
  EXPECT_TRUE(value);
  EXPECT_EQ(Saved(*item).back(), 1);
}

}  // namespace
