#include "tests/support/TempFile.h"

#include "platform/system/Text.h"

#include <fstream>
#include <string>

namespace zdm::test {

namespace {

class Folder {
 public:
  Folder() {
    const auto base = std::filesystem::temp_directory_path();
    for (unsigned i = 0; path_.empty(); ++i) {
      const auto candidate = base / ("zdm-tests-" + std::to_string(i));
      if (std::filesystem::create_directory(candidate)) path_ = candidate;
    }
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace

std::filesystem::path TempFile(const char* name) {
  static const Folder folder;
  auto path = folder.Path() / std::filesystem::path(FromUtf8(name));
  std::filesystem::remove(path);
  return path;
}

std::vector<BYTE> FileBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  std::vector<BYTE> bytes(file ? static_cast<std::size_t>(file.tellg()) : 0);
  file.seekg(0);
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

void WriteFileBytes(const std::filesystem::path& path, const std::vector<BYTE>& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

}  // namespace zdm::test
