// The stored form of managers, and what damage does to one.
#include "platform/ole/CAtlException.h"
#include "tests/model/ManagerSupport.h"
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
  const std::vector<BYTE> expected = {
      0x65, 0x14, 0xC1, 0x2A, 0x08, 0x6E, 0x20, 0x40,           // class identifier
      0xA5, 0x08, 0x46, 0xD8, 0xE4, 0x32, 0x3E, 0x72,           //
      0,    0,    0,    0,    0,    0,    0,    0,              // carried words
      0x0B, 0x0A, 0,    0,    0xFF, 0xFF, 0xFF, 0xFF,           // ID, owner's ID
      1,    0,    0,    0,    0,    0x20, 0xFA, 0,    0xF2,     // type, option mask
      17,   0,    0,    0,    0,    0,    0,                    // length, flags
      6,    0,    0,    0,    'h',  0,    'i',  0,    0,    0,  // name
      4,    3,    2,    1};                                     // current object
  EXPECT_EQ(BytesOf(*manager, &db), expected);
}

TEST(ManagerStream, ComesBackWithNameAndCurrentObjectAndWithoutObjects) {
  TestDatabase db;
  auto manager = StoredManager(db);
  auto object = db.MakeObject(nullptr, 9);
  manager->AttachTail(object);
  manager->SetCurrent(object);
  const auto bytes = BytesOf(*manager, &db);

  auto loaded = MakeManager();
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_EQ(NameOf(loaded), "hi");
  EXPECT_EQ(loaded->GetCurrent(), object.Get());
  EXPECT_TRUE(loaded->IsEmpty());

  TestDatabase other;
  LoadBytes(*loaded, bytes, &other);
  EXPECT_EQ(loaded->GetCurrent(), nullptr) << "no such ID in that document";
  LoadBytes(*loaded, bytes);
  EXPECT_EQ(loaded->GetCurrent(), nullptr);
}

TEST(ManagerStream, KeepsItsCurrentObjectWhenNoneIsStored) {
  TestDatabase db;
  auto manager = StoredManager(db);
  const auto bytes = BytesOf(*manager, &db);
  auto object = db.MakeObject();
  auto loaded = MakeManager(OLESTR("former"));
  loaded->SetCurrent(object);
  LoadBytes(*loaded, bytes, &db);
  EXPECT_EQ(NameOf(loaded), "hi");
  EXPECT_EQ(loaded->GetCurrent(), object.Get());
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
    expectHeld({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)}, length);
  }
  for (const BYTE length : {BYTE{1}, BYTE{5}, BYTE{200}}) {  // odd, odd, past the end
    auto bytes = good;
    bytes[kOwnData] = length;
    expectHeld(bytes, kOwnData);
  }
}

}  // namespace
