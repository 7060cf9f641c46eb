#include "StorageSupport.h"

#include "platform/ole/StorageFile.h"
#include "platform/system/Text.h"
#include "tests/support/TempFile.h"

#include <filesystem>

namespace zdm::test {

namespace {

std::filesystem::path Native(const Name& path) { return std::filesystem::path(path); }

}  // namespace

void ExpectRefused(HRESULT result, HRESULT expected) {
  EXPECT_TRUE(FAILED(result));
  if (kOurClasses) {
    EXPECT_EQ(result, expected);
  }
}

Name FreshPath(const char* name) {
  const auto path = TempFile(name);
#if defined(_WIN32)
  return path.wstring();
#else
  return path.u16string();
#endif
}

Bytes ReadFile(const Name& path) { return FileBytes(Native(path)); }
void WriteFile(const Name& path, const Bytes& bytes) { WriteFileBytes(Native(path), bytes); }

Bytes ReadAll(IStream* stream) {
  EXPECT_EQ(stream->Seek(Move(0), STREAM_SEEK_SET, nullptr), S_OK);
  Bytes bytes;
  BYTE buffer[16384];
  ULONG read = 0;
  while (SUCCEEDED(stream->Read(buffer, sizeof(buffer), &read)) && read != 0) {
    bytes.insert(bytes.end(), buffer, buffer + read);
  }
  return bytes;
}

void Write(IStream* stream, const Bytes& bytes) {
  ULONG written = 0;
  EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
  EXPECT_EQ(written, bytes.size());
}

ULONGLONG Position(IStream* stream) {
  ULARGE_INTEGER position = Size(0);
  EXPECT_EQ(stream->Seek(Move(0), STREAM_SEEK_CUR, &position), S_OK);
  return position.QuadPart;
}

Storage CreateAt(const Name& path) {
  Storage storage;
  EXPECT_EQ(CreateStorage(path.c_str(), kReadWrite | STGM_CREATE, storage.Out()), S_OK);
  return storage;
}

Storage OpenAt(const Name& path, DWORD mode) {
  Storage storage;
  EXPECT_EQ(OpenStorage(path.c_str(), mode, storage.Out()), S_OK);
  return storage;
}

void AddStream(IStorage* storage, const OLECHAR* name, const Bytes& bytes) {
  Stream stream;
  ASSERT_EQ(storage->CreateStream(name, kReadWrite, 0, 0, stream.Out()), S_OK);
  if (!bytes.empty()) Write(stream.Get(), bytes);
}

Storage AddStorage(IStorage* parent, const OLECHAR* name) {
  Storage storage;
  EXPECT_EQ(parent->CreateStorage(name, kReadWrite, 0, 0, storage.Out()), S_OK);
  return storage;
}

Stream OpenStream(IStorage* storage, const OLECHAR* name, DWORD mode) {
  Stream stream;
  EXPECT_EQ(storage->OpenStream(name, nullptr, mode, 0, stream.Out()), S_OK);
  return stream;
}

Storage OpenFolder(IStorage* parent, const OLECHAR* name, DWORD mode) {
  Storage storage;
  EXPECT_EQ(parent->OpenStorage(name, nullptr, mode, nullptr, 0, storage.Out()), S_OK);
  return storage;
}

Bytes BytesOf(IStorage* storage, const OLECHAR* name) {
  const Stream stream = OpenStream(storage, name, kExclusive);
  return stream ? ReadAll(stream.Get()) : Bytes();
}

HRESULT MakesStream(IStorage* storage, const OLECHAR* name, DWORD mode) {
  return storage->CreateStream(name, mode, 0, 0, Stream().Out());
}
HRESULT MakesStorage(IStorage* storage, const OLECHAR* name, DWORD mode) {
  return storage->CreateStorage(name, mode, 0, 0, Storage().Out());
}
HRESULT OpensStream(IStorage* storage, const OLECHAR* name, DWORD mode) {
  return storage->OpenStream(name, nullptr, mode, 0, Stream().Out());
}
HRESULT OpensStorage(IStorage* storage, const OLECHAR* name) {
  return storage->OpenStorage(name, nullptr, kReadWrite, nullptr, 0, Storage().Out());
}

std::string Describe(IStorage* storage) {
  OleRef<IEnumSTATSTG> elements;
  if (storage->EnumElements(0, nullptr, 0, elements.Out()) != S_OK) return "?";
  std::string text;
  STATSTG entry;
  while (elements->Next(1, &entry, nullptr) == S_OK) {
    const Name name = entry.pwcsName;
    CoTaskMemFree(entry.pwcsName);
    text += ToUtf8(name);
    if (entry.type == STGTY_STORAGE) {
      const Storage child = OpenFolder(storage, name.c_str(), kExclusive);
      text += child ? "(" + Describe(child.Get()) + ") " : "? ";
      continue;
    }
    const Bytes bytes = BytesOf(storage, name.c_str());
    ULONG sum = 0;
    for (const BYTE byte : bytes) sum = sum * 31 + byte;
    text += "=" + std::to_string(entry.cbSize.QuadPart) + ":" + std::to_string(sum) + " ";
    if (bytes.size() != entry.cbSize.QuadPart) text += "SHORT ";
  }
  return text;
}

}  // namespace zdm::test
