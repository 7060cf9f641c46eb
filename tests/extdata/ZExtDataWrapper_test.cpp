// Typed access to extended data, marks, and searches over managers and collections.
#include "zdm/extdata/ZExtDataWrapper.h"

#include "platform/core/CZGlobalData.h"
#include "tests/extdata/ExtDataSupport.h"
#include "tests/support/TestDatabase.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/model/CZDMObjMgr.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;
using W = ZExtDataWrapper;

constexpr GUID kKey = {1, 0, 0, {}};
constexpr const OLECHAR* kName = OLESTR("n");

class ExtDataWrapper : public testing::Test {
 protected:
  int Count() {
    IZExtDataCollection* items =
        object->GetExtDataMgr() != nullptr ? object->GetExtDataMgr()->GetCollection(kKey) : nullptr;
    return items != nullptr ? items->GetCount() : 0;
  }
  BYTE Type() {
    BYTE type = 0xEE;
    if (auto* item = zdm::ViewAs<IZExtDataAccess>(object->GetExtData(kKey, kName))) {
      item->GetType(&type);
    }
    return type;
  }
  /// Stores `value`, in place of the item before, and reads it back.
  template <class T>
  void ExpectKept(T value, BYTE type) {
    W::AddExtData(object, kKey, kName, value, true);
    T read = {};
    EXPECT_TRUE(W::GetExtData(object, kKey, kName, &read));
    EXPECT_EQ(read, value);
    EXPECT_EQ(Type(), type);
    EXPECT_EQ(Count(), 1);
  }

  TestDatabase db;
  ZRefPtr<IZDMObject> object = db.MakeObject();
};

TEST_F(ExtDataWrapper, KeepsValuesOfEachTypeInOneItem) {
  ExpectKept(LONG{-5}, zdm::kExtLong);
  ExpectKept(true, zdm::kExtBool);
  ExpectKept(SHORT{-5}, zdm::kExtShort);
  ExpectKept(2.5, zdm::kExtDouble);
  ExpectKept(2.5F, zdm::kExtFloat);
  ExpectKept(BYTE{200}, zdm::kExtByte);

  W::AddExtData(object, kKey, kName, OLESTR("text"), true);
  zdm::Bstr text;
  EXPECT_TRUE(W::GetExtData(object, kKey, kName, text.Out()));
  EXPECT_EQ(text, zdm::Bstr(OLESTR("text")));

  tagZVARIANT variant = {VT_UI4, {7}};
  W::AddExtData(object, kKey, kName, variant, true);
  EXPECT_EQ(Type(), zdm::kExtULong);
  variant.value.llVal = 0;
  EXPECT_TRUE(W::GetExtData(object, kKey, kName, variant));
  EXPECT_EQ(variant.value.ulVal, 7u);
  variant.vt = VT_I4;  // the item is none, which reads as 0
  EXPECT_TRUE(W::GetExtData(object, kKey, kName, variant));
  EXPECT_EQ(variant.value.lVal, 0);
  EXPECT_EQ(Count(), 1);
}

TEST_F(ExtDataWrapper, AppendsBehindTheItemThatCountsUnlessToldToUpdate) {
  W::AddExtData(object, kKey, kName, LONG{5}, false);
  W::AddExtData(object, kKey, kName, LONG{6}, false);
  EXPECT_EQ(Count(), 2);
  LONG value = 0;
  EXPECT_TRUE(W::GetExtData(object, kKey, kName, &value));
  EXPECT_EQ(value, 5);
  W::AddExtData(object, kKey, kName, 2.5, true);  // the first takes the new type
  value = 7;
  EXPECT_FALSE(W::GetExtData(object, kKey, kName, &value));
  EXPECT_EQ(value, 7);
  EXPECT_EQ(Count(), 2);
}

