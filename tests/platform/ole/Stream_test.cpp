// What every IStream does, whatever it stands on: memory, a file, a stream element of a storage
// that was just made, or one read from a file. The system's own streams are held to the same.
#include "StorageSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace zdm::test {
namespace {

/// A stream with some bytes in it, and what keeps it usable.
struct Place {
  Storage storage;
  Stream stream;
};

struct Kind {
  const char* name;
  Place (*make)(const Bytes& bytes);
};

Place InMemory(const Bytes& bytes) {
  Place place;
  EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, place.stream.Out()), S_OK);
  Write(place.stream.Get(), bytes);
  return place;
}

Place OnFile(const Bytes& bytes) {
  Place place;
  const Name path = FreshPath("stream");
  WriteFile(path, bytes);
  EXPECT_EQ(
      SHCreateStreamOnFileEx(path.c_str(), STGM_READWRITE, 0, FALSE, nullptr, place.stream.Out()),
      S_OK);
  return place;
}

Place InNewStorage(const Bytes& bytes) {
  const Storage storage = CreateAt(FreshPath("new"));
  AddStream(storage.Get(), OLESTR("s"), bytes);
  return {storage, OpenStream(storage.Get(), OLESTR("s"))};
}

Place InReadStorage(const Bytes& bytes) {
  CompoundBuilder builder;
  builder.AddStream(0, OLESTR("other"), Pattern(300, 7));
  builder.AddStream(0, OLESTR("s"), bytes);
  const Name path = FreshPath("read");
  WriteFile(path, builder.Build());
  const Storage storage = OpenAt(path);
  return {storage, OpenStream(storage.Get(), OLESTR("s"))};
}

const Kind kKinds[] = {{"Memory", InMemory},
                       {"File", OnFile},
                       {"NewStorage", InNewStorage},
                       {"ReadStorage", InReadStorage}};

class AnyStream : public testing::TestWithParam<Kind> {
 protected:
  void Make(const Bytes& bytes) {
    place_ = Place();  // the file of the last one is made anew
    place_ = GetParam().make(bytes);
    ASSERT_TRUE(place_.stream);
    stream_ = place_.stream.Get();
  }
  Place place_;
  IStream* stream_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(, AnyStream, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST_P(AnyStream, SeeksFromEachOriginAndNotBeforeTheStart) {
  Make(Pattern(50));
  ULARGE_INTEGER position = Size(0);
  EXPECT_EQ(stream_->Seek(Move(10), STREAM_SEEK_SET, &position), S_OK);
  EXPECT_EQ(position.QuadPart, 10U);
  EXPECT_EQ(stream_->Seek(Move(-3), STREAM_SEEK_CUR, &position), S_OK);
  EXPECT_EQ(position.QuadPart, 7U);
  EXPECT_EQ(stream_->Seek(Move(100), STREAM_SEEK_END, &position), S_OK);
  EXPECT_EQ(position.QuadPart, 150U);
  EXPECT_EQ(stream_->Seek(Move(7), STREAM_SEEK_SET, nullptr), S_OK);
  if (kOurClasses) {
    EXPECT_TRUE(FAILED(stream_->Seek(Move(-8), STREAM_SEEK_CUR, nullptr)));
  }
  EXPECT_TRUE(FAILED(stream_->Seek(Move(0), 3, nullptr)));
  EXPECT_EQ(Position(stream_), 7U);
}

TEST_P(AnyStream, CopiesFromItsPositionToTheOthers) {
  Make(Pattern(10000));
  Stream target;
  ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, target.Out()), S_OK);
  Write(target.Get(), {1, 2, 3});
  ASSERT_EQ(stream_->Seek(Move(1000), STREAM_SEEK_SET, nullptr), S_OK);
  ULARGE_INTEGER read = Size(0);
  ULARGE_INTEGER written = Size(0);
  EXPECT_EQ(stream_->CopyTo(target.Get(), Size(7000), &read, &written), S_OK);
  EXPECT_EQ(read.QuadPart, 7000U);
  EXPECT_EQ(written.QuadPart, 7000U);
  EXPECT_EQ(Position(stream_), 8000U);
  EXPECT_EQ(Position(target.Get()), 7003U);
  Bytes expected = {1, 2, 3};
  const Bytes all = Pattern(10000);
  expected.insert(expected.end(), all.begin() + 1000, all.begin() + 8000);
  EXPECT_EQ(ReadAll(target.Get()), expected);
}

