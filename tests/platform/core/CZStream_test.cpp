// The serialization stream: bytes, strings, positions, and what happens when the IStream fails.
#include "platform/core/CZStream.h"

#include "platform/core/ZCore.h"
#include "platform/ole/Bstr.h"
#include "tests/support/Bytes.h"
#include "tests/support/Thrown.h"
#include "zdm/framework/ZRefPtr.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace zdm::test;

TEST(Stream, IsMadeByTheFactory) {
  CZObject* created = ZCore::GetZFactory()->Create(CZStream::kClassID);
  ASSERT_NE(created, nullptr);
  auto stream = zdm::Attached(zdm::ViewAs<IZStream>(created));
  OLECHAR classId[39];
  StringFromGUID2(CZStream::kClassID, classId, 39);
  EXPECT_EQ(std::basic_string<OLECHAR>(classId), OLESTR("{65808542-5A64-45F2-B71A-A6A6D03CD2D5}"));
  EXPECT_TRUE(stream->IsA(CZObject::AddInterface("IZStream")));
  EXPECT_FALSE(stream->IsA(CZObject::AddInterface("IZStorage")));
  TestStream below;
  EXPECT_EQ(stream->AttachStream(&below), S_OK);
  EXPECT_EQ(stream->AttachStream(&below), S_OK);
  EXPECT_EQ(below.references, 1);
  EXPECT_EQ(below.timesDropped, 0);  // taken again before it was let go
  stream->WriteCount(-2);
  stream.Reset();
  EXPECT_EQ(below.references, 0);
  EXPECT_EQ(below.bytes, (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
}

TEST(Stream, WritesScalarsAndStringsByteByByteAndReadsThemBack) {
  ByteStream stream;
  stream.WriteFlag(true);
  stream.WriteFlag(false);
  stream.WriteCount(0x01020304);
  const zdm::Bstr texts[] = {zdm::Bstr(), zdm::Bstr(OLESTR("")), zdm::Bstr(OLESTR("a\0\u7F3A"), 3)};
  for (const zdm::Bstr& text : texts) stream.WriteBSTR(text.Get());
  EXPECT_EQ(stream.GetBytes(), Hex("01:00:04 03 02 01:00 00 00 00:02 00 00 00:00 00:08 00 00 00:"
                                   "61 00 00 00 3A 7F 00 00"));
  stream.Seek(6, STREAM_SEEK_SET);
  for (const zdm::Bstr& text : texts) {
    zdm::Bstr read;
    stream.ReadBSTR(read.Out());
    EXPECT_TRUE(zdm::SameUnits(read.Get(), text.Get()));
    EXPECT_EQ(read.Get() == nullptr, text.Get() == nullptr);
  }
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
}

TEST(Stream, WritesTextsOfEveryLengthAlike) {
  for (std::size_t length = 0; length < 80; ++length) {
    std::basic_string<OLECHAR> text;
    for (std::size_t i = 0; i < length; ++i) text += static_cast<OLECHAR>('A' + i);
    ByteStream stream;
    stream.WriteBSTR(zdm::Bstr(text.c_str()).Get());
    Bytes expected = {static_cast<BYTE>(2 * length + 2), 0, 0, 0};
    for (const OLECHAR unit : text) expected.insert(expected.end(), {static_cast<BYTE>(unit), 0});
    expected.insert(expected.end(), {0, 0});
    EXPECT_EQ(stream.GetBytes(), expected) << length;
  }
}

TEST(Stream, TerminatesAStringOfOddBytesByAZeroUnit) {
  ByteStream stream;
  BSTR odd = SysAllocStringByteLen("abc", 3);
  stream.WriteBSTR(odd);
  SysFreeString(odd);
  EXPECT_EQ(stream.GetBytes(), (Bytes{4, 0, 0, 0, 'a', 'b', 0, 0}));
  stream.Seek(4 + 2, STREAM_SEEK_SET);
  stream.Write("xx", 2);  // a terminator that is none
  stream.Seek(0, STREAM_SEEK_SET);
  zdm::Bstr read;
  stream.ReadBSTR(read.Out());
  EXPECT_EQ(read.Get()[1], 0);
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
    ByteStream stream(row.bytes);
    BSTR text = reinterpret_cast<BSTR>(1);
    EXPECT_EQ(Thrown([&] { stream.ReadBSTR(&text); }), E_FAIL);
    EXPECT_EQ(text, nullptr);
  }
}

TEST(Stream, ShortReadsZeroTheRestAndSayIt) {
  ByteStream stream({1, 2});
  BYTE data[4] = {9, 9, 9, 9};
  bool complete = true;
  stream.Read(data, 4, &complete);
  EXPECT_FALSE(complete);
  EXPECT_EQ(Bytes(data, data + 4), (Bytes{1, 2, 0, 0}));
  EXPECT_EQ(Thrown([&] { stream.Read(data, 1); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { stream.ReadFlag(); }), E_FAIL);
  stream.Read(data, 0, &complete);
  EXPECT_TRUE(complete);
  stream.Seek(1, STREAM_SEEK_SET);
  EXPECT_TRUE(stream.ReadFlag());
  ByteStream any({7});
  EXPECT_TRUE(any.ReadFlag());  // any non-zero byte
}

TEST(Stream, SeeksFromThreeOriginsAndRefusesPlacesBeforeTheStart) {
  ByteStream stream(Bytes(10));
  EXPECT_EQ(stream.Seek(-3, STREAM_SEEK_END), 7u);
  EXPECT_EQ(stream.Seek(2, STREAM_SEEK_CUR), 9u);
  EXPECT_EQ(stream.GetBytesLeft(), 1u);
  EXPECT_EQ(Thrown([&] { stream.Seek(-11, STREAM_SEEK_END); }), E_INVALIDARG);
  EXPECT_EQ(Thrown([&] { stream.Seek(-1, STREAM_SEEK_SET); }), E_INVALIDARG);
  EXPECT_EQ(Thrown([&] { stream.Seek(INT64_MAX, STREAM_SEEK_CUR); }), E_INVALIDARG);
  EXPECT_EQ(Thrown([&] { stream.Seek(0, 3); }), E_INVALIDARG);
  EXPECT_EQ(stream.GetPosition(), 9u);
  EXPECT_EQ(stream.Seek(20, STREAM_SEEK_SET), 20u);
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
}

TEST(Stream, PatchingALengthDoesNotReachTheSystem) {
  ByteStream stream;
  stream.below.failAfter = 0;  // any call would fail
  stream.WriteCount(0);
  stream.WriteCount(7);
  stream.Seek(0, STREAM_SEEK_SET);
  stream.WriteCount(4);
  EXPECT_EQ(stream.Seek(0, STREAM_SEEK_END), 8u);
  stream.below.failAfter = -1;
  EXPECT_EQ(stream.GetBytes(), Words({4, 7}));
}

TEST(Stream, HandsOutTheIStreamWhereItStandsAndResumesWhereItIsLeft) {
  ByteStream stream;
  stream.WriteCount(1);
  IStream* below = stream.GetIStream();
  ASSERT_EQ(below, &stream.below);
  EXPECT_EQ(stream.below.position, 4u);
  const LONG two = 2;
  ULONG done = 0;
  below->Write(&two, 4, &done);
  EXPECT_EQ(stream.GetPosition(), 8u);
  stream.WriteCount(3);
  stream.Seek(4, STREAM_SEEK_SET);
  EXPECT_EQ(stream.ReadCount(), 2);
  stream.GetIStream();  // a buffered read-ahead does not move the IStream
  EXPECT_EQ(stream.below.position, 8u);
  EXPECT_EQ(stream.ReadCount(), 3);
}

TEST(Stream, AFailedReadIsNotRepeatedUntilRecoverOrAnotherIStream) {
  for (const bool isOther : {false, true}) {
    ByteStream stream(Bytes(8, 1));
    TestStream other(Bytes(4, 2));
    LONG value = 0;
    const auto reads = [&] {
      bool complete = true;
      stream.Read(&value, 4, &complete);
      return complete;
    };
    stream.below.failAfter = 0;
    EXPECT_FALSE(reads());
    stream.below.failAfter = -1;
    EXPECT_FALSE(reads());
    isOther ? void(stream.AttachStream(&other)) : stream.Recover(0xFFFFFFFF);
    EXPECT_TRUE(reads());
    EXPECT_EQ(value, isOther ? 0x02020202 : 0x01010101);
    stream.AttachStream(nullptr);
  }
}

TEST(Stream, AFailedWriteKeepsItsBytesForAnotherTry) {
  ByteStream stream;
  stream.WriteCount(7);
  stream.below.failAfter = 0;
  EXPECT_EQ(Thrown([&] { stream.GetIStream(); }), E_ACCESSDENIED);
  stream.below.failAfter = -1;
  EXPECT_EQ(Thrown([&] { stream.GetIStream(); }), E_FAIL);
  stream.Recover(IZStream::kWriteFailed);
  stream.GetIStream();
  EXPECT_EQ(stream.below.bytes, (Bytes{7, 0, 0, 0}));
  stream.below.failAfter = 0;
  stream.below.writtenOnFailure = 2;  // moves, then fails
  stream.Seek(0, STREAM_SEEK_SET);
  stream.WriteCount(9);
  EXPECT_EQ(Thrown([&] { stream.GetIStream(); }), E_ACCESSDENIED);
  stream.Recover(IZStream::kReadFailed);
  stream.below.failAfter = -1;
  EXPECT_EQ(Thrown([&] { stream.GetIStream(); }), E_FAIL);
  stream.Recover(IZStream::kWriteFailed);
  stream.GetIStream();
  EXPECT_EQ(stream.below.bytes, (Bytes{9, 0, 0, 0}));
  stream.below.room = 6;
  stream.WriteCount(8);
  EXPECT_EQ(stream.AttachStream(nullptr), STG_E_MEDIUMFULL);
  EXPECT_EQ(stream.below.references, 0);
}

TEST(Stream, AReadWhoseFlushFailsSaysSoAndStaysWhereItIs) {
  ByteStream stream(Bytes(8, 1));
  stream.WriteCount(7);
  stream.below.failAfter = 0;
  bool complete = true;
  LONG value = 0;
  EXPECT_EQ(Thrown([&] { stream.Read(&value, 4, &complete); }), E_ACCESSDENIED);
  EXPECT_FALSE(complete);
  EXPECT_EQ(stream.GetPosition(), 4u);
  stream.below.failAfter = -1;
  stream.Recover(IZStream::kWriteFailed);
  EXPECT_EQ(stream.ReadCount(), 0x01010101);
}

TEST(Stream, WritingNothingLeavesAReadOnlyIStreamAlone) {
  ByteStream stream(Bytes(4, 1));
  stream.Write("", 0);
  stream.below.room = 0;
  EXPECT_EQ(stream.ReadCount(), 0x01010101);
}

TEST(Stream, FindsTheEndOfAnIStreamThatDoesNotTellItsSize) {
  ByteStream stream({1, 2, 3, 4, 5, 6, 7, 8});
  stream.below.tellsSize = false;
  stream.Seek(2, STREAM_SEEK_SET);
  EXPECT_EQ(stream.GetBytesLeft(), 6u);
  EXPECT_TRUE(stream.ReadFlag());
  EXPECT_EQ(stream.GetPosition(), 3u);
  ULARGE_INTEGER size = {};
  stream.GetIStream()->SetSize(size);  // others may change it meanwhile
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
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
  stream.Write(&byte, 0);
  EXPECT_EQ(stream.Seek(10, STREAM_SEEK_SET), 10u);
}

/// Random reads, writes and seeks around the buffer's edges against a byte vector.
TEST(Stream, EqualsAPlainByteVectorUnderRandomUse) {
  for (unsigned seed = 0; seed < 8; ++seed) {
    std::mt19937 random(seed);
    const auto upTo = [&](std::size_t most) {
      return static_cast<std::size_t>(random() % (most + 1));
    };
    ByteStream stream;
    Bytes model;
    std::size_t at = 0;
    for (int step = 0; step < 3000; ++step) {
      const std::size_t length = upTo(10) == 0 ? upTo(200000) : upTo(40);
      Bytes data(length);
      switch (upTo(3)) {
        case 0:
          for (BYTE& byte : data) byte = static_cast<BYTE>(random());
          stream.Write(data.data(), static_cast<ULONG>(length));
          if (length != 0) model.resize(std::max(model.size(), at + length));
          std::copy(data.begin(), data.end(), model.begin() + static_cast<std::ptrdiff_t>(at));
          at += length;
          break;
        case 1: {
          bool complete = false;
          stream.Read(data.data(), static_cast<ULONG>(length), &complete);
          const std::size_t read = std::min(length, model.size() - at);
          ASSERT_EQ(complete, read == length);
          ASSERT_TRUE(std::equal(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(read),
                                 model.begin() + static_cast<std::ptrdiff_t>(at)));
          at += read;
          break;
        }
        case 2:
          at = upTo(model.size());
          ASSERT_EQ(stream.Seek(static_cast<LONGLONG>(at), STREAM_SEEK_SET), at);
          break;
        default:
          if (upTo(20) == 0) stream.GetIStream();
          at = upTo(1) == 0 ? at : model.size();
          if (at == model.size()) stream.Seek(0, STREAM_SEEK_END);
          break;
      }
      ASSERT_EQ(stream.GetPosition(), at);
      ASSERT_EQ(stream.GetBytesLeft(), model.size() - at);
    }
    ASSERT_EQ(stream.AttachStream(nullptr), S_OK);
    ASSERT_EQ(stream.below.bytes, model);
  }
}

}  // namespace