TEST_F(ExtDataWrapper, AnItemWithoutValueIsNeitherReadNorUpdated) {
  object->SetExtData(kKey, MakeNote(kName, 1));
  W::AddExtData(object, kKey, kName, LONG{5}, true);
  EXPECT_EQ(Count(), 2);
  LONG value = 7;
  EXPECT_FALSE(W::GetExtData(object, kKey, kName, &value));
  EXPECT_FALSE(W::JudgeExtData(object, kKey, kName, 0));
  EXPECT_TRUE(W::IsExistExtData(object, kKey, kName));
  object->ClearExtData();
  W::AddExtData(object, kKey, kName, OLESTR("text"), true);
  EXPECT_TRUE(W::JudgeExtData(object, kKey, kName, 0)) << "a value of another type is 0";
}

TEST_F(ExtDataWrapper, MarksObjects) {
  EXPECT_FALSE(W::GetMark(object, kKey, kName));
  W::ClearMark(object, kKey, kName);
  W::SetMark(object, kKey, kName, true);
  W::SetMark(object, kKey, kName, true);
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(Type(), zdm::kExtBool);
  W::SetMark(object, kKey, kName, false);
  EXPECT_EQ(Count(), 2);
  for (const bool isLeft : {true, false}) {
    W::ClearMark(object, kKey, kName);
    EXPECT_EQ(W::GetMark(object, kKey, kName), isLeft);
  }
  W::SetMark(nullptr, kKey, kName, true);
  EXPECT_FALSE(W::GetMark(nullptr, kKey, kName));
}

TEST_F(ExtDataWrapper, RemovesFromTheApplicationsGroupOnly) {
  W::AddExtData(object, kKey, kName, LONG{5}, false);
  W::RemoveExtData(object, kKey, kName);
  EXPECT_TRUE(W::IsExistExtData(object, kKey, kName));
  const GUID& app = CZGlobalData::GetZAppID();
  const GUID usual = app;
  W::AddExtData(object, app, kName, LONG{5}, false);
  W::RemoveExtData(object, app, kName);
  EXPECT_FALSE(W::IsExistExtData(object, app, kName));
  CZGlobalData::SetZAppID(kKey);
  W::RemoveExtData(object, kKey, kName);
  EXPECT_FALSE(W::IsExistExtData(object, kKey, kName));
  CZGlobalData::SetZAppID(GUID_NULL);  // the one there is without a host's own
  EXPECT_EQ(CZGlobalData::GetZAppID(), usual);
}

TEST_F(ExtDataWrapper, SearchesManagersAndCollections) {
  const auto manager = zdm::NewOf<IZDMObjMgr, CZDMObjMgr>();
  const auto coll = zdm::NewOf<IZDMObjColl, CZDMObjColl>();
  const auto find = [&](auto& objects, bool validOnly) {
    IZDMObject* found = object;
    const bool any = W::FindFirstFrontObject(objects.Get(), kKey, kName, &found, validOnly);
    EXPECT_EQ(any, found != nullptr);
    return found;
  };
  EXPECT_EQ(find(manager, false), nullptr);

  // Plain, invalid with the byte 3, valid with 3, valid with text.
  ZRefPtr<IZDMObject> objects[4];
  for (auto& each : objects) {
    each = db.MakeObject();
    manager->AttachTail(each);
    coll->AddTail(each);
  }
  objects[1]->SetObjectValid(false);
  W::AddExtData(objects[1], kKey, kName, BYTE{3}, true);
  W::AddExtData(objects[2], kKey, kName, BYTE{3}, true);
  W::AddExtData(objects[3], kKey, kName, OLESTR("text"), true);
  coll->AddHead(zdm::Attached(new Stranger));  // a null element
  EXPECT_EQ(find(manager, false), objects[1].Get());
  EXPECT_EQ(find(manager, true), objects[2].Get());
  EXPECT_EQ(find(coll, false), objects[1].Get());
  EXPECT_EQ(find(coll, true), objects[2].Get());
  EXPECT_EQ(objects[2]->GetReferenceCount(), 3u);  // here, manager and collection
  EXPECT_EQ(W::GetValidObjectCount(manager, kKey, kName, 3), 1);
  EXPECT_EQ(W::GetValidObjectCount(manager, kKey, kName, 0), 1);
  manager->RemoveAll();
}

}  // namespace
