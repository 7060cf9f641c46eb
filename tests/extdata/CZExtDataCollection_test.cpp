// The items of a group: copies, the record, what damage leaves, nesting.
#include "zdm/extdata/CZExtDataCollection.h"

#include "tests/extdata/ExtDataSupport.h"
#include "zdm/framework/LoadDepth.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

TEST(ExtDataCollection, KeepsItemsOfOneNameInTheirOrder) {
  auto items = MakeItems({MakeItem(OLESTR("a"), 1), MakeItem(OLESTR("b")), MakeItem(OLESTR("a"), 2),
                          zdm::Attached(new Stranger)});
  EXPECT_EQ(NamesIn(*items), "a b a null ");
  const Bytes saved = Saved(*items);
  const Bytes expected = {3, 0, 0, 0,                               // the null element is not
                          4, 4, 0, 0, 0, 'a', 0, 0, 0, 1, 0, 0, 0,  //
                          0, 4, 0, 0, 0, 'b', 0, 0, 0,              //
                          4, 4, 0, 0, 0, 'a', 0, 0, 0, 2, 0, 0, 0};
  EXPECT_EQ(saved, expected);

  auto loaded = MakeItems({MakeItem(OLESTR("first"))});
  EXPECT_EQ(Load(*loaded, saved), S_OK);
  EXPECT_EQ(NamesIn(*loaded), "first a b a ");

  ZRefPtr<IZExtDataCollection> copy;
  items->Clone(copy.Out());
  EXPECT_EQ(Saved(*copy), saved);
  EXPECT_EQ(NamesIn(*copy), "a b a ");
  EXPECT_NE(copy->GetHead(), items->GetHead());
  EXPECT_EQ(copy->GetHead()->GetReferenceCount(), 1u);
}

TEST(ExtDataCollection, CopyFromReplacesWhatItHolds) {
  auto items = MakeItems({MakeItem(OLESTR("old"))});
  items->CopyFrom(items);
  items->CopyFrom(nullptr);
  items->Clone(static_cast<IZExtDataCollection**>(nullptr));
  EXPECT_EQ(NamesIn(*items), "old ");
  // A source that only the receiver keeps alive.
  auto inner = MakeItems({MakeItem(OLESTR("x")), MakeNote(OLESTR("y"), 1)});
  items->AddTail(MakeItem(OLESTR("inner"), inner));
  items->CopyFrom(inner);
  EXPECT_EQ(NamesIn(*items), "x y ");
}

TEST(ExtDataCollection, AStreamCutAnywhereKeepsTheItemsBeforeTheCut) {
  auto inner = MakeItems({MakeItem(OLESTR("c"), 3), MakeItem(OLESTR("d"), 4)});
  const auto whole =
      MakeItems({MakeItem(OLESTR("a"), 1), MakeItem(OLESTR("b"), inner), MakeNote(OLESTR("n"), 5)});
  const Bytes bytes = Saved(*whole);
  constexpr std::size_t kFirst = 4 + 13;               // the end of a
  constexpr std::size_t kInner = kFirst + 9 + 4 + 13;  // the end of c
  constexpr std::size_t kSecond = kInner + 13;         // the end of d and b
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    SCOPED_TRACE(size);
    const auto items = MakeItems({});
    EXPECT_EQ(Load(*items, Cut(bytes, size)), E_FAIL);
    EXPECT_EQ(NamesIn(*items), size < kFirst ? "" : size < kInner ? "a " : "a b ");
    if (size < kInner) continue;
    IZExtDataCollection* nested = nullptr;
    zdm::ViewAs<IZExtDataAccess>(At(*items, 1))->GetCollection(&nested);
    EXPECT_EQ(NamesIn(*nested), size < kSecond ? "c " : "c d ");
  }
}

TEST(ExtDataCollection, DoesNotBelieveItsCount) {
  const Bytes item = {4, 0, 0, 0, 0, 7, 0, 0, 0};
  struct Case {
    LONG count;
    HRESULT result;
    const char* names;
  };
  constexpr Case kCases[] = {{0, S_OK, ""},
                             {-1, S_OK, ""},
                             {1, S_OK, "- "},
                             {2, E_FAIL, "- "},
                             {0x7FFFFFFF, E_FAIL, "- "}};
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.count);
    ByteStream stream;
    stream.WriteCount(row.count);
    stream.Write(item.data(), static_cast<ULONG>(item.size()));
    const auto items = MakeItems({});
    EXPECT_EQ(Load(*items, stream.GetBytes()), row.result);
    EXPECT_EQ(NamesIn(*items), row.names);
  }
}

/// The record of `depth` nested collections.
Bytes NestedRecord(int depth) {
  Bytes bytes;
  for (int i = 1; i < depth; ++i) bytes.insert(bytes.end(), {1, 0, 0, 0, 9, 0, 0, 0, 0});
  bytes.insert(bytes.end(), {0, 0, 0, 0});
  return bytes;
}

TEST(ExtDataCollection, NestsToTheDepthLimitBothWays) {
  const int limit = zdm::LoadDepth::kMax;
  const auto deepest = MakeItems({});
  EXPECT_EQ(Load(*deepest, NestedRecord(limit)), S_OK);
  EXPECT_EQ(DepthOf(deepest), limit);
  EXPECT_EQ(Saved(*deepest), NestedRecord(limit));
  const auto deeper = MakeItems({});
  EXPECT_EQ(Load(*deeper, NestedRecord(limit + 1)), E_FAIL);
  EXPECT_EQ(Load(*deeper, NestedRecord(100000)), E_FAIL);
  EXPECT_EQ(Thrown([&] { Saved(*deeper); }), S_OK);  // what was kept can be written
  EXPECT_EQ(Thrown([&] { Saved(*MakeNested(limit)); }), S_OK);
  EXPECT_EQ(Thrown([&] { Saved(*MakeNested(limit + 1)); }), E_FAIL);
}

TEST(ExtDataCollection, ThatHoldsItselfIsWrittenOnce) {
  auto items = MakeItems({});
  auto inner = MakeItems({MakeItem(OLESTR("up"), items), MakeItem(OLESTR("up"), items)});
  items->AddTail(MakeItem(OLESTR("in"), inner));
  for (int i = 0; i < 2; ++i) {
    const auto loaded = MakeItems({});
    EXPECT_EQ(Load(*loaded, Saved(*items)), S_OK);
    EXPECT_EQ(DepthOf(loaded), 3);
  }
  ZRefPtr<IZExtDataCollection> copy;
  items->Clone(copy.Out());
  EXPECT_EQ(copy->GetCount(), 1);
  items->RemoveAll();  // the cycle is the caller's to break
}

}  // namespace
