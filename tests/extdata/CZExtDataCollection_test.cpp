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
  EXPECT_EQ(saved, Hex("03000000 "  // the null element is not
                       "04 0400000061000000 01000000 "
                       "00 0400000062000000 "
                       "04 0400000061000000 02000000"));

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
  const struct {
    const char* count;
    HRESULT result;
    const char* names;
  } rows[] = {{"00000000", S_OK, ""},
              {"FFFFFFFF", S_OK, ""},
              {"01000000", S_OK, "- "},
              {"02000000", E_FAIL, "- "},
              {"FFFFFF7F", E_FAIL, "- "}};
  for (const auto& row : rows) {
    const auto items = MakeItems({});
    EXPECT_EQ(Load(*items, Join({Hex(row.count), {4, 0, 0, 0, 0, 7, 0, 0, 0}})), row.result)
        << row.count;
    EXPECT_EQ(NamesIn(*items), row.names) << row.count;
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
  EXPECT_EQ(Saved(*deepest), NestedRecord(limit));
  EXPECT_EQ(Thrown([&] { Saved(*MakeItems({MakeItem(OLESTR("in"), deepest)})); }), E_FAIL);
  for (const int depth : {limit + 1, 100000}) {
    const auto deeper = MakeItems({});
    EXPECT_EQ(Load(*deeper, NestedRecord(depth)), E_FAIL);
    EXPECT_EQ(Thrown([&] { Saved(*deeper); }), S_OK) << "what was kept can be written";
  }
}

TEST(ExtDataCollection, ThatHoldsItselfIsWrittenOnce) {
  auto items = MakeItems({});
  auto inner = MakeItems({MakeItem(OLESTR("u"), items), MakeItem(OLESTR("u"), items)});
  items->AddTail(MakeItem(OLESTR("i"), inner));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Saved(*items), Hex("01000000 09 0400000069000000 02000000 "
                                 "09 0400000075000000 00000000 09 0400000075000000 00000000"));
  }
  ZRefPtr<IZExtDataCollection> copy;
  items->Clone(copy.Out());
  EXPECT_EQ(copy->GetCount(), 1);
  items->RemoveAll();  // the cycle is the caller's to break
}

}  // namespace
