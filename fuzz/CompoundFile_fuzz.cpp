// Compound files through every door that takes their bytes: the check, opening, listing, reading
// all streams, saving what was read, and reading that again. What the check accepts must come
// through unchanged; anything else is a crash.
#include "platform/ole/CompoundFileCheck.h"
#include "platform/ole/OleRef.h"
#include "platform/ole/StorageFile.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using Text = std::basic_string<OLECHAR>;
using Storage = zdm::OleRef<IStorage>;

constexpr DWORD kReadWrite = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

/// Stops the run where a promise is broken.
void Require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

/// A file that no other run has, gone at the end of this one.
class File {
 public:
  explicit File(const char* name) {
    // Runs are many at a time, and start together.
    std::random_device random;
    const std::string run = std::to_string(random()) + "-" + std::to_string(random());
    path_ = std::filesystem::temp_directory_path() / ("zdm-fuzz-" + run + name);
  }
  ~File() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  void Write(const std::uint8_t* data, std::size_t size) const {
    std::ofstream file(path_, std::ios::binary);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  const std::filesystem::path& Path() const { return path_; }
  Text Name() const {
#if defined(_WIN32)
    return path_.wstring();
#else
    return path_.u16string();
#endif
  }

 private:
  std::filesystem::path path_;
};

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
    const Text name = entry.pwcsName;
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zdm::CompoundFileReport report;
  const HRESULT checked = zdm::CheckCompoundFile(data, size, &report);
  Require((checked == S_OK) == (report.fault == zdm::CompoundFault::kNone),
          "result and report agree");
  static const File original("-original");
  static const File copy("-copy");
  // The file is only worth writing when it is accepted, or now and then.
  if (checked != S_OK && size % 16 != 0) return 0;
  original.Write(data, size);

  Storage root;
  const HRESULT opened =
      zdm::OpenStorage(original.Name().c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, root.Out());
  Require((checked == S_OK) == (opened == S_OK), "what is accepted opens, and nothing else");
  if (FAILED(opened)) return 0;
  Found before;
  ReadStorage(root.Get(), before);
  Require(before.storages == report.storages && before.streams == report.streams,
          "every element is reached");

  Storage target;
  Require(zdm::CreateStorage(copy.Name().c_str(), kReadWrite | STGM_CREATE, target.Out()) == S_OK,
          "a file can be made");
  Require(root->CopyTo(0, nullptr, nullptr, target.Get()) == S_OK, "a storage copies");
  Require(target->Commit(STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE) == S_OK, "a copy saves");
  target.Reset();
  Require(zdm::OpenStorage(copy.Name().c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, target.Out()) ==
              S_OK,
          "a saved copy opens");
  Found after;
  ReadStorage(target.Get(), after);
  Require(before.bytes == after.bytes, "a saved copy is the same");
  return 0;
}
