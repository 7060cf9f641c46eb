// The groups of an object: keys in order, the record, what damage leaves.
#include "zdm/extdata/CZExtDataMgr.h"

#include "platform/system/Text.h"
#include "tests/extdata/ExtDataSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zdm::test;

constexpr GUID kOne = {1, 0, 0, {}};
constexpr GUID kTwo = {2, 0, 0, {}};

ZRefPtr<IZExtDataMgr> MakeMgr() { return zdm::NewOf<IZExtDataMgr, CZExtDataMgr>(); }

std::vector<std::string> KeysOf(IZExtDataMgr& manager) {
  SAFEARRAY* array = nullptr;
  manager.GetKeys(&array);
  LONG lower = -1;
  LONG upper = -1;
  SafeArrayGetLBound(array, 1, &lower);
  SafeArrayGetUBound(array, 1, &upper);
  EXPECT_EQ(lower, 0);
  EXPECT_EQ(SafeArrayGetDim(array), 1u);
  std::vector<std::string> keys;
  for (LONG i = lower; i <= upper; ++i) {
    zdm::Bstr key;
    EXPECT_EQ(SafeArrayGetElement(array, &i, key.Out()), S_OK);
    keys.push_back(zdm::ToUtf8(key.Get()));
  }
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
  return keys;
}

TEST(ExtDataMgr, OrdersKeysByTheirFieldsAsUnsignedNumbers) {
  const std::vector<std::string> ordered = {
      "{00000000-0000-0000-0000-000000000001}", "{00000000-0000-0000-0100-000000000000}",
      "{00000000-0000-0000-7F00-000000000000}", "{00000000-0000-0000-8000-000000000000}",
      "{00000000-0000-0001-0000-000000000000}", "{00000000-0000-8000-0000-000000000000}",
      "{00000000-0001-0000-0000-000000000000}", "{00000000-0100-0000-0000-000000000000}",
      "{00000001-0000-0000-0000-000000000000}", "{00000100-0000-0000-0000-000000000000}",
      "{80000000-0000-0000-0000-000000000000}"};
  auto manager = MakeMgr();
  EXPECT_TRUE(KeysOf(*manager).empty());
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    GUID key;
    const std::string& text = ordered[i * 7 % ordered.size()];
    ASSERT_EQ(CLSIDFromString(zdm::Bstr(zdm::FromUtf8(text).c_str()).Get(), &key), S_OK);
    manager->QueryCollection(key);
  }
  EXPECT_EQ(KeysOf(*manager), ordered);
  EXPECT_EQ(Thrown([&] { manager->GetKeys(nullptr); }), E_POINTER);
}

TEST(ExtDataMgr, MakesACollectionOnFirstUse) {
  auto manager = MakeMgr();
  EXPECT_EQ(manager->GetCollection(kOne), nullptr);
  IZExtDataCollection* items = manager->QueryCollection(kOne);
  ASSERT_NE(items, nullptr);
  EXPECT_EQ(manager->GetCollection(kOne), items);
  EXPECT_EQ(manager->QueryCollection(kOne), items);
  EXPECT_EQ(items->GetReferenceCount(), 1u);
  manager->QueryCollection(kTwo);
  manager->RemoveCollection(kOne);
  EXPECT_EQ(KeysOf(*manager).size(), 1u);
}

TEST(ExtDataMgr, SavesGroupsInKeyOrderAndReadsThemBack) {
  auto manager = MakeMgr();
  manager->QueryCollection(kTwo)->AddTail(MakeItem(nullptr, 7));
  manager->QueryCollection(kOne);
  const Bytes expected =
      Hex("02000000 "                                   // groups
          "01000000000000000000000000000000 00000000 "  // key, no item
          "02000000000000000000000000000000 01000000 "  // key, one item
          "04 00000000 07000000");
  EXPECT_EQ(Saved(*manager), expected);

  // A group read takes the place of the one under its key; others stay.
  auto other = MakeMgr();
  other->QueryCollection(kTwo)->AddTail(MakeItem(OLESTR("old")));
  other->QueryCollection({3, 0, 0, {}});
  EXPECT_EQ(Load(*other, expected), S_OK);
  EXPECT_EQ(KeysOf(*other).size(), 3u);
  EXPECT_EQ(NamesIn(*other->GetCollection(kTwo)), "- ");

  ZRefPtr<IZExtDataMgr> copy;
  manager->Clone(copy.Out());
  EXPECT_EQ(Saved(*copy), expected);
  copy->GetCollection(kTwo)->RemoveAll();
  EXPECT_EQ(manager->GetCollection(kTwo)->GetCount(), 1);
}

TEST(ExtDataMgr, AStreamCutAnywhereLosesNothingThatWasGood) {
  auto manager = MakeMgr();
  manager->QueryCollection(kOne)->AddTail(MakeItem(OLESTR("a")));
  manager->QueryCollection(kTwo)->AddTail(MakeItem(OLESTR("b")));
  manager->GetCollection(kTwo)->AddTail(MakeItem(OLESTR("c")));
  const Bytes bytes = Saved(*manager);
  const std::size_t first = 4 + 16 + 4 + 9;       // the end of the first group
  const std::size_t second = first + 16 + 4 + 9;  // the end of the first item of the second
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    SCOPED_TRACE(size);
    auto fresh = MakeMgr();
    EXPECT_EQ(Load(*fresh, Cut(bytes, size)), E_FAIL);
    const auto names = [](IZExtDataMgr& from, const GUID& key) {
      return from.GetCollection(key) != nullptr ? NamesIn(*from.GetCollection(key)) : "";
    };
    EXPECT_EQ(names(*fresh, kOne), size < first ? "" : "a ");
    EXPECT_EQ(names(*fresh, kTwo), size < second ? "" : "b ");
    // One that holds something keeps it unless its successor is whole.
    auto held = MakeMgr();
    held->QueryCollection(kTwo)->AddTail(MakeItem(OLESTR("old")));
    EXPECT_EQ(Load(*held, Cut(bytes, size)), E_FAIL);
    EXPECT_EQ(names(*held, kTwo), "old ");
  }
  Bytes hostile = bytes;
  std::fill_n(hostile.begin(), 3, BYTE{0xFF});
  auto fresh = MakeMgr();
  EXPECT_EQ(Load(*fresh, hostile), E_FAIL);
  EXPECT_EQ(KeysOf(*fresh).size(), 2u);
  EXPECT_EQ(Load(*MakeMgr(), {0xFF, 0xFF, 0xFF, 0xFF}), S_OK);  // a negative count is none
}

}  // namespace
