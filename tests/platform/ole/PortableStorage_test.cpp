// What our own storages promise beyond the system's: whole files or none, equal bytes for equal
// content, names that libgsf and the system agree on.
#include "StorageSupport.h"
#include "platform/ole/StorageFile.h"
#include "platform/system/Text.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace zdm::test {
namespace {

constexpr DWORD kRead = STGM_READ | STGM_SHARE_DENY_WRITE;

void Fill(IStorage* root, const std::vector<ULONG>& order) {
  for (const ULONG number : order) {
    AddStream(root, Numbered(number).c_str(), Pattern(std::size_t{number} * 1000, number));
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

TEST(PortableStorage, ReadsTheOldFileWhileANewOneTakesItsPlaceAndNotWhatIsCutOff) {
  const Name path = FreshPath("replaced");
  Fill(CreateAt(path).Get(), {9, 100});
  const Storage reader = OpenAt(path, kRead);
  Fill(CreateAt(path).Get(), {100});
  EXPECT_EQ(BytesOf(reader.Get(), OLESTR("s9")), Pattern(9000, 9));
  const Storage cut = OpenAt(path, kRead);
  std::filesystem::resize_file(path, 1000);
  Bytes buffer(100000);
  EXPECT_EQ(OpenStream(cut.Get(), OLESTR("s100"), kExclusive)->Read(buffer.data(), 100000, nullptr),
            STG_E_READFAULT);
}

TEST(PortableStorage, MovesElementsBetweenStoragesButNotIntoThemselves) {
  const Storage root = CreateAt(FreshPath("move"));
  const Storage folder = AddStorage(root.Get(), OLESTR("folder"));
  const auto move = [&](const OLECHAR* from, const OLECHAR* to, DWORD how = STGMOVE_MOVE) {
    return root->MoveElementTo(from, folder.Get(), to, how);
  };
  AddStream(root.Get(), OLESTR("s"), Pattern(5000));
  AddStream(folder.Get(), OLESTR("there"), {});
  EXPECT_EQ(move(OLESTR("s"), OLESTR("THERE")), STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(move(OLESTR("folder"), OLESTR("x")), STG_E_ACCESSDENIED);
  EXPECT_EQ(root->CopyTo(0, nullptr, nullptr, folder.Get()), STG_E_ACCESSDENIED);
  EXPECT_EQ(move(OLESTR("s"), OLESTR("copy"), STGMOVE_COPY), S_OK);
  EXPECT_EQ(move(OLESTR("s"), OLESTR("moved")), S_OK);
  for (const OLECHAR* name : {OLESTR("copy"), OLESTR("moved")}) {
    EXPECT_EQ(BytesOf(folder.Get(), name), Pattern(5000));
  }
  EXPECT_EQ(OpensStream(root.Get(), OLESTR("s")), STG_E_FILENOTFOUND);
}

// A storage copied into the one above it, where an element of that name is the storage itself.
TEST(PortableStorage, CopiesUpwardsOverItself) {
  const Storage root = CreateAt(FreshPath("up"));
  const Storage folder = AddStorage(root.Get(), OLESTR("a"));
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
  for (; result == S_OK; ++count) result = MakesStream(root.Get(), Numbered(count).c_str());
  EXPECT_EQ(result, STG_E_MEDIUMFULL);
  EXPECT_EQ(count, 2048U);
  EXPECT_EQ(MakesStream(root.Get(), OLESTR("s7"), kReadWrite | STGM_CREATE), S_OK)
      << "no more room";
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

// A stream of 4 GiB and one byte would come back as one byte.
TEST(PortableStorage, RefusesToSaveAStreamLongerThanTheFormatHolds) {
  for (const ULONGLONG size : {ULONGLONG{0x80000000}, ULONGLONG{0x100000001}}) {
    const Name path = FreshPath("long");
    CompoundBuilder builder(4);
    builder.AddZeros(0, OLESTR("long"), size);
    WriteFile(path, builder.Build());
    const auto whole = builder.PlaceOf(builder.SectorCount());
    std::filesystem::resize_file(path, whole);  // takes no room on the disk
    Storage root = OpenAt(path);
    AddStream(root.Get(), OLESTR("x"), {1});
    EXPECT_EQ(root->Commit(STGC_DEFAULT), STG_E_DOCFILETOOLARGE);
    ULARGE_INTEGER end = Size(0);
    EXPECT_EQ(OpenStream(root.Get(), OLESTR("long"))->Seek(Move(0), STREAM_SEEK_END, &end), S_OK);
    EXPECT_EQ(end.QuadPart, size);
    root.Reset();
    EXPECT_EQ(std::filesystem::file_size(path), whole);
  }
}

TEST(PortableStorage, NeitherWaitsForNorReplacesWhatIsNoFile) {
  const Name path = FreshPath("pipe");
  ASSERT_EQ(mkfifo(ToUtf8(path).c_str(), 0666), 0);
  Storage root;
  Stream stream;
  EXPECT_EQ(OpenStorage(path.c_str(), kReadWrite, root.Out()), STG_E_ACCESSDENIED);
  EXPECT_EQ(StgIsStorageFile(path.c_str()), STG_E_ACCESSDENIED);
  for (const DWORD mode : {STGM_READ, STGM_WRITE, STGM_READWRITE | STGM_CREATE}) {
    EXPECT_EQ(SHCreateStreamOnFileEx(path.c_str(), mode, 0, FALSE, nullptr, stream.Out()),
              E_ACCESSDENIED);
  }
  EXPECT_EQ(CreateStorage(path.c_str(), kReadWrite | STGM_CREATE, root.Out()), STG_E_ACCESSDENIED);
  const Name dangling = FreshPath("dangling");
  std::filesystem::create_symlink("/nowhere/at/all", dangling);
  EXPECT_EQ(CreateStorage(dangling.c_str(), kReadWrite | STGM_CREATE, root.Out()),
            STG_E_ACCESSDENIED);
  // One that came after the storage was made.
  const Name late = FreshPath("late");
  root = CreateAt(late);
  ASSERT_EQ(mkfifo(ToUtf8(late).c_str(), 0666), 0);
  EXPECT_EQ(root->Commit(STGC_DEFAULT), STG_E_ACCESSDENIED);
  EXPECT_TRUE(std::filesystem::is_fifo(late));
  for (const Name& name : {path, dangling, late}) std::filesystem::remove(name);
}

/// Runs `check` in a process without the rights of the superuser; 0 when it answers true.
template <class Check>
int WithoutRights(Check check) {
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && seteuid(65534) != 0) _exit(2);
    _exit(check() ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 3;
}

TEST(PortableStorage, LeavesWhatMayNotBeWritten) {
  const Name path = FreshPath("protected");
  Fill(CreateAt(path).Get(), {1});
  const auto folder = std::filesystem::path(path).parent_path();
  std::filesystem::permissions(folder, std::filesystem::perms::all);
  std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0444));
  if (WithoutRights([&] { return access(folder.c_str(), W_OK) == 0 || geteuid() != 0; }) != 0) {
    GTEST_SKIP() << "no way to give up rights";
  }
  Storage root;
  const auto open = [&](DWORD mode) { return OpenStorage(path.c_str(), mode, root.Out()); };
  const auto make = [&] {
    return CreateStorage(path.c_str(), kReadWrite | STGM_CREATE, root.Out());
  };
  // A file that may only be read, then a folder.
  EXPECT_EQ(WithoutRights([&] { return open(kRead) == S_OK; }), 0);
  EXPECT_EQ(WithoutRights([&] { return open(kReadWrite) == STG_E_ACCESSDENIED; }), 0);
  EXPECT_EQ(WithoutRights([&] { return make() == STG_E_ACCESSDENIED; }), 0);
  std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0666));
  EXPECT_EQ(WithoutRights([&] {
              // Protected between opening and saving, by whoever may.
              if (open(kReadWrite) != S_OK || root->SetClass(IID_IStream) != S_OK) return false;
              if (seteuid(getuid()) != 0) return false;
              std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0444));
              if (geteuid() == 0 && seteuid(65534) != 0) return false;
              return root->Commit(STGC_DEFAULT) == STG_E_ACCESSDENIED;
            }),
            0);
  std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0666));
  std::filesystem::permissions(folder, static_cast<std::filesystem::perms>(0555));
  EXPECT_EQ(WithoutRights([&] { return open(kReadWrite) == STG_E_ACCESSDENIED; }), 0);
  std::filesystem::permissions(folder, static_cast<std::filesystem::perms>(0755));
}

