// Storages without memory: each operation is tried with its first allocation failing, then with its
// second, until it succeeds. Whatever failed, nothing is lost, the operation can be repeated, and
// no memory (the leak checker tells) or descriptor stays behind.
#include "FailingAllocator.h"
#include "StorageSupport.h"
#include "platform/ole/StorageFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>

namespace zdm::test {
namespace {

constexpr DWORD kReplace = kReadWrite | STGM_CREATE;

std::size_t FilesIn(const std::filesystem::path& folder) {
  const std::filesystem::directory_iterator files(folder);
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::size_t OpenDescriptors() { return FilesIn("/proc/self/fd"); }

/// The bytes of a file with the streams "large" and "folder/small", and "folder/large".
Bytes MakeFile(const Name& path) {
  Storage root = CreateAt(path);
  Storage folder = AddStorage(root.Get(), OLESTR("folder"));
  AddStream(folder.Get(), OLESTR("small"), Pattern(100));
  AddStream(folder.Get(), OLESTR("large"), Pattern(5000));
  AddStream(root.Get(), OLESTR("large"), Pattern(100000));
  folder.Reset();
  root.Reset();
  return ReadFile(path);
}

auto CountWords(const std::string& text) { return std::count(text.begin(), text.end(), ' '); }

template <class Use>
HRESULT WithFolder(IStorage* root, Use use) {
  Storage folder;
  const HRESULT result =
      root->OpenStorage(OLESTR("folder"), nullptr, kReadWrite, nullptr, 0, folder.Out());
  return SUCCEEDED(result) ? use(folder.Get()) : result;
}

template <class Use>
HRESULT WithLarge(IStorage* root, Use use) {
  Stream stream;
  const HRESULT result = root->OpenStream(OLESTR("large"), nullptr, kReadWrite, 0, stream.Out());
  return SUCCEEDED(result) ? use(stream.Get()) : result;
}

struct Operation {
  const char* name;
  HRESULT (*run)(IStorage* root);
  bool stepwise = false;  // what was copied before memory ran out stays
};

const Operation kOperations[] = {
    {"create a stream", [](IStorage* root) { return MakesStream(root, OLESTR("new")); }},
    {"replace a stream", [](IStorage* r) { return MakesStream(r, OLESTR("large"), kReplace); }},
    {"replace a storage", [](IStorage* r) { return MakesStream(r, OLESTR("folder"), kReplace); }},
    {"create a storage", [](IStorage* root) { return MakesStorage(root, OLESTR("new")); }},
    {"by a storage", [](IStorage* r) { return MakesStorage(r, OLESTR("large"), kReplace); }},
    {"rename",
     [](IStorage* root) { return root->RenameElement(OLESTR("folder"), OLESTR("renamed")); }},
    {"destroy", [](IStorage* root) { return root->DestroyElement(OLESTR("folder")); }},
    {"set the class", [](IStorage* root) { return root->SetClass(IID_IStream); }},
    {"write",
     [](IStorage* root) {
       return WithLarge(root, [](IStream* stream) { return stream->Write("abc", 3, nullptr); });
     }},
    {"set the size",
     [](IStorage* root) {
       return WithLarge(root, [](IStream* stream) { return stream->SetSize(Size(70000)); });
     }},
    {"copy upwards",
     [](IStorage* root) {
       return WithFolder(
           root, [root](IStorage* folder) { return folder->CopyTo(0, nullptr, nullptr, root); });
     },
     true},
    {"copy a stream",
     [](IStorage* root) {
       return WithFolder(root, [root](IStorage* folder) {
         return root->MoveElementTo(OLESTR("large"), folder, OLESTR("copy"), STGMOVE_COPY);
       });
     }},
    {"copy a storage",
     [](IStorage* root) {
       return root->MoveElementTo(OLESTR("folder"), root, OLESTR("copy"), STGMOVE_COPY);
     }},
    {"move up",
     [](IStorage* root) {
       return WithFolder(root, [root](IStorage* folder) {
         return folder->MoveElementTo(OLESTR("small"), root, OLESTR("moved"), STGMOVE_MOVE);
       });
     }},
    {"commit", [](IStorage* root) { return root->Commit(STGC_DEFAULT); }},
    {"revert", [](IStorage* root) { return root->Revert(); }},
};

class StorageMemory : public testing::TestWithParam<std::tuple<DWORD, bool>> {
 protected:
  /// The file with its old bytes, opened, and with a change that is not saved where the run has
  /// one.
  Storage Open() const {
    WriteFile(path_, saved_);
    Storage root = OpenAt(path_, kReadWrite | std::get<0>(GetParam()));
    if (std::get<1>(GetParam())) AddStream(root.Get(), OLESTR("unsaved"), Pattern(10));
    return root;
  }

  const Name path_ = FreshPath("memory");
  const Bytes saved_ = MakeFile(path_);
};

TEST_P(StorageMemory, AFailedOperationLosesNothingAndCanBeRepeated) {
  for (const Operation& operation : kOperations) {
    SCOPED_TRACE(operation.name);
    Storage root = Open();
    const std::string before = Describe(root.Get());
    ASSERT_EQ(operation.run(root.Get()), S_OK);
    const std::string done = Describe(root.Get());
    root.Reset();
    const Bytes doneFile = ReadFile(path_);
    const std::size_t descriptors = OpenDescriptors();
    HRESULT result = E_OUTOFMEMORY;
    for (int count = 0; result != S_OK; ++count) {
      SCOPED_TRACE(count);
      root = Open();
      result = WithAllocations(count, [&] { return operation.run(root.Get()); });
      if (result != S_OK) {
        ASSERT_EQ(result, E_OUTOFMEMORY);
        EXPECT_EQ(ReadFile(path_), saved_);
        const std::string left = Describe(root.Get());
        if (operation.stepwise) {
          EXPECT_GE(CountWords(left), CountWords(before)) << left;
        } else {
          EXPECT_EQ(left, before);
        }
        EXPECT_EQ(operation.run(root.Get()), S_OK);
      }
      EXPECT_EQ(Describe(root.Get()), done);
      root.Reset();
      EXPECT_EQ(ReadFile(path_), doneFile);
      EXPECT_EQ(OpenDescriptors(), descriptors);
      ASSERT_FALSE(HasFailure());
    }
  }
}

TEST_P(StorageMemory, OpensOrAnswersThatThereIsNone) {
  WriteFile(path_, saved_);
  const std::size_t descriptors = OpenDescriptors();
  HRESULT result = E_OUTOFMEMORY;
  for (int count = 0; result != S_OK; ++count) {
    Storage root;
    result = WithAllocations(count, [&] {
      return zdm::OpenStorage(path_.c_str(), kReadWrite | std::get<0>(GetParam()), root.Out());
    });
    ASSERT_TRUE(result == S_OK || result == E_OUTOFMEMORY) << count;
    EXPECT_EQ(static_cast<bool>(root), result == S_OK);
    root.Reset();
    EXPECT_EQ(OpenDescriptors(), descriptors) << count;
  }
}

TEST_P(StorageMemory, ReleasedWithoutAnyLeavesTheOldFileOrTheNewOne) {
  const auto folder = std::filesystem::path(path_).parent_path();
  Open().Reset();
  const Bytes doneFile = ReadFile(path_);
  const std::size_t files = FilesIn(folder);
  const std::size_t descriptors = OpenDescriptors();
  bool done = false;
  for (int count = 0; !done; ++count) {
    Storage root = Open();
    WithAllocations(count, [&] {
      root.Reset();
      return S_OK;
    });
    done = ReadFile(path_) == doneFile;
    EXPECT_TRUE(done || ReadFile(path_) == saved_) << count;
    EXPECT_EQ(FilesIn(folder), files) << count;
    EXPECT_EQ(OpenDescriptors(), descriptors) << count;
  }
}

// Part of the second piece of a stream read from the file, and all of the first one.
TEST(StreamMemory, AFailedWriteLeavesTheBytesThatWereThere) {
  const Name path = FreshPath("pieces");
  const Bytes old = Pattern(300000);
  const Bytes bytes = Pattern(256 << 10, 2);
  for (const std::size_t at : {280000, 0}) {
    SCOPED_TRACE(at);
    AddStream(CreateAt(path).Get(), OLESTR("s"), old);
    const auto size = static_cast<ULONG>(at == 0 ? bytes.size() : 3);
    HRESULT result = E_OUTOFMEMORY;
    for (int count = 0; result != S_OK; ++count) {
      SCOPED_TRACE(count);
      const Storage root = OpenAt(path);
      const Stream stream = OpenStream(root.Get(), OLESTR("s"));
      ASSERT_EQ(stream->Seek(Move(static_cast<LONGLONG>(at)), STREAM_SEEK_SET, nullptr), S_OK);
      result = WithAllocations(count, [&] { return stream->Write(bytes.data(), size, nullptr); });
      ASSERT_TRUE(result == S_OK || result == E_OUTOFMEMORY);
      Bytes expected = old;
      if (result == S_OK) std::copy_n(bytes.begin(), size, expected.data() + at);
      EXPECT_EQ(ReadAll(stream.Get()), expected);
    }
  }
}

// Opens the file at `path` and reads everything with no more than 16 MB and four times the file.
void ExpectReadWithinMemory(const Name& path, HRESULT expected, unsigned elementsExpected,
                            DWORD transacted = STGM_DIRECT) {
  const std::size_t bound = bytesInUse + (16 << 20) + 4 * std::filesystem::file_size(path);
  mostBytesInUse = bytesInUse;
  unsigned count = 0;
  Storage root;
  const DWORD mode = STGM_READ | STGM_SHARE_DENY_WRITE | transacted;
  EXPECT_EQ(zdm::OpenStorage(path.c_str(), mode, root.Out()), expected);
  OleRef<IEnumSTATSTG> elements;
  if (root) root->EnumElements(0, nullptr, 0, elements.Out());
  STATSTG entry;
  BYTE buffer[4096];
  while (elements && elements->Next(1, &entry, nullptr) == S_OK) {
    const Stream stream = OpenStream(root.Get(), entry.pwcsName, kExclusive);
    CoTaskMemFree(entry.pwcsName);
    for (ULONG read = 1; read != 0;) {
      ASSERT_EQ(stream->Read(buffer, sizeof(buffer), &read), S_OK);
    }
    ++count;
  }
  EXPECT_EQ(count, elementsExpected);
  EXPECT_LE(mostBytesInUse, bound);
}

TEST(HostileFile, IsReadWithinMemory) {
  const Name path = FreshPath("hostile");
  // Empty streams with the longest names: as much directory as possible.
  CompoundBuilder wide;
  for (ULONG i = 0; i < 200000; ++i) {
    Name name = Numbered(i);
    name.resize(31, 'x');
    wide.AddStream(0, name, {});
  }
  WriteFile(path, wide.Build());
  ExpectReadWithinMemory(path, S_OK, 200000);
  ExpectReadWithinMemory(path, S_OK, 200000, STGM_TRANSACTED);
  // As much allocation table for as many small pieces as possible.
  CompoundBuilder pieces;
  for (ULONG i = 0; i < 30000; ++i) pieces.AddStream(0, Numbered(i), Pattern(65));
  pieces.AddStream(0, OLESTR("large"), Bytes(8000000));
  Bytes file = pieces.Build();
  WriteFile(path, file);
  ExpectReadWithinMemory(path, S_OK, 30001);
  for (const std::size_t at : {44, 64, 72}) {  // counts past the file
    Bytes damaged = file;
    Put32(damaged, at, 0x7FFFFFFF);
    WriteFile(path, damaged);
    ExpectReadWithinMemory(path, STG_E_DOCFILECORRUPT, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Roots, StorageMemory,
    testing::Combine(testing::Values(STGM_DIRECT, STGM_TRANSACTED), testing::Bool()),
    [](const auto& row) {
      return std::string(std::get<0>(row.param) == STGM_DIRECT ? "Direct" : "Transacted") +
             (std::get<1>(row.param) ? "Changed" : "AsSaved");
    });

}  // namespace
}  // namespace zdm::test
