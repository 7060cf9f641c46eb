// What our own storages promise beyond the system's: whole files or none, equal bytes for equal
// content, bounded memory, names that libgsf and the system agree on.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include "StorageSupport.h"
#include "platform/ole/StorageFile.h"
#include "platform/system/Text.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZDM_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZDM_ADDRESS_SANITIZER 1
#endif
#endif

namespace zdm::test {
namespace {

std::size_t FilesBeside(const Name& path) {
  const auto folder = std::filesystem::path(path).parent_path();
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                std::filesystem::directory_iterator()));
}

void Fill(IStorage* root, const std::vector<ULONG>& order) {
  for (const ULONG number : order) {
    AddStream(root, Numbered(number).c_str(), Pattern(number * 1000, number));
  }
}

TEST(PortableStorage, SameContentGivesSameBytesInWhateverOrderItWasMade) {
  const Name first = FreshPath("first");
  const Name second = FreshPath("second");
  Fill(CreateAt(first).Get(), {1, 2, 3, 10, 11});
  Storage root = CreateAt(second);
  Fill(root.Get(), {11, 3, 7});
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  Fill(root.Get(), {2, 10, 1});
  EXPECT_EQ(root->DestroyElement(OLESTR("s7")), S_OK);
  root.Reset();
  EXPECT_EQ(ReadFile(first), ReadFile(second));
  // Read back and saved after a change that comes to nothing.
  root = OpenAt(second);
  AddStream(root.Get(), OLESTR("x"), {1});
  EXPECT_EQ(root->DestroyElement(OLESTR("x")), S_OK);
  root.Reset();
  EXPECT_EQ(ReadFile(first), ReadFile(second));
}

TEST(PortableStorage, WritesNoTimes) {
  const Name path = FreshPath("times");
  Fill(CreateAt(path).Get(), {1, 2});
  const Bytes file = ReadFile(path);
  const std::size_t directory = (std::size_t{Get32(file, 48)} + 1) * 512;
  for (std::size_t entry = directory; entry < directory + 512; entry += 128) {
    for (std::size_t at = 100; at < 116; ++at) EXPECT_EQ(file[entry + at], 0);
  }
}

TEST(PortableStorage, AFailedSaveLeavesTheOldFileAndNothingElse) {
  const Name path = FreshPath("full");
  Fill(CreateAt(path).Get(), {1, 2, 3});
  const Bytes before = ReadFile(path);
  const std::size_t files = FilesBeside(path);
  const Storage root = OpenAt(path);
  AddStream(root.Get(), OLESTR("large"), Pattern(3000000));

  // No file may grow past a megabyte.
  rlimit old = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
  rlimit small = old;
  small.rlim_cur = 1 << 20;
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const HRESULT failed = root->Commit(STGC_DEFAULT);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &old), 0);
  std::signal(SIGXFSZ, handler);

  EXPECT_EQ(failed, STG_E_MEDIUMFULL);
  EXPECT_EQ(ReadFile(path), before);
  EXPECT_EQ(FilesBeside(path), files);
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);  // what was changed is still there
  EXPECT_EQ(BytesOf(OpenAt(path, STGM_READ | STGM_SHARE_DENY_WRITE).Get(), OLESTR("large")),
            Pattern(3000000));
}

