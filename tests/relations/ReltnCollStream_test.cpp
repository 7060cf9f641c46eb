// What a relation collection writes, and what it makes of damaged bytes.
#include "tests/relations/ReltnSupport.h"
#include "tests/support/Bytes.h"
#include "tests/support/Thrown.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zdm::test;

const Bytes kPlainClass = Hex("56E4F869 A823 F94B A7655CCF27951F72");
const Bytes kCollClass = Hex("25E5BE64 2471 0E45 B4087A7D31972CDC");

/// The record of a plain valid relation, class identifier in front.
Bytes Entry(char letter, LONG target = 0) {
  return kPlainClass + Words({ZRS_VALID, letter, 0, target});
}

/// A collection that holds nothing but a collection, `depth` collections in all.
Bytes Nested(int depth) {
  const Bytes level = Words({1}) + kCollClass;
  Bytes bytes;
  for (; depth > 1; --depth) bytes = std::move(bytes) + level;
  return bytes + Words({0});
}

/// Loads and answers what the collection then holds; "!" in front when loading threw.
std::string Loaded(const Bytes& bytes, const char* former = "") {
  const auto coll = MakeReltns(former);
  ByteStream stream(bytes);
  const HRESULT result = Thrown([&] { coll->Load(&stream, nullptr); });
  EXPECT_TRUE(result == S_OK || result == E_FAIL);
  return (result == S_OK ? "" : "!") + LettersIn(*coll);
}

TEST(ReltnCollStream, WritesClassAndRecordOfValidElements) {
  const auto coll = MakeReltns("aB-c");
  coll->AddTail(MakeReltns("n"));
  OID oid(0, 0, 7, nullptr);
  zdm::ViewAs<IZSingleReltn>(coll->GetHead())->SetReltnOID(&oid);
  EXPECT_EQ(Saved(*coll), Words({2}) + Entry('a', 7) + Entry('c'));
  EXPECT_EQ(Saved(*MakeReltns("A-")), Words({0}));
}

TEST(ReltnCollStream, AppendsWhatItReads) {
  EXPECT_EQ(Loaded(Saved(*MakeReltns("aBc")), "xY"), "xYac");
  EXPECT_EQ(Loaded(Words({0}), "x"), "x");
  EXPECT_EQ(Loaded(Words({-1}) + Entry('a'), "x"), "x") << "a negative count is none";
  EXPECT_EQ(Loaded(Words({0x7FFFFFFF}) + Entry('a')), "!a") << "memory is not taken for a count";
  Bytes invalid = Words({1}) + Entry('a');
  invalid[4 + 16 + 2] = 0;  // ZRS_VALID
  EXPECT_EQ(Loaded(invalid), "A");
}

TEST(ReltnCollStream, LooksTargetsUp) {
  OID oid(0, 0, 7, nullptr);
  Lookup database;
  database.records[7] = &oid;
  ByteStream stream(Words({1}) + Entry('a', 7));
  const auto coll = MakeReltns("");
  coll->Load(&stream, &database);
  EXPECT_EQ(zdm::ViewAs<IZSingleReltn>(coll->GetHead())->GetReltnOID(), &oid);
  EXPECT_EQ(coll->GetHead()->GetReferenceCount(), 1u);
}

TEST(ReltnCollStream, KeepsElementsReadBeforeAForeignClass) {
  const Bytes whole = Words({3}) + Entry('a') + Entry('b') + Entry('c');
  Bytes unknown = whole;
  unknown[36] ^= 0xFF;  // second element: 4 count + 16 class id + 16 record
  EXPECT_EQ(Loaded(unknown), "!a");
  // Element, a class that is no relation.
  const int before = Element::alive;
  const Bytes element = Hex("0000577E 0000 0040 8000000000000002");
  Element::zInit();
  std::copy(element.begin(), element.end(), unknown.begin() + 36);
  EXPECT_EQ(Loaded(unknown), "!a");
  EXPECT_EQ(Element::alive, before) << "what was made for it is gone";
}

TEST(ReltnCollStream, KeepsWholeElementsOfAShortStream) {
  const Bytes whole = Words({2}) + Entry('a') + Entry('b');
  const int before = PlainReltn::alive;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(Loaded(Cut(whole, length), "x"), length < 36 ? "!x" : "!xa") << length;
  }
  EXPECT_EQ(PlainReltn::alive, before);
}

TEST(ReltnCollStream, LoadsNestedCollectionsToADepthOf256) {
  EXPECT_EQ(Loaded(Nested(256)), "?");
  EXPECT_EQ(Loaded(Nested(257)), "!");
  EXPECT_EQ(Loaded(Words({2}) + Entry('a') + kCollClass + Nested(100'000)), "!a");
  EXPECT_EQ(Loaded(Nested(256)), "?") << "the depth is counted anew";
  const zdm::LoadDepth outer;
  EXPECT_EQ(Loaded(Nested(256)), "!") << "other records count";
  EXPECT_EQ(Loaded(Nested(255)), "?");
}

}  // namespace
