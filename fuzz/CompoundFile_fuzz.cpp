// Compound files through every door that takes their bytes: the check, opening, listing, reading
// all streams, saving what was read, and reading that again. What the check accepts must come
// through unchanged; anything else is a crash.
#include "fuzz/Fuzz.h"
#include "platform/ole/CompoundFileCheck.h"
#include "platform/ole/OleRef.h"
#include "platform/ole/StorageFile.h"
#include "platform/system/Text.h"
#include "tests/support/TempFile.h"

namespace {

using zdm::test::Require;
using Storage = zdm::OleRef<IStorage>;

constexpr DWORD kReadWrite = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

zdm::WideString Name(const std::filesystem::path& path) { return zdm::FromUtf8(path.string()); }

struct Found {
  unsigned storages = 0;
  unsigned streams = 0;
  std::vector<std::uint8_t> bytes;  // names, sizes and contents one after the other
};

void Append(Found& found, const void* data, std::size_t size) {
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  found.bytes.insert(found.bytes.end(), bytes, bytes + size);
}

void ReadStream(IStorage* storage, const STATSTG& entry, Found& found) {
  zdm::OleRef<IStream> stream;
  Require(
      storage->OpenStream(entry.pwcsName, nullptr, STGM_SHARE_EXCLUSIVE, 0, stream.Out()) == S_OK,
      "a listed stream opens");
  ULONGLONG left = entry.cbSize.QuadPart;
  std::vector<std::uint8_t> piece(4096);
  while (left != 0) {
    ULONG read = 0;
    Require(SUCCEEDED(stream->Read(piece.data(), static_cast<ULONG>(piece.size()), &read)),
            "a stream reads");
    Require(read != 0 && read <= left, "a stream is as long as it is listed");
    Append(found, piece.data(), read);
    left -= read;
  }
}

void ReadStorage(IStorage* storage, Found& found) {
  zdm::OleRef<IEnumSTATSTG> elements;
  Require(storage->EnumElements(0, nullptr, 0, elements.Out()) == S_OK, "a storage enumerates");
  STATSTG entry;
  while (elements->Next(1, &entry, nullptr) == S_OK) {
    const zdm::WideString name = entry.pwcsName;
    Append(found, name.data(), name.size() * sizeof(OLECHAR));
    Append(found, &entry.cbSize, sizeof(entry.cbSize));
    if (entry.type == STGTY_STREAM) {
      ++found.streams;
      ReadStream(storage, entry, found);
    } else {
      ++found.storages;
      Storage child;
      Require(storage->OpenStorage(entry.pwcsName, nullptr, STGM_SHARE_EXCLUSIVE, nullptr, 0,
                                   child.Out()) == S_OK,
              "a listed storage opens");
      ReadStorage(child.Get(), found);
    }
    CoTaskMemFree(entry.pwcsName);
  }
}

}  // namespace

ZDM_FUZZ(bytes) {
  zdm::CompoundFileReport report;
  const HRESULT checked = zdm::CheckCompoundFile(bytes.data(), bytes.size(), &report);
  Require((checked == S_OK) == (report.fault == zdm::CompoundFault::kNone),
          "result and report agree");
  // The file is only worth writing when it is accepted, or now and then.
  if (checked != S_OK && bytes.size() % 16 != 0) return;
  const auto original = zdm::test::TempFile("original");
  const auto copy = zdm::test::TempFile("copy");
  zdm::test::WriteFileBytes(original, bytes);
  const zdm::WideString name = Name(original);
  const zdm::WideString copyName = Name(copy);

  Storage root;
  const HRESULT opened =
      zdm::OpenStorage(name.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, root.Out());
  Require((checked == S_OK) == (opened == S_OK), "what is accepted opens, and nothing else");
  if (FAILED(opened)) return;
  Found before;
  ReadStorage(root.Get(), before);
  Require(before.storages == report.storages && before.streams == report.streams,
          "every element is reached");

  Storage target;
  Require(zdm::CreateStorage(copyName.c_str(), kReadWrite | STGM_CREATE, target.Out()) == S_OK,
          "a file can be made");
  Require(root->CopyTo(0, nullptr, nullptr, target.Get()) == S_OK, "a storage copies");
  Require(target->Commit(STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE) == S_OK, "a copy saves");
  target.Reset();
  Require(
      zdm::OpenStorage(copyName.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, target.Out()) == S_OK,
      "a saved copy opens");
  Found after;
  ReadStorage(target.Get(), after);
  Require(before.bytes == after.bytes, "a saved copy is the same");
}