TEST(PortableStorage, SavesThroughALinkAndKeepsAccessRights) {
  const Name path = FreshPath("target");
  const Name link = FreshPath("link");
  Fill(CreateAt(path).Get(), {1});
  std::filesystem::create_symlink(path, link);
  ASSERT_EQ(chmod(ToUtf8(path).c_str(), 0600), 0);
  Storage root = OpenAt(link);
  AddStream(root.Get(), OLESTR("x"), {1});
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  struct stat status = {};
  ASSERT_EQ(stat(ToUtf8(path).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
  EXPECT_EQ(BytesOf(OpenAt(path).Get(), OLESTR("x")), Bytes{1});
}

TEST(PortableStorage, ReadsTheOldFileWhileANewOneTakesItsPlace) {
  const Name path = FreshPath("replaced");
  Fill(CreateAt(path).Get(), {9, 100});
  const Storage reader = OpenAt(path, STGM_READ | STGM_SHARE_DENY_WRITE);
  Fill(CreateAt(path).Get(), {1});
  EXPECT_EQ(BytesOf(reader.Get(), OLESTR("s100")), Pattern(100000, 100));
}

TEST(PortableStorage, AFileCutWhileOpenGivesAReadError) {
  const Name path = FreshPath("shrunk");
  Fill(CreateAt(path).Get(), {100});
  const Storage reader = OpenAt(path, STGM_READ | STGM_SHARE_DENY_WRITE);
  std::filesystem::resize_file(path, 1000);
  Stream stream;
  ASSERT_EQ(reader->OpenStream(OLESTR("s100"), nullptr, kExclusive, 0, stream.Out()), S_OK);
  Bytes buffer(100000);
  EXPECT_EQ(stream->Read(buffer.data(), 100000, nullptr), STG_E_READFAULT);
}

TEST(PortableStorage, MovesElementsBetweenStoragesButNotIntoThemselves) {
  const Storage root = CreateAt(FreshPath("move"));
  Storage folder;
  ASSERT_EQ(root->CreateStorage(OLESTR("folder"), kReadWrite, 0, 0, folder.Out()), S_OK);
  AddStream(root.Get(), OLESTR("s"), Pattern(5000));
  AddStream(folder.Get(), OLESTR("there"), {});
  EXPECT_EQ(root->MoveElementTo(OLESTR("s"), folder.Get(), OLESTR("THERE"), STGMOVE_MOVE),
            STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(root->MoveElementTo(OLESTR("folder"), folder.Get(), OLESTR("x"), STGMOVE_MOVE),
            STG_E_ACCESSDENIED);
  EXPECT_EQ(root->CopyTo(0, nullptr, nullptr, folder.Get()), STG_E_ACCESSDENIED);
  EXPECT_EQ(root->MoveElementTo(OLESTR("s"), folder.Get(), OLESTR("copy"), STGMOVE_COPY), S_OK);
  EXPECT_EQ(root->MoveElementTo(OLESTR("s"), folder.Get(), OLESTR("moved"), STGMOVE_MOVE), S_OK);
  EXPECT_EQ(BytesOf(folder.Get(), OLESTR("copy")), Pattern(5000));
  EXPECT_EQ(BytesOf(folder.Get(), OLESTR("moved")), Pattern(5000));
  Stream stream;
  EXPECT_EQ(root->OpenStream(OLESTR("s"), nullptr, kExclusive, 0, stream.Out()),
            STG_E_FILENOTFOUND);
}

// A storage copied into the one above it, where an element of that name is the storage itself.
TEST(PortableStorage, CopiesUpwardsOverItself) {
  const Storage root = CreateAt(FreshPath("up"));
  Storage folder;
  ASSERT_EQ(root->CreateStorage(OLESTR("a"), kReadWrite, 0, 0, folder.Out()), S_OK);
  AddStream(folder.Get(), OLESTR("a"), Pattern(10));
  AddStream(folder.Get(), OLESTR("b"), Pattern(20));
  EXPECT_EQ(folder->CopyTo(0, nullptr, nullptr, root.Get()), S_OK);
  EXPECT_EQ(BytesOf(root.Get(), OLESTR("a")), Pattern(10));
  EXPECT_EQ(BytesOf(root.Get(), OLESTR("b")), Pattern(20));
  OleRef<IEnumSTATSTG> elements;
  EXPECT_EQ(folder->EnumElements(0, nullptr, 0, elements.Out()), STG_E_REVERTED);
}

TEST(PortableStorage, RefusesMoreElementsOrLevelsThanItWouldReadBack) {
  const Name path = FreshPath("many");
  Storage root = CreateAt(path);
  HRESULT result = S_OK;
  ULONG count = 0;
  for (; result == S_OK; ++count) {
    Stream stream;
    result = root->CreateStream(Numbered(count).c_str(), kReadWrite, 0, 0, stream.Out());
  }
  EXPECT_EQ(result, STG_E_MEDIUMFULL);
  EXPECT_EQ(count, 2048U);
  std::vector<Storage> open = {root};
  for (result = root->DestroyElement(OLESTR("s0")); result == S_OK;) {
    Storage child;
    result = open.back()->CreateStorage(OLESTR("d"), kReadWrite, 0, 0, child.Out());
    if (child) open.push_back(child);
  }
  EXPECT_EQ(result, STG_E_MEDIUMFULL);
  EXPECT_EQ(open.size(), 1025U);
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  open.clear();
  root.Reset();
  EXPECT_TRUE(OpenAt(path));
}

// Opens the file at `path` and reads everything, in a process of its own that may use no more than
// 16 MB and four times the file beyond what it has at the start.
void ExpectReadWithinMemory(const Name& path) {
  const auto size = std::filesystem::file_size(path);
  const pid_t child = fork();
  if (child == 0) {
    std::ifstream statm("/proc/self/statm");
    rlim_t pages = 0;
    statm >> pages;
    const rlim_t bound = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + (16 << 20) + 4 * size;
    const rlimit limit = {bound, bound};
    if (setrlimit(RLIMIT_AS, &limit) != 0) _exit(3);
    Storage root;
    const HRESULT opened = OpenStorage(path.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, root.Out());
    if (opened == STG_E_DOCFILECORRUPT) _exit(0);
    if (opened != S_OK) _exit(1);
    OleRef<IEnumSTATSTG> elements;
    root->EnumElements(0, nullptr, 0, elements.Out());
    STATSTG entry;
    BYTE buffer[4096];
    while (elements->Next(1, &entry, nullptr) == S_OK) {
      Stream stream;
      if (root->OpenStream(entry.pwcsName, nullptr, kExclusive, 0, stream.Out()) != S_OK) _exit(2);
      ULONG read = 0;
      do {
        if (stream->Read(buffer, sizeof(buffer), &read) != S_OK) _exit(2);
      } while (read != 0);
      CoTaskMemFree(entry.pwcsName);
    }
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(PortableStorage, OpensHostileFilesWithinMemory) {
#if defined(ZDM_ADDRESS_SANITIZER)
  GTEST_SKIP() << "the address sanitizer takes memory of its own";
#endif
  const Name path = FreshPath("memory");
  // 10^5 empty streams: as much directory as possible.
  CompoundBuilder wide;
  for (ULONG i = 0; i < 100000; ++i) wide.AddStream(0, Numbered(i), {});
  WriteFile(path, wide.Build());
  ExpectReadWithinMemory(path);
  // As much allocation table for as many small pieces as possible.
  CompoundBuilder pieces;
  for (ULONG i = 0; i < 30000; ++i) pieces.AddStream(0, Numbered(i), Pattern(65));
  pieces.AddStream(0, OLESTR("large"), Bytes(8000000));
  Bytes file = pieces.Build();
  WriteFile(path, file);
  ExpectReadWithinMemory(path);
  // Counts past the file.
  for (const std::size_t at : {44, 64, 72}) {
    Bytes damaged = file;
    Put32(damaged, at, 0x7FFFFFFF);
    WriteFile(path, damaged);
    ExpectReadWithinMemory(path);
  }
}

}  // namespace
}  // namespace zdm::test
