// Writes a compound file with a fixed tree, or lists one, so that files can go from one system to
// the other and be compared there with what other programs see. Used by tests/exchange.sh.
//   storage_exchange write FILE   makes the file
//   storage_exchange list FILE    one line per stream: CRC-32, size, path; or why it is refused
//   storage_exchange change FILE  adds, replaces and removes elements of a file that `write` made
#include "StorageSupport.h"
#include "platform/ole/StorageFile.h"
#include "platform/system/Text.h"

#include <cstdio>
#include <string>
#include <vector>

namespace zdm::test {
namespace {

constexpr CLSID kClass = {
    0x64BEE525, 0x7124, 0x450E, {0xB4, 0x08, 0x7A, 0x7D, 0x31, 0x97, 0x2C, 0xDC}};

void WriteTree(IStorage* root) {
  // Sizes about every limit of the format; names in the order of length, case and script.
  for (const ULONG size : {0, 1, 63, 64, 65, 4095, 4096, 4097, 300000}) {
    AddStream(root, Numbered(size).c_str(), Pattern(size, size + 1));
  }
  for (const OLECHAR* name :
       {OLESTR("B"), OLESTR("a"), OLESTR("_"), OLESTR("\5Summary"),
        OLESTR("a name of thirty-one characters"), OLESTR("\u56FE\u5C42"), OLESTR("\u00E9t\u00E9"),
        OLESTR("\u00C9T\u00C8"), OLESTR("\U0001F600 pair")}) {
    AddStream(root, name, Pattern(200, 3));
  }
  const Storage objects = AddStorage(root, OLESTR("Objects"));
  EXPECT_EQ(objects->SetClass(kClass), S_OK);
  for (ULONG i = 0; i < 200; ++i) {
    AddStream(objects.Get(), Numbered(i).c_str(), Pattern(std::size_t{i} * 100, i));
  }
  // Past the places of the allocation table that fit the header.
  AddStream(objects.Get(), OLESTR("large"), Pattern(9000000));
  // Nested; all stay open, since an element ends with the storage it was opened through.
  std::vector<Storage> open = {objects};
  for (int i = 0; i < 30; ++i) {
    const Storage child = AddStorage(open.back().Get(), OLESTR("deeper"));
    AddStream(open.back().Get(), OLESTR("beside"), Pattern(10));
    open.push_back(child);
  }
  AddStream(open.back().Get(), OLESTR("deepest"), Pattern(10));
}

void Change(IStorage* root) {
  EXPECT_EQ(root->DestroyElement(OLESTR("s300000")), S_OK);
  EXPECT_EQ(MakesStream(root, OLESTR("s64"), kReadWrite | STGM_CREATE), S_OK);
  Write(OpenStream(root, OLESTR("s64")).Get(), Pattern(20000));
  AddStream(OpenFolder(root, OLESTR("Objects")).Get(), OLESTR("added"), Pattern(4096));
}

unsigned Crc(const Bytes& bytes) {
  unsigned crc = 0xFFFFFFFF;
  for (const BYTE byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

void List(IStorage* storage, const std::string& folder) {
  OleRef<IEnumSTATSTG> elements;
  ASSERT_EQ(storage->EnumElements(0, nullptr, 0, elements.Out()), S_OK);
  STATSTG entry;
  while (elements->Next(1, &entry, nullptr) == S_OK) {
    const Name name = entry.pwcsName;
    CoTaskMemFree(entry.pwcsName);
    const std::string path = folder + ToUtf8(name);
    if (entry.type == STGTY_STORAGE) {
      const Storage child = OpenFolder(storage, name.c_str(), kExclusive);
      if (child) List(child.Get(), path + "/");
      continue;
    }
    const Bytes bytes = BytesOf(storage, name.c_str());
    std::printf("%08x %zu %s\n", Crc(bytes), bytes.size(), path.c_str());
  }
}

void Run(const std::string& command, const Name& path) {
  const bool isWrite = command == "write";
  CompoundFileReport report;
  const Storage root = isWrite ? CreateAt(path) : [&] {
    Storage opened;
    const DWORD mode = command == "change" ? kReadWrite : STGM_READ | STGM_SHARE_DENY_WRITE;
    EXPECT_EQ(OpenStorage(path.c_str(), mode, opened.Out(), &report), S_OK)
        << DescribeFault(report.fault);
    return opened;
  }();
  if (!root) return;
  if (command == "list") return List(root.Get(), "");
  isWrite ? WriteTree(root.Get()) : Change(root.Get());
  EXPECT_EQ(root->Commit(STGC_DEFAULT), S_OK);
}

}  // namespace
}  // namespace zdm::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s write|list|change FILE\n", argv[0]);
    return 2;
  }
  zdm::test::Run(argv[1], zdm::FromUtf8(argv[2]));
  return testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}