TEST(PortableStorage, SavesWhereItWasOpenedWhateverTheWorkingFolder) {
  const std::filesystem::path path = FreshPath("relative");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(path.parent_path());
  Storage root = CreateAt(OLESTR("relative"));
  std::filesystem::current_path(before);
  Fill(root.Get(), {1});
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(PortableStorage, SavesUnderTheLongestNameAndBesideLeftOvers) {
  const Name path = FreshPath((std::string(250, 'x') + ".zdm").c_str());
  const auto folder = std::filesystem::path(path).parent_path();
  std::vector<std::filesystem::path> leftOvers;
  for (int i = 0; i < 500; ++i) {
    leftOvers.push_back(folder /
                        (".zdm-" + std::to_string(getpid()) + "-" + std::to_string(i) + "~"));
    std::ofstream(leftOvers.back()).put('x');
  }
  const Storage root = CreateAt(path);
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  EXPECT_TRUE(std::filesystem::exists(path));
  for (const auto& file : leftOvers) EXPECT_TRUE(std::filesystem::remove(file));
}

TEST(PortableStorage, RevertsAfterASaveThatFailed) {
  const Name path = FreshPath("undone");
  Fill(CreateAt(path).Get(), {5, 200});
  const Storage root = OpenAt(path, kReadWrite | STGM_TRANSACTED);
  const std::string before = Describe(root.Get());
  for (ULONG i = 0; i < 2; ++i) {
    const Storage folder = AddStorage(root.Get(), OLESTR("folder"));
    EXPECT_EQ(root->DestroyElement(OLESTR("s5")), S_OK);
    std::filesystem::rename(path, path + u"-away");
    std::filesystem::create_directory(path);
    EXPECT_EQ(root->Commit(STGC_DEFAULT), STG_E_ACCESSDENIED);
    std::filesystem::remove(path);
    std::filesystem::rename(path + u"-away", path);
    EXPECT_EQ(root->Revert(), S_OK);
    EXPECT_EQ(Describe(root.Get()), before);
    EXPECT_EQ(folder->SetClass(IID_IStream), STG_E_REVERTED);
  }
  AddStream(root.Get(), OLESTR("x"), {1});
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  EXPECT_EQ(BytesOf(OpenAt(path).Get(), OLESTR("s200")), Pattern(200000, 200));
}

}  // namespace
}  // namespace zdm::test
