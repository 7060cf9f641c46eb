// The stored form of managers, and what damage does to one.
#include "platform/ole/CAtlException.h"
#include "tests/model/ManagerSupport.h"
#include "tests/support/Bytes.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

using namespace zdm::test;

namespace {

constexpr std::size_t kOwnData = 41 + 4 + 3;  // header, length, three empty flags

ZRefPtr<IZDMObjMgr> StoredManager(TestDatabase& db) {
  auto manager = MakeManager(OLESTR("hi"));
  db.Add(manager, 0x0A0B);
  return manager;
}

TEST(ManagerStream, StoresNameAndCurrentObjectBehindTheBody) {
  TestDatabase db;
  auto manager = StoredManager(db);
  auto object = db.MakeObject(nullptr, 0x01020304);
  manager->AttachTail(object);
  manager->SetCurrent(object);
  EXPECT_EQ(BytesOf(*manager, &db),
            Hex("6514C12A086E2040A50846D8E4323E72 00000000 00000000 "  // class, carried words
                "0B0A0000 FFFFFFFF 01 0000000020FA00F2 "               // IDs, type, option mask
                "11000000 000000 06000000680069000000 04030201"));     // name, current object
}

TEST(ManagerStream, ComesBackWithNameAndCurrentObjectAndWithoutObjects) {
  TestDatabase db;
  auto manager = StoredManager(db);
  const auto withoutCurrent = BytesOf(*manager, &db);
  auto object = db.MakeObject(nullptr, 9);
  manager->AttachTail(object);
  manager->SetCurrent(object);
  const auto bytes = BytesOf(*manager, &db);

  auto loaded = MakeManager();
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_EQ(NameOf(loaded), "hi");
  EXPECT_EQ(loaded->GetCurrent(), object.Get());
  EXPECT_TRUE(loaded->IsEmpty());

  loaded->SetCurrent(object);
  LoadBytes(*loaded, withoutCurrent, &db);
  EXPECT_EQ(loaded->GetCurrent(), object.Get()) << "none is stored";
  TestDatabase other;
  LoadBytes(*loaded, bytes, &other);
  EXPECT_EQ(loaded->GetCurrent(), nullptr) << "no such ID in that document";
  LoadBytes(*loaded, bytes);
  EXPECT_EQ(loaded->GetCurrent(), nullptr);
}

TEST(ManagerStream, ADamagedBodyLeavesNameAndCurrentObject) {
  TestDatabase db;
  auto manager = StoredManager(db);
  auto object = db.MakeObject();
  manager->SetCurrent(object);
  const auto good = BytesOf(*manager, &db);
  auto held = MakeManager(OLESTR("held"));
  held->SetCurrent(object);
  const auto expectHeld = [&](const std::vector<BYTE>& bytes, std::size_t at) {
    EXPECT_THROW(LoadBytes(*held, bytes, &db), CAtlException) << at;
    EXPECT_EQ(NameOf(held), "held") << at;
    EXPECT_EQ(held->GetCurrent(), object.Get()) << at;
  };
  for (std::size_t length = 0; length < good.size(); ++length) {
    expectHeld(Cut(good, length), length);
  }
  for (const BYTE length : {BYTE{1}, BYTE{5}, BYTE{200}}) {  // odd, odd, past the end
    auto bytes = good;
    bytes[kOwnData] = length;
    expectHeld(bytes, kOwnData);
  }
}

}  // namespace
