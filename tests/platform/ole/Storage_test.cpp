// Storages: elements by name, what is refused, lifetime, and what is in the file afterwards.
#include "StorageSupport.h"
#include "platform/ole/StorageFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace zdm::test {
namespace {

constexpr CLSID kClass = {
    0x64BEE525, 0x7124, 0x450E, {0xB4, 0x08, 0x7A, 0x7D, 0x31, 0x97, 0x2C, 0xDC}};
constexpr DWORD kRead = STGM_READ | STGM_SHARE_DENY_WRITE;

CLSID ClassOf(IStorage* storage) {
  STATSTG stat = {};
  EXPECT_EQ(storage->Stat(&stat, STATFLAG_NONAME), S_OK);
  EXPECT_EQ(stat.type, static_cast<DWORD>(STGTY_STORAGE));
  return stat.clsid;
}

/// A new file with small and large streams on two levels, a class id.
Storage Filled(const Name& path) {
  Storage root = CreateAt(path);
  AddStream(root.Get(), OLESTR("small"), Pattern(100, 1));
  AddStream(root.Get(), OLESTR("cutoff"), Pattern(4096, 2));
  AddStream(root.Get(), OLESTR("below"), Pattern(4095, 3));
  AddStream(root.Get(), OLESTR("empty"), {});
  const Storage folder = AddStorage(root.Get(), OLESTR("Objects"));
  AddStream(folder.Get(), OLESTR("1"), Pattern(300000, 4));
  AddStream(folder.Get(), OLESTR("0"), Pattern(64, 5));
  AddStream(folder.Get(), OLESTR("\u56FE\u5C42 \u00E9"), Pattern(10, 6));
  EXPECT_EQ(folder->SetClass(kClass), S_OK);
  return root;
}

TEST(Storage, KeepsElementsBytesAndClassesThroughTheFile) {
  const Name path = FreshPath("round");
  Storage root = Filled(path);
  const std::string text = Describe(root.Get());
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  root.Reset();
  root = OpenAt(path, kRead);
  EXPECT_EQ(Describe(root.Get()), text);
  EXPECT_TRUE(ClassOf(OpenFolder(root.Get(), OLESTR("oBJECTS"), kExclusive).Get()) == kClass);
  EXPECT_TRUE(ClassOf(root.Get()) == CLSID_NULL);
}

TEST(Storage, SavesWhenReleasedWithoutCommit) {
  const Name path = FreshPath("released");
  AddStream(CreateAt(path).Get(), OLESTR("s"), Pattern(5000));
  Storage root = OpenAt(path);
  AddStream(root.Get(), OLESTR("t"), Pattern(10));
  EXPECT_EQ(root->DestroyElement(OLESTR("S")), S_OK);
  root.Reset();
  root = OpenAt(path);
  EXPECT_EQ(BytesOf(root.Get(), OLESTR("t")), Pattern(10));
  EXPECT_EQ(OpensStream(root.Get(), OLESTR("s")), STG_E_FILENOTFOUND);
}

TEST(Storage, EnumeratesShorterNamesFirstThenUpperCase) {
  const Storage root = CreateAt(FreshPath("order"));
  for (const OLECHAR* name : {OLESTR("bb"), OLESTR("c"), OLESTR("B"), OLESTR("aaa"), OLESTR("a"),
                              OLESTR("AB"), OLESTR("_"), OLESTR("10"), OLESTR("9")}) {
    AddStream(root.Get(), name, {});
  }
  OleRef<IEnumSTATSTG> elements;
  ASSERT_EQ(root->EnumElements(0, nullptr, 0, elements.Out()), S_OK);
  const auto next = [&elements] {
    STATSTG entries[4] = {};
    ULONG fetched = 0;
    const HRESULT result = elements->Next(4, entries, &fetched);
    EXPECT_EQ(result, fetched == 4 ? S_OK : S_FALSE);
    Name names;
    for (ULONG i = 0; i < fetched; ++i) {
      names += Name(entries[i].pwcsName) + OLESTR(" ");
      CoTaskMemFree(entries[i].pwcsName);
    }
    return names;
  };
  EXPECT_EQ(next(), OLESTR("9 a B c "));
  EXPECT_EQ(next(), OLESTR("_ 10 AB bb "));
  EXPECT_EQ(next(), OLESTR("aaa "));
  EXPECT_EQ(elements->Reset(), S_OK);
  EXPECT_EQ(elements->Skip(7), S_OK);
  EXPECT_EQ(next(), OLESTR("bb aaa "));
  EXPECT_EQ(elements->Skip(1), S_FALSE);
}

TEST(Storage, RefusesNamesACompoundFileCannotHold) {
  if (!kOurClasses) GTEST_SKIP() << "Wine takes any name";
  const Storage root = CreateAt(FreshPath("names"));
  for (const Name& name : {Name(), Name(OLESTR("a/b")), Name(OLESTR("a\\b")), Name(OLESTR("a:b")),
                           Name(OLESTR("a!b")), Name(32, 'x')}) {
    EXPECT_EQ(MakesStream(root.Get(), name.c_str()), STG_E_INVALIDNAME);
    EXPECT_EQ(MakesStorage(root.Get(), name.c_str()), STG_E_INVALIDNAME);
  }
  for (const Name& name : {Name(31, 'x'), Name(OLESTR("\5Summary")), Name(OLESTR("a b.c*d?"))}) {
    EXPECT_EQ(MakesStream(root.Get(), name.c_str()), S_OK);
  }
}

TEST(Storage, AnswersWhenAnElementIsMissingOrThereOrOfTheOtherKind) {
  const Storage held = Filled(FreshPath("answers"));
  IStorage* root = held.Get();
  for (const OLECHAR* name : {OLESTR("none"), OLESTR("Objects")}) {
    EXPECT_EQ(OpensStream(root, name), STG_E_FILENOTFOUND);
  }
  for (const OLECHAR* name : {OLESTR("none"), OLESTR("small")}) {
    EXPECT_EQ(OpensStorage(root, name), STG_E_FILENOTFOUND);
  }
  EXPECT_EQ(OpensStream(root, OLESTR("small"), STGM_READWRITE),
            STG_E_INVALIDFLAG);  // not exclusive
  EXPECT_EQ(MakesStream(root, OLESTR("SMALL")), STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(MakesStorage(root, OLESTR("small")), STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(MakesStream(root, OLESTR("small"), kReadWrite | STGM_CREATE), S_OK);
  EXPECT_TRUE(BytesOf(root, OLESTR("small")).empty());
  EXPECT_EQ(root->DestroyElement(OLESTR("none")), STG_E_FILENOTFOUND);
  EXPECT_EQ(root->RenameElement(OLESTR("none"), OLESTR("x")), STG_E_FILENOTFOUND);
  EXPECT_EQ(root->RenameElement(OLESTR("below"), OLESTR("empty")), STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(root->RenameElement(OLESTR("below"), OLESTR("renamed")), S_OK);
  EXPECT_EQ(BytesOf(root, OLESTR("renamed")), Pattern(4095, 3));
  EXPECT_EQ(OpensStream(root, OLESTR("below")), STG_E_FILENOTFOUND);
}

TEST(Storage, OpensAnElementOnceAtATime) {
  const Storage root = Filled(FreshPath("once"));
  Stream first = OpenStream(root.Get(), OLESTR("small"));
  EXPECT_EQ(OpensStream(root.Get(), OLESTR("small")), STG_E_ACCESSDENIED);
  first.Reset();
  EXPECT_EQ(OpensStream(root.Get(), OLESTR("small")), S_OK);
}

TEST(Storage, RevertsWhatIsDestroyedAndWhatWasOpenedThroughItWhenReleased) {
  Storage root = Filled(FreshPath("reverted"));
  Storage folder = OpenFolder(root.Get(), OLESTR("Objects"));
  const Stream inFolder = OpenStream(folder.Get(), OLESTR("1"));
  const Stream inRoot = OpenStream(root.Get(), OLESTR("small"));
  const Stream destroyed = OpenStream(root.Get(), OLESTR("below"));
  BYTE byte = 0;
  EXPECT_EQ(root->DestroyElement(OLESTR("below")), S_OK);
  EXPECT_EQ(destroyed->Read(&byte, 1, nullptr), STG_E_REVERTED);
  folder.Reset();
  EXPECT_EQ(inFolder->Read(&byte, 1, nullptr), STG_E_REVERTED);
  EXPECT_EQ(inRoot->Read(&byte, 1, nullptr), S_OK);
  folder = OpenFolder(root.Get(), OLESTR("Objects"));
  root.Reset();
  EXPECT_EQ(inRoot->Write(&byte, 1, nullptr), STG_E_REVERTED);
  EXPECT_EQ(inRoot->Clone(Stream().Out()), STG_E_REVERTED);
  OleRef<IEnumSTATSTG> elements;
  EXPECT_EQ(folder->EnumElements(0, nullptr, 0, elements.Out()), STG_E_REVERTED);
}

TEST(Storage, WritesNothingThroughReadAccess) {
  const Name path = FreshPath("readonly");
  Filled(path).Reset();
  const Storage root = OpenAt(path, kRead);
  ExpectRefused(MakesStream(root.Get(), OLESTR("x")), STG_E_ACCESSDENIED);
  ExpectRefused(OpensStream(root.Get(), OLESTR("small")), STG_E_ACCESSDENIED);
  Stream stream = OpenStream(root.Get(), OLESTR("small"), kExclusive);
  EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
  EXPECT_EQ(stream->SetSize(Size(0)), STG_E_ACCESSDENIED);
  stream.Reset();
  ExpectRefused(root->DestroyElement(OLESTR("small")), STG_E_ACCESSDENIED);
  ExpectRefused(root->RenameElement(OLESTR("below"), OLESTR("x")), STG_E_ACCESSDENIED);
  ExpectRefused(root->SetClass(kClass), STG_E_ACCESSDENIED);
}

TEST(Storage, TransactedRootDropsWhatWasNotCommitted) {
  const Name path = FreshPath("transacted");
  Storage root;
  ASSERT_EQ(CreateStorage(path.c_str(), kReadWrite | STGM_CREATE | STGM_TRANSACTED, root.Out()),
            S_OK);
  AddStream(root.Get(), OLESTR("kept"), Pattern(5000));
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  Stream stream = OpenStream(root.Get(), OLESTR("kept"));
  Write(stream.Get(), Pattern(5000, 2));
  AddStream(root.Get(), OLESTR("dropped"), {});
  EXPECT_EQ(root->Revert(), S_OK);
  EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_REVERTED);
  EXPECT_EQ(BytesOf(root.Get(), OLESTR("kept")), Pattern(5000));
  EXPECT_EQ(root->DestroyElement(OLESTR("kept")), S_OK);
  stream.Reset();
  root.Reset();
  root = OpenAt(path);
  EXPECT_EQ(BytesOf(root.Get(), OLESTR("kept")), Pattern(5000));
  EXPECT_EQ(OpensStream(root.Get(), OLESTR("dropped")), STG_E_FILENOTFOUND);
}

TEST(Storage, CopiesIntoAnotherMergingStorages) {
  const Storage from = Filled(FreshPath("from"));
  ASSERT_EQ(from->SetClass(kClass), S_OK);
  const Storage to = CreateAt(FreshPath("to"));
  AddStream(to.Get(), OLESTR("small"), Pattern(9000));
  AddStream(AddStorage(to.Get(), OLESTR("Objects")).Get(), OLESTR("own"), Pattern(7));
  EXPECT_EQ(from->CopyTo(0, nullptr, nullptr, to.Get()), S_OK);
  EXPECT_TRUE(ClassOf(to.Get()) == kClass);
  EXPECT_EQ(BytesOf(to.Get(), OLESTR("small")), Pattern(100, 1));
  const Storage folder = OpenFolder(to.Get(), OLESTR("Objects"));
  EXPECT_EQ(BytesOf(folder.Get(), OLESTR("own")), Pattern(7));
  // The copy is a copy, also where all of a piece that both share is written at once.
  const Bytes written = Pattern(280000, 9);
  Write(OpenStream(folder.Get(), OLESTR("1")).Get(), written);
  Bytes expected = Pattern(300000, 4);
  std::copy(written.begin(), written.end(), expected.begin());
  EXPECT_EQ(BytesOf(folder.Get(), OLESTR("1")), expected);
  EXPECT_EQ(BytesOf(OpenFolder(from.Get(), OLESTR("Objects")).Get(), OLESTR("1")),
            Pattern(300000, 4));
  EXPECT_EQ(OpenStream(to.Get(), OLESTR("below"))->SetSize(Size(1000)), S_OK);
  EXPECT_EQ(BytesOf(to.Get(), OLESTR("below")), Pattern(1000, 3));
  EXPECT_EQ(BytesOf(from.Get(), OLESTR("below")), Pattern(4095, 3));
}

TEST(StorageFile, AnswersForFilesThatAreNone) {
  const Name path = FreshPath("none");
  const Name nowhere = path + OLESTR("-folder/x");
  Storage root;
  CompoundFileReport report;
  report.fault = CompoundFault::kChain;  // of an earlier file
  EXPECT_EQ(OpenStorage(path.c_str(), kRead, root.Out(), &report), STG_E_FILENOTFOUND);
  EXPECT_EQ(report.fault, CompoundFault::kNone);
  EXPECT_EQ(OpenStorage(nowhere.c_str(), kRead, root.Out(), &report), STG_E_PATHNOTFOUND);
  EXPECT_EQ(StgIsStorageFile(path.c_str()), STG_E_FILENOTFOUND);
  for (const Bytes& none : {Bytes(), Pattern(1000)}) {
    WriteFile(path, none);
    EXPECT_EQ(OpenStorage(path.c_str(), kRead, root.Out(), &report), STG_E_FILEALREADYEXISTS);
    EXPECT_EQ(report.fault, CompoundFault::kNotCompound);
  }
  EXPECT_EQ(StgOpenStorage(path.c_str(), nullptr, kRead, nullptr, 0, root.Out()),
            STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(StgIsStorageFile(path.c_str()), S_FALSE);
  EXPECT_EQ(CreateStorage(path.c_str(), kReadWrite, root.Out()), STG_E_FILEALREADYEXISTS);
  EXPECT_EQ(ReadFile(path), Pattern(1000));

  CompoundBuilder builder;
  const ULONG stream = builder.AddStream(0, OLESTR("s"), Pattern(5000));
  Bytes file = builder.Build();
  WriteFile(path, file);
  EXPECT_EQ(StgIsStorageFile(path.c_str()), S_OK);
  EXPECT_EQ(OpenStorage(path.c_str(), kRead, root.Out(), &report), S_OK);
  root.Reset();
  Put32(file, builder.FatAt(builder.SectorOf(stream)), builder.SectorOf(stream));
  WriteFile(path, file);
  EXPECT_EQ(OpenStorage(path.c_str(), kRead, root.Out(), &report), STG_E_DOCFILECORRUPT);
  EXPECT_FALSE(root);
  EXPECT_EQ(report.fault, CompoundFault::kChain);
}

TEST(StorageFile, TakesTheModesTheSystemTakes) {
  const Name path = FreshPath("modes-of-roots");
  const struct {
    DWORD mode;
    HRESULT create;
    HRESULT open;
  } cases[] = {
      {STGM_READWRITE | STGM_SHARE_EXCLUSIVE, S_OK, S_OK},
      {STGM_READWRITE | STGM_SHARE_DENY_WRITE, STG_E_INVALIDFLAG, STG_E_INVALIDFLAG},
      {STGM_READWRITE | STGM_SHARE_DENY_NONE, STG_E_INVALIDFLAG, STG_E_INVALIDFLAG},
      {STGM_READ | STGM_SHARE_DENY_NONE, STG_E_INVALIDFLAG, STG_E_INVALIDFLAG},
      {STGM_READ | STGM_SHARE_DENY_WRITE, STG_E_INVALIDFLAG, S_OK},
      {STGM_READWRITE | STGM_SHARE_DENY_WRITE | STGM_TRANSACTED, S_OK, S_OK},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.mode);
    CreateAt(path).Reset();
    EXPECT_EQ(OpenStorage(path.c_str(), test.mode, Storage().Out()), test.open);
    EXPECT_EQ(CreateStorage(path.c_str(), test.mode | STGM_CREATE, Storage().Out()), test.create);
  }
}

TEST(StorageFile, OpeningASoundFileDoesNotWriteIt) {
  const Name path = FreshPath("untouched");
  CompoundBuilder builder(4);
  builder.AddStream(builder.AddStorage(0, OLESTR("f")), OLESTR("s"), Pattern(5000));
  builder.AddStream(0, OLESTR("t"), Pattern(50));
  const Bytes file = builder.Build();
  WriteFile(path, file);
  Storage root = OpenAt(path);
  EXPECT_NE(Describe(root.Get()), "");
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
  root.Reset();
  EXPECT_EQ(ReadFile(path), file);
}

// Streams of a file whose sectors lie scattered: each sector of two streams in turn.
TEST(StorageFile, ReadsScatteredStreams) {
  for (const int version : {3, 4}) {
    CompoundBuilder builder(version);
    Bytes bytes = Pattern(300000);
    const ULONG entry = builder.AddStream(0, OLESTR("s"), bytes);
    Bytes file = builder.Build();
    // Swap neighbours from the second sector on, and the chain with them.
    const std::size_t sector = builder.sectorSize();
    const ULONG start = builder.SectorOf(entry);
    const auto count = static_cast<ULONG>((bytes.size() + sector - 1) / sector);
    for (ULONG i = 1; i + 2 < count; i += 2) {
      const ULONG a = start + i;
      std::swap_ranges(file.begin() + static_cast<std::ptrdiff_t>(builder.PlaceOf(a)),
                       file.begin() + static_cast<std::ptrdiff_t>(builder.PlaceOf(a + 1)),
                       file.begin() + static_cast<std::ptrdiff_t>(builder.PlaceOf(a + 1)));
      Put32(file, builder.FatAt(a - 1 - (i > 1 ? 1 : 0)), a + 1);
      Put32(file, builder.FatAt(a + 1), a);
      Put32(file, builder.FatAt(a), a + 2);
    }
    const Name path = FreshPath("scattered");
    WriteFile(path, file);
    const Storage root = OpenAt(path);
    EXPECT_EQ(BytesOf(root.Get(), OLESTR("s")), bytes);
    // Around what is written stays what was read from the middle of the chain.
    const Stream stream = OpenStream(root.Get(), OLESTR("s"));
    ASSERT_EQ(stream->Seek(Move(280000), STREAM_SEEK_SET, nullptr), S_OK);
    Write(stream.Get(), {1, 2, 3});
    std::iota(bytes.begin() + 280000, bytes.begin() + 280003, BYTE{1});
    EXPECT_EQ(ReadAll(stream.Get()), bytes);
  }
}

}  // namespace
}  // namespace zdm::test
