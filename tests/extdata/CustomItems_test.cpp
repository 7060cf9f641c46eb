// Items of a host's own classes, and the proxies that stand in for them.
#include "tests/extdata/ExtDataSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zdm::test;

/// The record of a note "n" with the number 5.
const Bytes kRecord =
    Hex("14 0000577E000000408000000000000301 "  // tag, class
        "0C000000 040000006E000000 05000000");  // length, data
constexpr std::size_t kClass = 1;
constexpr std::size_t kLength = 17;
constexpr std::size_t kData = 21;

/// A collection record: the item `record` between two others.
Bytes Between(const Bytes& record) {
  const Bytes other = Saved(*MakeItem(OLESTR("a"), 1));
  return Join({{3, 0, 0, 0}, other, record, other});
}

/// The middle item of a collection read from Between(record), by its proxy's view if it is one.
struct Middle {
  explicit Middle(const Bytes& record)
      : items(MakeItems({})), result(Load(*items, Between(record))) {
    if (items->GetCount() > 1) proxy = zdm::ViewAs<IZProxyExtDataObj>(At(*items, 1));
  }
  ZRefPtr<IZExtDataCollection> items;
  HRESULT result;
  IZProxyExtDataObj* proxy = nullptr;
};

TEST(CustomItem, IsStoredUnderItsClassWithItsLength) {
  auto note = MakeNote(OLESTR("n"), 5);
  EXPECT_EQ(Saved(*note), kRecord);
  Middle middle(kRecord);
  EXPECT_EQ(middle.result, S_OK);
  EXPECT_EQ(middle.proxy, nullptr);
  EXPECT_EQ(NamesIn(*middle.items), "a n a ");
  EXPECT_EQ(Saved(*middle.items), Between(kRecord));

  const int before = Note::alive;
  ZRefPtr<IZExtData> copy;
  note->Clone(copy.Out());
  EXPECT_EQ(Note::alive, before + 1);
  EXPECT_EQ(Saved(*copy), kRecord);
  copy->CopyFrom(copy);
  copy->CopyFrom(nullptr);
  EXPECT_EQ(NameOf(*copy), "n");
}

// A newer version of the class may have written more than this one reads.
TEST(CustomItem, ThatReadsLessThanItsLengthIsFollowedByTheNextItem) {
  Bytes longer = kRecord;
  longer[kLength] += 3;
  longer.insert(longer.end(), {7, 7, 7});
  Middle middle(longer);
  EXPECT_EQ(middle.result, S_OK);
  EXPECT_EQ(middle.proxy, nullptr);
  EXPECT_EQ(NamesIn(*middle.items), "a n a ");
}

TEST(Proxy, KeepsWhatCannotBeLoadedAndWritesItBack) {
  MakeNote(nullptr, 0);  // known from here on
  const auto changed = [](auto change) {
    Bytes record = kRecord;
    change(record);
    return record;
  };
  const struct {
    const char* name;
    Bytes record;
  } cases[] = {
      {"unknown class", changed([](Bytes& record) { record[kClass] = 0xFF; })},
      {"no class",
       changed([](Bytes& record) { std::fill_n(record.begin() + kClass, 16, BYTE{0}); })},
      {"class that is no item", changed([](Bytes& record) {
         std::memcpy(&record[kClass], &zdm::ClassRow<CZExtDataMgr>::kClassID, 16);
       })},
      {"class of plain items", changed([](Bytes& record) {
         std::memcpy(&record[kClass], &zdm::ClassRow<CZExtDataObj>::kClassID, 16);
       })},
      {"no data", changed([](Bytes& record) {
         record.resize(kData);
         record[kLength] = 0;
         record[kClass] = 0xFF;
       })},
      {"damaged data", changed([](Bytes& record) { record[kData] = 0x7F; })},
      {"data past the length", changed([](Bytes& record) {
         record.pop_back();
         --record[kLength];
       })},
      {"data that the class refuses", changed([](Bytes& record) {
         record[kData + 8] = 0xAD;
         record[kData + 9] = 0x0B;
       })},
  };
  const int before = Note::alive;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    Middle middle(row.record);
    EXPECT_EQ(middle.result, S_OK);
    EXPECT_EQ(NamesIn(*middle.items), "a - a ");
    ASSERT_NE(middle.proxy, nullptr);
    EXPECT_EQ(std::memcmp(middle.proxy->GetClassID(), &row.record[kClass], 16), 0);
    void* data = nullptr;
    const int length = middle.proxy->GetData(&data);
    const auto* first = static_cast<BYTE*>(data);
    EXPECT_EQ(Bytes(first, first + length), Bytes(row.record.begin() + kData, row.record.end()));
    CoTaskMemFree(data);

    EXPECT_EQ(Saved(*middle.items), Between(row.record));
    ZRefPtr<IZExtDataCollection> copy;
    middle.items->Clone(copy.Out());
    EXPECT_EQ(Saved(*copy), Between(row.record));
  }
  EXPECT_EQ(Note::alive, before);
}

TEST(Proxy, TakesNoLengthThatTheStreamDoesNotHave) {
  for (const ULONG length : {13u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    Bytes record = kRecord;
    record[kClass] = 0xFF;
    std::memcpy(&record[kLength], &length, 4);
    CZProxyExtDataObj proxy;
    EXPECT_EQ(Load(static_cast<IZExtData&>(proxy), record), E_FAIL);
    EXPECT_EQ(proxy.GetData(nullptr), 0);
  }
  Bytes record = kRecord;
  record[0] = 4;
  CZProxyExtDataObj proxy;
  EXPECT_EQ(Load(static_cast<IZExtData&>(proxy), record), E_FAIL);
}

TEST(Proxy, OwnsACopyOfItsBytes) {
  CZProxyExtDataObj proxy;
  IZProxyExtDataObj& view = proxy;
  BYTE bytes[] = {1, 2, 3};
  view.SetData(bytes, 3);
  bytes[0] = 9;
  void* data = nullptr;
  ASSERT_EQ(view.GetData(&data), 3);
  EXPECT_EQ(*static_cast<BYTE*>(data), 1);
  CoTaskMemFree(data);
  proxy.CopyFrom(MakeItem(OLESTR("n"), 5));  // no proxy: the name alone
  EXPECT_EQ(view.GetData(nullptr), 3);
  view.SetData(bytes, -1);
  EXPECT_EQ(view.GetData(&data), 0);
  EXPECT_EQ(data, nullptr);
}

}  // namespace
