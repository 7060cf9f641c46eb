// The serialization stream: bytes, strings, positions, and what happens when the IStream fails.
#include "platform/core/CZStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "platform/core/CAtlException.h"
#include "platform/core/ZCore.h"
#include "platform/ole/Bstr.h"
#include "tests/support/TestStream.h"
#include "zdm/framework/ZRefPtr.h"

namespace {

using Bytes = std::vector<BYTE>;
using zdm::test::TestStream;

struct Opened {
  explicit Opened(Bytes content = {}) : below(std::move(content)) { stream.AttachStream(&below); }
  TestStream below;
  CZStream stream;  // goes first
};

template <class Call>
HRESULT Thrown(Call call) {
  try {
    call();
  } catch (const CAtlException& failure) {
    return failure;
  }
  return S_OK;
}

TEST(Stream, IsMadeByTheFactory) {
  CZObject* created = ZCore::GetZFactory()->Create(CZStream::kClassID);
  ASSERT_NE(created, nullptr);
  auto stream = zdm::Attached(zdm::ViewAs<IZStream>(created));
  TestStream below;
  EXPECT_EQ(stream->AttachStream(&below), S_OK);
  EXPECT_EQ(below.references, 1);
  stream->WriteCount(-2);
  stream.Reset();
  EXPECT_EQ(below.references, 0);
  EXPECT_EQ(below.bytes, (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
}

TEST(Stream, WritesScalarsAndStringsByteByByte) {
  Opened opened;
  opened.stream.WriteFlag(true);
  opened.stream.WriteFlag(false);
  opened.stream.WriteCount(0x01020304);
  opened.stream.WriteBSTR(nullptr);
  opened.stream.WriteBSTR(zdm::Bstr(OLESTR("")).Get());
  opened.stream.WriteBSTR(zdm::Bstr(OLESTR("a\0\u7F3A"), 3).Get());
  opened.stream.AttachStream(nullptr);
  EXPECT_EQ(opened.below.bytes,
            (Bytes{1, 0, 4, 3, 2,   1,                             // flags, count
                   0, 0, 0, 0,                                     // null
                   2, 0, 0, 0, 0,   0,                             // empty
                   8, 0, 0, 0, 'a', 0, 0, 0, 0x3A, 0x7F, 0, 0}));  // three units
}

TEST(Stream, ReadsBackStringsNullAndEmptyApart) {
  Opened opened;
  const zdm::Bstr texts[] = {zdm::Bstr(), zdm::Bstr(OLESTR("")), zdm::Bstr(OLESTR("x\0y"), 3)};
  for (const zdm::Bstr& text : texts) opened.stream.WriteBSTR(text.Get());
  opened.stream.Seek(0, STREAM_SEEK_SET);
  for (const zdm::Bstr& text : texts) {
    zdm::Bstr read;
    opened.stream.ReadBSTR(read.Out());
    EXPECT_TRUE(zdm::SameUnits(read.Get(), text.Get()));
    EXPECT_EQ(read.Get() == nullptr, text.Get() == nullptr);
  }
  EXPECT_EQ(opened.stream.GetBytesLeft(), 0u);
}

TEST(Stream, RefusesDamagedStringsBeforeTakingMemory) {
  const struct {
    const char* name;
    Bytes bytes;
  } kCases[] = {
      {"odd length", {3, 0, 0, 0, 'a', 0, 0}},
      {"longer than what is left", {4, 0, 0, 0, 'a', 0, 0}},
      {"four gigabytes", {0xFE, 0xFF, 0xFF, 0xFF, 'a', 0, 0, 0}},
      {"cut inside the length", {2, 0}},
      {"nothing", {}},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(row.name);
    Opened opened(row.bytes);
    BSTR text = reinterpret_cast<BSTR>(1);
    EXPECT_EQ(Thrown([&] { opened.stream.ReadBSTR(&text); }), E_FAIL);
    EXPECT_EQ(text, nullptr);
  }
}

TEST(Stream, ShortReadsZeroTheRestAndSayIt) {
  Opened opened({1, 2});
  BYTE data[4] = {9, 9, 9, 9};
  bool complete = true;
  opened.stream.Read(data, 4, &complete);
  EXPECT_FALSE(complete);
  EXPECT_EQ(Bytes(data, data + 4), (Bytes{1, 2, 0, 0}));
  EXPECT_EQ(Thrown([&] { opened.stream.Read(data, 1); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { opened.stream.ReadFlag(); }), E_FAIL);
  opened.stream.Read(data, 0, &complete);
  EXPECT_TRUE(complete);
  opened.stream.Seek(1, STREAM_SEEK_SET);
  EXPECT_TRUE(opened.stream.ReadFlag());
  Opened any({7});
  EXPECT_TRUE(any.stream.ReadFlag());  // any non-zero byte
}

TEST(Stream, SeeksFromThreeOriginsAndRefusesPlacesBeforeTheStart) {
  Opened opened(Bytes(10));
  EXPECT_EQ(opened.stream.Seek(-3, STREAM_SEEK_END), 7u);
  EXPECT_EQ(opened.stream.Seek(2, STREAM_SEEK_CUR), 9u);
  EXPECT_EQ(opened.stream.GetBytesLeft(), 1u);
  EXPECT_EQ(Thrown([&] { opened.stream.Seek(-11, STREAM_SEEK_END); }), E_INVALIDARG);
  EXPECT_EQ(Thrown([&] { opened.stream.Seek(-1, STREAM_SEEK_SET); }), E_INVALIDARG);
  EXPECT_EQ(Thrown([&] { opened.stream.Seek(INT64_MAX, STREAM_SEEK_CUR); }), E_INVALIDARG);
  EXPECT_EQ(Thrown([&] { opened.stream.Seek(0, 3); }), E_INVALIDARG);
  EXPECT_EQ(opened.stream.GetPosition(), 9u);
  EXPECT_EQ(opened.stream.Seek(20, STREAM_SEEK_SET), 20u);
  EXPECT_EQ(opened.stream.GetBytesLeft(), 0u);
}

TEST(Stream, PatchingALengthDoesNotReachTheSystem) {
  Opened opened;
  opened.below.failAfter = 0;  // any call would fail
  for (int i = 0; i < 1000; ++i) {
    const ULONGLONG at = opened.stream.GetPosition();
    opened.stream.WriteCount(0);
    opened.stream.WriteCount(i);
    opened.stream.Seek(static_cast<LONGLONG>(at), STREAM_SEEK_SET);
    opened.stream.WriteCount(4);
    opened.stream.Seek(0, STREAM_SEEK_END);
  }
  EXPECT_EQ(opened.stream.GetPosition(), 8000u);
  opened.below.failAfter = -1;
  opened.stream.GetIStream();
  EXPECT_EQ(opened.below.bytes.size(), 8000u);
  EXPECT_EQ(opened.below.bytes[7996], static_cast<BYTE>(999 & 0xFF));
}

TEST(Stream, HandsOutTheIStreamWhereItStandsAndResumesWhereItIsLeft) {
  Opened opened;
  opened.stream.WriteCount(1);
  IStream* below = opened.stream.GetIStream();
  ASSERT_EQ(below, &opened.below);
  EXPECT_EQ(opened.below.position, 4u);
  const LONG two = 2;
  ULONG done = 0;
  below->Write(&two, 4, &done);
  EXPECT_EQ(opened.stream.GetPosition(), 8u);
  opened.stream.WriteCount(3);
  opened.stream.Seek(4, STREAM_SEEK_SET);
  EXPECT_EQ(opened.stream.ReadCount(), 2);
  opened.stream.GetIStream();  // a buffered read-ahead does not move the IStream
  EXPECT_EQ(opened.below.position, 8u);
  EXPECT_EQ(opened.stream.ReadCount(), 3);
}

TEST(Stream, AFailedReadIsNotRepeatedUntilRecover) {
  Opened opened(Bytes(8, 1));
  opened.below.failAfter = 0;
  bool complete = true;
  LONG value = 0;
  opened.stream.Read(&value, 4, &complete);
  EXPECT_FALSE(complete);
  opened.below.failAfter = -1;
  opened.stream.Read(&value, 4, &complete);
  EXPECT_FALSE(complete);
  opened.stream.Recover(0xFFFFFFFF);
  opened.stream.Read(&value, 4, &complete);
  EXPECT_TRUE(complete);
  EXPECT_EQ(value, 0x01010101);
}

TEST(Stream, AFailedWriteKeepsItsBytesForAnotherTry) {
  Opened opened;
  opened.stream.WriteCount(7);
  opened.below.failAfter = 0;
  EXPECT_EQ(Thrown([&] { opened.stream.GetIStream(); }), E_ACCESSDENIED);
  opened.below.failAfter = -1;
  EXPECT_EQ(Thrown([&] { opened.stream.GetIStream(); }), E_FAIL);
  opened.stream.Recover(IZStream::kWriteFailed);
  opened.stream.GetIStream();
  EXPECT_EQ(opened.below.bytes, (Bytes{7, 0, 0, 0}));
  opened.below.room = 6;
  opened.stream.WriteCount(8);
  EXPECT_EQ(opened.stream.AttachStream(nullptr), STG_E_MEDIUMFULL);
  EXPECT_EQ(opened.below.references, 0);
}

TEST(Stream, WithoutAnIStreamReadsNothingAndRefusesToWrite) {
  CZStream stream;
  bool complete = true;
  BYTE byte = 1;
  stream.Read(&byte, 1, &complete);
  EXPECT_FALSE(complete);
  EXPECT_EQ(stream.GetIStream(), nullptr);
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
  EXPECT_EQ(Thrown([&] { stream.WriteCount(1); }), E_FAIL);
}

/// Random reads, writes and seeks around the buffer's edges against a byte vector.
TEST(Stream, EqualsAPlainByteVectorUnderRandomUse) {
  for (unsigned seed = 0; seed < 8; ++seed) {
    std::mt19937 random(seed);
    const auto upTo = [&](std::size_t most) {
      return static_cast<std::size_t>(random() % (most + 1));
    };
    Opened opened;
    Bytes model;
    std::size_t at = 0;
    for (int step = 0; step < 3000; ++step) {
      const std::size_t length = upTo(10) == 0 ? upTo(200000) : upTo(40);
      Bytes data(length);
      switch (upTo(3)) {
        case 0:
          for (BYTE& byte : data) byte = static_cast<BYTE>(random());
          opened.stream.Write(data.data(), static_cast<ULONG>(length));
          if (length != 0) model.resize(std::max(model.size(), at + length));
          std::copy(data.begin(), data.end(), model.begin() + static_cast<std::ptrdiff_t>(at));
          at += length;
          break;
        case 1: {
          bool complete = false;
          opened.stream.Read(data.data(), static_cast<ULONG>(length), &complete);
          const std::size_t read = std::min(length, model.size() - at);
          ASSERT_EQ(complete, read == length);
          ASSERT_TRUE(std::equal(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(read),
                                 model.begin() + static_cast<std::ptrdiff_t>(at)));
          at += read;
          break;
        }
        case 2:
          at = upTo(model.size());
          ASSERT_EQ(opened.stream.Seek(static_cast<LONGLONG>(at), STREAM_SEEK_SET), at);
          break;
        default:
          if (upTo(20) == 0) opened.stream.GetIStream();
          at = upTo(1) == 0 ? at : model.size();
          if (at == model.size()) opened.stream.Seek(0, STREAM_SEEK_END);
          break;
      }
      ASSERT_EQ(opened.stream.GetPosition(), at);
      ASSERT_EQ(opened.stream.GetBytesLeft(), model.size() - at);
    }
    ASSERT_EQ(opened.stream.AttachStream(nullptr), S_OK);
    ASSERT_EQ(opened.below.bytes, model);
  }
}

}  // namespace
