// What a relation collection writes, and what it makes of damaged bytes.
#include "platform/ole/CAtlException.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zdm::test;
using Bytes = std::vector<BYTE>;

// clang-format off
const Bytes kPlainClass = {0x56, 0xE4, 0xF8, 0x69, 0xA8, 0x23, 0xF9, 0x4B,
                           0xA7, 0x65, 0x5C, 0xCF, 0x27, 0x95, 0x1F, 0x72};
const Bytes kCollClass = {0x25, 0xE5, 0xBE, 0x64, 0x24, 0x71, 0x0E, 0x45,
                          0xB4, 0x08, 0x7A, 0x7D, 0x31, 0x97, 0x2C, 0xDC};
// clang-format on

Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

Bytes Number(LONG value) {
  const auto* bytes = reinterpret_cast<const BYTE*>(&value);
  return {bytes, bytes + sizeof(value)};
}

/// The record of a plain valid relation, class identifier in front.
Bytes Entry(char letter, LONG target = 0) {
  return kPlainClass + Number(ZRS_VALID) + Number(letter) + Number(0) + Number(target);
}

/// A collection that holds nothing but a collection, `depth` collections in all.
Bytes Nested(int depth) {
  const Bytes level = Number(1) + kCollClass;
  Bytes bytes;
  for (; depth > 1; --depth) bytes.insert(bytes.end(), level.begin(), level.end());
  return bytes + Number(0);
}

/// Loads and answers what the collection then holds; "!" in front when loading threw.
std::string Loaded(const Bytes& bytes, const char* former = "") {
  const auto coll = MakeReltns(former);
  ByteStream stream(bytes);
  try {
    coll->Load(&stream, nullptr);
  } catch (const CAtlException& damage) {
    EXPECT_EQ(damage.m_hr, E_FAIL);
    return "!" + LettersIn(*coll);
  }
  return LettersIn(*coll);
}

TEST(ReltnCollStream, WritesClassAndRecordOfValidElements) {
  const auto coll = MakeReltns("aB-c");
  coll->AddTail(MakeReltns("n"));
  OID oid(0, 0, 7, nullptr);
  zdm::ViewAs<IZSingleReltn>(coll->GetHead())->SetReltnOID(&oid);
  EXPECT_EQ(Saved(*coll), Number(2) + Entry('a', 7) + Entry('c'));
  EXPECT_EQ(Saved(*MakeReltns("A-")), Number(0));
}

TEST(ReltnCollStream, AppendsWhatItReads) {
  EXPECT_EQ(Loaded(Saved(*MakeReltns("aBc")), "xY"), "xYac");
  EXPECT_EQ(Loaded(Number(0), "x"), "x");
  EXPECT_EQ(Loaded(Number(-1) + Entry('a'), "x"), "x") << "a negative count is none";
}

TEST(ReltnCollStream, KeepsTheStatusOfTheRecords) {
  Bytes bytes = Number(1) + Entry('a');
  bytes[4 + 16 + 2] = 0;  // ZRS_VALID
  EXPECT_EQ(Loaded(bytes), "A");
}

TEST(ReltnCollStream, LooksTargetsUp) {
  OID oid(0, 0, 7, nullptr);
  Lookup database;
  database.records[7] = &oid;
  ByteStream stream(Number(1) + Entry('a', 7));
  const auto coll = MakeReltns("");
  coll->Load(&stream, &database);
  EXPECT_EQ(zdm::ViewAs<IZSingleReltn>(coll->GetHead())->GetReltnOID(), &oid);
  EXPECT_EQ(coll->GetHead()->GetReferenceCount(), 1u);
}

TEST(ReltnCollStream, KeepsElementsReadBeforeAForeignClass) {
  const Bytes whole = Number(3) + Entry('a') + Entry('b') + Entry('c');
  Bytes unknown = whole;
  unknown[36] ^= 0xFF;  // second element: 4 count + 16 class id + 16 record
  EXPECT_EQ(Loaded(unknown), "!a");
  // Element, a class that is no relation.
  const int before = Element::alive;
  const Bytes element = {0, 0, 0x57, 0x7E, 0, 0, 0, 0x40, 0x80, 0, 0, 0, 0, 0, 0, 2};
  Element::zInit();
  std::copy(element.begin(), element.end(), unknown.begin() + 36);
  EXPECT_EQ(Loaded(unknown), "!a");
  EXPECT_EQ(Element::alive, before) << "what was made for it is gone";
}

TEST(ReltnCollStream, KeepsWholeElementsOfAShortStream) {
  const Bytes whole = Number(2) + Entry('a') + Entry('b');
  const int before = PlainReltn::alive;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(Loaded(cut, "x"), length < 36 ? "!x" : "!xa") << length;
  }
  EXPECT_EQ(PlainReltn::alive, before);
}

TEST(ReltnCollStream, HostileCountTakesNoMemory) {
  EXPECT_EQ(Loaded(Number(0x7FFFFFFF) + Entry('a')), "!a");
}

TEST(ReltnCollStream, LoadsNestedCollectionsToADepthOf256) {
  EXPECT_EQ(Loaded(Nested(256)), "?");
  EXPECT_EQ(Loaded(Nested(257)), "!");
  EXPECT_EQ(Loaded(Number(2) + Entry('a') + kCollClass + Nested(100'000)), "!a");
  EXPECT_EQ(Loaded(Nested(256)), "?") << "the depth is counted anew";
  const zdm::LoadDepth outer;
  EXPECT_EQ(Loaded(Nested(256)), "!") << "other records count";
  EXPECT_EQ(Loaded(Nested(255)), "?");
}

}  // namespace
