// The names of parts: their order, their bytes, and bytes that are none.
#include "platform/geometry/SubID.h"

#include "platform/ole/CAtlException.h"
#include "tests/support/ByteStream.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Bytes = std::vector<BYTE>;
using zdm::test::ByteStream;
using SubIDPtr = std::unique_ptr<SubID>;

const Bytes kEdgeBytes = {1, 2, 2, 0, 7, 0, 0, 0, 0x04, 0x03, 0x02, 0x81};

SubID Edge() { return SubID(SubID::kEdge, {7, 0x81020304}); }

SubID Deepest() {
  SubID id(static_cast<SubID::Kind>(0xFFFF));
  while (SUCCEEDED(id.Append(0xFFFFFFFF - id.GetDepth()))) continue;
  return id;
}

Bytes Save(const SubID* id) {
  ByteStream stream;
  SaveSubID(&stream, id);
  return stream.GetBytes();
}

// The SubID at the start of `bytes`, and how many it took; null with `result` for damage.
SubIDPtr Load(const Bytes& bytes, HRESULT& result, ULONGLONG& used) {
  ByteStream stream(bytes);
  SubID stale;
  SubID* out = &stale;
  result = S_OK;
  try {
    LoadSubID(&stream, &out);
  } catch (const CAtlException& e) {
    result = e.m_hr;
    EXPECT_EQ(out, nullptr);
  }
  used = stream.GetPosition();
  return SubIDPtr(out);
}

TEST(SubIDStream, HasItsDocumentedBytes) {
  const SubID edge = Edge();
  EXPECT_EQ(Save(&edge), kEdgeBytes);
  EXPECT_EQ(Save(nullptr), Bytes{0});
}

TEST(SubIDStream, BringsBackWhatWasSaved) {
  const SubID values[] = {SubID(), SubID(SubID::kFace), Edge(), Deepest()};
  ByteStream stream;
  for (const SubID& value : values) {
    SaveSubID(&stream, &value);
    SaveSubID(&stream, nullptr);
  }
  stream.Seek(0, STREAM_SEEK_SET);
  for (const SubID& value : values) {
    SubID* out = nullptr;
    LoadSubID(&stream, &out);
    const SubIDPtr loaded(out);
    EXPECT_TRUE(value.IsSame(loaded.get()));
    LoadSubID(&stream, &out);
    EXPECT_EQ(out, nullptr);
  }
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
}

TEST(SubIDStream, EveryShortStreamIsDamage) {
  const SubID deepest = Deepest();
  const Bytes whole = Save(&deepest);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    HRESULT result = S_OK;
    ULONGLONG used = 0;
    Load(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)), result, used);
    EXPECT_EQ(result, E_FAIL) << length;
    EXPECT_LE(used, 4u) << length;  // the depth is checked before a path is read
  }
}

TEST(SubIDStream, ADamagedByteIsRefusedOrMeansAnotherSubID) {
  for (std::size_t at = 0; at < kEdgeBytes.size(); ++at) {
    for (unsigned value = 0; value < 256; ++value) {
      Bytes bytes = kEdgeBytes;
      bytes[at] = static_cast<BYTE>(value);
      HRESULT result = S_OK;
      ULONGLONG used = 0;
      const SubIDPtr loaded = Load(bytes, result, used);
      const bool isRefused = (at == 0 && value > 1) || (at == 1 && value > 2);
      EXPECT_EQ(result, isRefused ? E_FAIL : S_OK) << at << " " << value;
      if (isRefused) continue;
      bytes.resize(used);
      EXPECT_EQ(Save(loaded.get()), bytes) << at << " " << value;
    }
  }
}

TEST(SubIDStream, ADepthAboveTheLimitIsDamageEvenWithItsBytesThere) {
  const SubID deepest = Deepest();
  Bytes bytes = Save(&deepest);
  bytes[1] = SubID::kMaxDepth + 1;
  bytes.resize(bytes.size() + 1200);
  HRESULT result = S_OK;
  ULONGLONG used = 0;
  Load(bytes, result, used);
  EXPECT_EQ(result, E_FAIL);
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
  EXPECT_TRUE(full.IsSame(SubIDPtr(full.Clone()).get()));
  EXPECT_THROW(SubID(SubID::kEdge, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}),
               CAtlException);
}

}  // namespace
