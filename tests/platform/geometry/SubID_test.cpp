// The names of parts: their order, their bytes, and bytes that are none.
#include "platform/geometry/SubID.h"

#include "tests/support/Bytes.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using namespace zdm::test;

const Bytes kEdgeBytes = Hex("01:02:02 00:07 00 00 00:04 03 02 81");

SubID Edge() { return SubID(SubID::kEdge, {7, 0x81020304}); }

SubID Deepest() {
  SubID id(static_cast<SubID::Kind>(0xFFFF));
  while (SUCCEEDED(id.Append(0xFFFFFFFF - id.GetDepth()))) continue;
  return id;
}

Bytes Save(const SubID* id) {
  return Written([&](IZStream* stream) { SaveSubID(stream, id); });
}

/// What the SubID at the start of `bytes` is saved as; nothing for damage.
std::optional<Bytes> SavedAgain(const Bytes& bytes, ULONGLONG* used = nullptr) {
  ByteStream stream(bytes);
  SubID stale;
  SubID* out = &stale;
  const HRESULT result = Thrown([&] { LoadSubID(&stream, &out); });
  if (used != nullptr) *used = stream.GetPosition();
  if (result != S_OK) {
    EXPECT_EQ(result, E_FAIL);
    EXPECT_EQ(out, nullptr);
    return {};
  }
  const std::unique_ptr<SubID> loaded(out);
  Bytes saved = Save(out);
  EXPECT_EQ(saved.size(), stream.GetPosition());
  return saved;
}

TEST(SubIDStream, HasItsDocumentedBytesAndComesBack) {
  const SubID edge = Edge();
  EXPECT_EQ(Save(&edge), kEdgeBytes);
  EXPECT_EQ(Save(nullptr), Bytes{0});
  EXPECT_EQ(SavedAgain({0}), Bytes{0});
  for (const SubID& value : {SubID(), SubID(SubID::kFace), edge, Deepest()}) {
    EXPECT_EQ(SavedAgain(Save(&value)), Save(&value));
  }
}

TEST(SubIDStream, ShortStreamsAndTooManyIndicesAreDamage) {
  const SubID deepest = Deepest();
  Bytes whole = Save(&deepest);
  ULONGLONG used = 0;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(SavedAgain(Cut(whole, length), &used)) << length;
    EXPECT_LE(used, 4u) << length;  // the depth is checked before a path is read
  }
  whole[1] = SubID::kMaxDepth + 1;
  whole.resize(whole.size() + 1200);
  EXPECT_FALSE(SavedAgain(whole)) << "even with its bytes there";
}

TEST(SubIDStream, ADamagedByteIsRefusedOrMeansAnotherSubID) {
  for (std::size_t at = 0; at < kEdgeBytes.size(); ++at) {
    for (unsigned value = 0; value < 256; ++value) {
      Bytes bytes = kEdgeBytes;
      bytes[at] = static_cast<BYTE>(value);
      const std::optional<Bytes> saved = SavedAgain(bytes);
      const bool isRefused = (at == 0 && value > 1) || (at == 1 && value > 2);
      EXPECT_EQ(saved.has_value(), !isRefused) << at << " " << value;
      if (saved) bytes.resize(saved->size());
      EXPECT_EQ(saved.value_or(bytes), bytes) << at << " " << value;
    }
  }
}

TEST(SubID, IsOrderedByKindDepthAndPath) {
  const SubID ascending[] = {SubID(),
                             SubID(SubID::kNone, {0}),
                             SubID(SubID::kEdge),
                             SubID(SubID::kEdge, {0}),
                             SubID(SubID::kEdge, {9}),
                             SubID(SubID::kEdge, {0, 0}),
                             SubID(SubID::kEdge, {1, 0xFFFFFFFF}),
                             SubID(SubID::kEdge, {2, 0}),
                             SubID(SubID::kFace),
                             SubID(SubID::kFirstHostKind, {1})};
  const std::size_t count = std::size(ascending);
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j < count; ++j) {
      EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
      EXPECT_EQ(ascending[i].IsSame(&ascending[j]), i == j) << i << " " << j;
    }
  }
  EXPECT_FALSE(SubID().IsSame(nullptr));
}

TEST(SubID, TakesSixteenIndices) {
  SubID full = Deepest();
  EXPECT_EQ(full.GetDepth(), 16u);
  EXPECT_EQ(full.GetIndex(15), 0xFFFFFFF0u);
  EXPECT_EQ(full.GetIndex(16), 0u);
  EXPECT_EQ(full.Append(1), E_INVALIDARG);
  EXPECT_TRUE(full.IsSame(std::unique_ptr<SubID>(full.Clone()).get()));
  EXPECT_THROW(SubID(SubID::kEdge, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}),
               CAtlException);
}

}  // namespace
