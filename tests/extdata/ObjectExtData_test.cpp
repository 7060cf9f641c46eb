// Extended data on a data-model object: looked up, saved, loaded, copied, compared.
#include "tests/extdata/ExtDataSupport.h"
#include "tests/support/TestDatabase.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

constexpr GUID kOne = {1, 0, 0, {}};
constexpr GUID kTwo = {2, 0, 0, {}};

class ObjectExtData : public testing::Test {
 protected:
  /// An object with every kind of item, among them two of one name and one of an unknown class.
  ZRefPtr<IZDMObject> MakeFull() {
    auto object = db.MakeObject(OLESTR("wall"));
    object->SetExtData(kTwo, MakeItem(OLESTR("a"), 1));
    object->SetExtData(kTwo, MakeItem(OLESTR("a"), 2));
    object->SetExtData(kOne, MakeItem(OLESTR("in"), MakeItems({MakeItem(OLESTR("x"), 3)})));
    object->SetExtData(kOne, MakeNote(OLESTR("n"), 5));
    const auto proxy = zdm::NewOf<IZProxyExtDataObj, CZProxyExtDataObj>();
    proxy->SetClassID(&kTwo);
    proxy->SetData("bytes", 5);
    object->SetExtData(kOne, proxy);
    return object;
  }

  static LONG LongOf(IZDMObject& object, const GUID& key, const OLECHAR* name) {
    auto* item = zdm::ViewAs<IZExtDataAccess>(object.GetExtData(key, name));
    LONG value = -1;
    if (item != nullptr) item->GetLong(&value);
    return value;
  }

  TestDatabase db;
};

TEST_F(ObjectExtData, IsSavedWithItAndComesBack) {
  auto object = MakeFull();
  const Bytes saved = BytesOf(*object, &db);
  auto loaded = db.MakeObject(nullptr, static_cast<LONG>(object->GetID()) + 1);
  EXPECT_EQ(LoadBytes(*loaded, saved, &db), saved.size());
  loaded->SetID(object->GetID());
  EXPECT_EQ(BytesOf(*loaded, &db), saved);
  EXPECT_EQ(LongOf(*loaded, kTwo, OLESTR("a")), 1);
  EXPECT_NE(loaded->GetExtData(kOne, OLESTR("n")), nullptr);
  // Once more into the same manager: nothing is doubled.
  IZExtDataMgr* manager = loaded->GetExtDataMgr();
  LoadBytes(*loaded, saved, &db);
  EXPECT_EQ(loaded->GetExtDataMgr(), manager);
  EXPECT_EQ(manager->GetCollection(kTwo)->GetCount(), 2);
  loaded->SetID(99);
}

TEST_F(ObjectExtData, ACloneOwnsItsItemsAndIsAnotherObject) {
  auto object = MakeFull();
  const auto clone = zdm::CloneAs<IZDMObject>(object.Get());
  EXPECT_EQ(BytesOf(*clone, &db), BytesOf(*object, &db));
  EXPECT_FALSE(object->JudgeSame(clone.Get()));
  EXPECT_TRUE(object->JudgeSame(object.Get()));
  zdm::ViewAs<IZExtDataAccess>(clone->GetExtData(kTwo, OLESTR("a")))->SetLong(7);
  clone->RemoveExtData(kOne, clone->GetExtData(kOne, OLESTR("n")));
  EXPECT_EQ(LongOf(*object, kTwo, OLESTR("a")), 1);
  EXPECT_NE(object->GetExtData(kOne, OLESTR("n")), nullptr);
}

TEST_F(ObjectExtData, AnItemThatHoldsItsObjectIsSavedWithoutIt) {
  auto object = db.MakeObject(OLESTR("wall"));
  auto item = MakeItem(OLESTR("self"));
  item->SetObject(object);
  object->SetExtData(kOne, item);
  const Bytes saved = BytesOf(*object, &db);
  auto loaded = db.MakeObject();
  EXPECT_EQ(LoadBytes(*loaded, saved, &db), saved.size());
  auto* read = zdm::ViewAs<IZExtDataAccess>(loaded->GetExtData(kOne, OLESTR("self")));
  ASSERT_NE(read, nullptr);
  IZDMObject* none = object;
  EXPECT_EQ(read->GetObject(&none), S_OK);
  EXPECT_EQ(none, nullptr);

  item = nullptr;
  auto clone = zdm::CloneAs<IZDMObject>(object.Get());
  EXPECT_EQ(object->GetReferenceCount(), 3u);  // here, its own item's and the clone's
  object->ClearExtData();                      // the cycle is the caller's to break
  EXPECT_EQ(object->GetReferenceCount(), 2u);
  clone = nullptr;
  EXPECT_EQ(object->GetReferenceCount(), 1u);
}

}  // namespace