TEST_P(AnyStream, AnswersToItsInterfacesAndCountsReferences) {
  Make({1});
  for (const IID& iid : {IID_IUnknown, IID_ISequentialStream, IID_IStream}) {
    void* found = nullptr;
    EXPECT_EQ(stream_->QueryInterface(iid, &found), S_OK);
    EXPECT_EQ(found, stream_);
    EXPECT_EQ(stream_->Release(), 1U);
  }
  void* found = this;
  EXPECT_EQ(stream_->QueryInterface(IID_IStorage, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
}

// Long sequences of operations against a vector of bytes and a position. What a stream gains by a
// larger size or a write past its end is zeros here; the system leaves it open.
TEST_P(AnyStream, BehavesLikeBytesWithAPosition) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    Bytes model = Pattern(seed % 2 == 0 ? 100 : 600000, seed);
    Make(model);
    std::size_t position = 0;
    ASSERT_EQ(stream_->Seek(Move(0), STREAM_SEEK_SET, nullptr), S_OK);
    unsigned state = seed;
    const auto random = [&state](std::size_t bound) {
      state = state * 1664525U + 1013904223U;
      return (state >> 8) % bound;
    };
    for (int step = 0; step < 40; ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
      const std::size_t length = random(step % 7 == 0 ? 560000 : 3000);
      switch (random(4)) {
        case 0: {
          const Bytes bytes = Pattern(length + 1, seed * 1000 + static_cast<unsigned>(step));
          Write(stream_, bytes);
          model.resize(std::max(model.size(), position + bytes.size()));
          std::copy(bytes.begin(), bytes.end(),
                    model.begin() + static_cast<std::ptrdiff_t>(position));
          position += bytes.size();
          break;
        }
        case 1: {
          Bytes bytes(length + 1);
          ULONG read = 0;
          ASSERT_TRUE(SUCCEEDED(stream_->Read(bytes.data(), static_cast<ULONG>(length), &read)));
          const std::size_t left = position < model.size() ? model.size() - position : 0;
          ASSERT_EQ(read, std::min(left, length));
          ASSERT_TRUE(read == 0 || std::memcmp(bytes.data(), model.data() + position, read) == 0);
          position += read;
          break;
        }
        case 2:
          position = random(model.size() + (kOurClasses ? 2000 : 1));
          ASSERT_EQ(stream_->Seek(Move(static_cast<LONGLONG>(position)), STREAM_SEEK_SET, nullptr),
                    S_OK);
          break;
        default:
          if (step % 3 != 0) break;
          model.resize(random(model.size() + (kOurClasses ? 5000 : 1)));
          position = std::min(position, kOurClasses ? position : model.size());
          ASSERT_EQ(stream_->Seek(Move(static_cast<LONGLONG>(position)), STREAM_SEEK_SET, nullptr),
                    S_OK);
          ASSERT_EQ(stream_->SetSize(Size(model.size())), S_OK);
          ASSERT_EQ(Position(stream_), position);
          break;
      }
    }
    ASSERT_EQ(ReadAll(stream_), model);
    STATSTG stat;
    EXPECT_EQ(stream_->Stat(&stat, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(stat.cbSize.QuadPart, model.size());
    EXPECT_EQ(stat.pwcsName, nullptr);
    if (kOurClasses) {
      EXPECT_EQ(stat.type, static_cast<DWORD>(STGTY_STREAM));
    }
  }
}

TEST(MemoryStream, CloneSharesBytesAndHasItsOwnPosition) {
  Place place = InMemory(Pattern(100));
  Stream clone;
  ASSERT_EQ(place.stream->Clone(clone.Out()), S_OK);
  EXPECT_EQ(Position(clone.Get()), 100U);
  Write(clone.Get(), {1, 2});
  EXPECT_EQ(Position(place.stream.Get()), 100U);
  place.stream.Reset();
  EXPECT_EQ(ReadAll(clone.Get()).size(), 102U);
}

TEST(FileStream, OpensAsItsModeSays) {
  const Name path = FreshPath("modes");
  Stream stream;
  const auto open = [&](DWORD mode, BOOL create) {
    return SHCreateStreamOnFileEx(path.c_str(), mode, 0, create, nullptr, stream.Out());
  };
  EXPECT_EQ(open(STGM_READ, FALSE), static_cast<HRESULT>(0x80070002));
  EXPECT_EQ(open(STGM_READWRITE, TRUE), S_OK);
  Write(stream.Get(), Pattern(10));
  EXPECT_EQ(open(STGM_READWRITE, TRUE), static_cast<HRESULT>(0x80070050));
  EXPECT_EQ(open(STGM_READ, FALSE), S_OK);
  EXPECT_EQ(ReadAll(stream.Get()), Pattern(10));
  EXPECT_TRUE(FAILED(stream->Write("x", 1, nullptr)));
  EXPECT_EQ(open(STGM_READWRITE | STGM_CREATE, FALSE), S_OK);
  EXPECT_TRUE(ReadAll(stream.Get()).empty());
}

// Each byte written would be one more to read.
TEST(FileStream, CopiesOntoItsOwnFileOnce) {
  if (!kOurClasses) GTEST_SKIP() << "the system's ends when the disk is full";
  const Name path = FreshPath("own");
  WriteFile(path, Pattern(700000));
  Stream from;
  Stream to;
  for (Stream* stream : {&from, &to}) {
    ASSERT_EQ(
        SHCreateStreamOnFileEx(path.c_str(), STGM_READWRITE, 0, FALSE, nullptr, stream->Out()),
        S_OK);
  }
  ASSERT_EQ(to->Seek(Move(0), STREAM_SEEK_END, nullptr), S_OK);
  ULARGE_INTEGER read = Size(0);
  EXPECT_EQ(from->CopyTo(to.Get(), Size(10000000), &read, nullptr), S_OK);
  EXPECT_EQ(read.QuadPart, 700000U);
  EXPECT_EQ(ReadFile(path).size(), 1400000U);
}

}  // namespace
}  // namespace zdm::test
