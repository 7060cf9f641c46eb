// Writes a compound file with a fixed tree, or lists one, so that files can go from one system to
// the other and be compared there with what other programs see. Used by tests/exchange.sh.
//   storage_exchange write FILE   makes the file
//   storage_exchange list FILE    one line per stream: CRC-32, size, path; or why it is refused
//   storage_exchange change FILE  adds, replaces and removes elements of a file that `write` made
#include "CompoundBuilder.h"
#include "platform/ole/OleRef.h"
#include "platform/ole/StorageFile.h"
#include "platform/system/Text.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace zdm::test {
namespace {

using Stream = OleRef<IStream>;
using Storage = OleRef<IStorage>;

constexpr DWORD kReadWrite = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr CLSID kClass = {
    0x64BEE525, 0x7124, 0x450E, {0xB4, 0x08, 0x7A, 0x7D, 0x31, 0x97, 0x2C, 0xDC}};

bool Check(HRESULT result, const char* what) {
  if (SUCCEEDED(result)) return true;
  std::printf("%s: %08X\n", what, static_cast<unsigned>(result));
  return false;
}

bool AddStream(IStorage* storage, const Name& name, const Bytes& bytes) {
  Stream stream;
  return Check(storage->CreateStream(name.c_str(), kReadWrite | STGM_CREATE, 0, 0, stream.Out()),
               "CreateStream") &&
         (bytes.empty() ||
          Check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), "Write"));
}

bool WriteTree(IStorage* root) {
  // Sizes about every limit of the format; names in the order of length, case and script.
  for (const ULONG size : {0, 1, 63, 64, 65, 4095, 4096, 4097, 300000}) {
    if (!AddStream(root, Numbered(size), Pattern(size, size + 1))) return false;
  }
  for (const OLECHAR* name :
       {OLESTR("B"), OLESTR("a"), OLESTR("_"), OLESTR("\5Summary"),
        OLESTR("a name of thirty-one characters"), OLESTR("\u56FE\u5C42"), OLESTR("\u00E9t\u00E9"),
        OLESTR("\u00C9T\u00C8"), OLESTR("\U0001F600 pair")}) {
    if (!AddStream(root, name, Pattern(200, 3))) return false;
  }
  Storage objects;
  if (!Check(root->CreateStorage(OLESTR("Objects"), kReadWrite, 0, 0, objects.Out()),
             "CreateStorage") ||
      !Check(objects->SetClass(kClass), "SetClass")) {
    return false;
  }
  for (ULONG i = 0; i < 200; ++i) {
    if (!AddStream(objects.Get(), Numbered(i), Pattern(std::size_t{i} * 100, i))) return false;
  }
  // Past the places of the allocation table that fit the header.
  if (!AddStream(objects.Get(), OLESTR("large"), Pattern(9000000))) return false;
  // Nested; all stay open, since an element ends with the storage it was opened through.
  std::vector<Storage> open = {objects};
  for (int i = 0; i < 30; ++i) {
    Storage child;
    if (!Check(open.back()->CreateStorage(OLESTR("deeper"), kReadWrite, 0, 0, child.Out()),
               "CreateStorage") ||
        !AddStream(open.back().Get(), OLESTR("beside"), Pattern(10))) {
      return false;
    }
    open.push_back(child);
  }
  return AddStream(open.back().Get(), OLESTR("deepest"), Pattern(10));
}

bool Change(IStorage* root) {
  Storage objects;
  return Check(root->DestroyElement(OLESTR("s300000")), "DestroyElement") &&
         AddStream(root, OLESTR("s64"), Pattern(20000)) &&
         Check(root->OpenStorage(OLESTR("Objects"), nullptr, kReadWrite, nullptr, 0, objects.Out()),
               "OpenStorage") &&
         AddStream(objects.Get(), OLESTR("added"), Pattern(4096));
}

ULONG Crc(const Bytes& bytes) {
  ULONG crc = 0xFFFFFFFF;
  for (const BYTE byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

bool ListStream(IStorage* storage, const Name& name, const std::string& path) {
  Stream stream;
  if (!Check(storage->OpenStream(name.c_str(), nullptr, STGM_SHARE_EXCLUSIVE, 0, stream.Out()),
             path.c_str())) {
    return false;
  }
  Bytes bytes;
  Bytes piece(1 << 20);
  ULONG read = 0;
  do {
    if (!Check(stream->Read(piece.data(), static_cast<ULONG>(piece.size()), &read), path.c_str())) {
      return false;
    }
    bytes.insert(bytes.end(), piece.begin(), piece.begin() + read);
  } while (read != 0);
  std::printf("%08x %zu %s\n", static_cast<unsigned>(Crc(bytes)), bytes.size(), path.c_str());
  return true;
}

bool List(IStorage* storage, const std::string& folder) {
  OleRef<IEnumSTATSTG> elements;
  if (!Check(storage->EnumElements(0, nullptr, 0, elements.Out()), "EnumElements")) return false;
  bool sound = true;
  STATSTG entry;
  while (elements->Next(1, &entry, nullptr) == S_OK) {
    const Name name = entry.pwcsName;
    CoTaskMemFree(entry.pwcsName);
    const std::string path = folder + ToUtf8(name);
    if (entry.type != STGTY_STORAGE) {
      sound = ListStream(storage, name, path) && sound;
      continue;
    }
    Storage child;
    sound = Check(storage->OpenStorage(name.c_str(), nullptr, STGM_SHARE_EXCLUSIVE, nullptr, 0,
                                       child.Out()),
                  path.c_str()) &&
            List(child.Get(), path + "/") && sound;
  }
  return sound;
}

int Run(const char* command, const char* file) {
  const Name path = FromUtf8(file);
  Storage root;
  if (std::strcmp(command, "write") == 0) {
    return Check(CreateStorage(path.c_str(), kReadWrite | STGM_CREATE, root.Out()), file) &&
                   WriteTree(root.Get()) && Check(root->Commit(STGC_DEFAULT), "Commit")
               ? 0
               : 1;
  }
  const bool change = std::strcmp(command, "change") == 0;
  const DWORD mode = change ? kReadWrite : STGM_READ | STGM_SHARE_DENY_WRITE;
  CompoundFileReport report;
  const HRESULT opened = OpenStorage(path.c_str(), mode, root.Out(), &report);
  if (!Check(opened, DescribeFault(report.fault))) return 1;
  if (change) return Change(root.Get()) && Check(root->Commit(STGC_DEFAULT), "Commit") ? 0 : 1;
  return List(root.Get(), "") ? 0 : 1;
}

}  // namespace
}  // namespace zdm::test

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s write|list|change FILE\n", argv[0]);
    return 2;
  }
  return zdm::test::Run(argv[1], argv[2]);
}
