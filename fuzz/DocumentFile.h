// A document file of this process, gone at its end.
#pragma once

#include "document/CZDocument.h"
#include "fuzz/Fuzz.h"
#include "tests/support/TempFile.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zdm::fuzz {

using test::Require;

class DocumentFile {
 public:
  DocumentFile() {
    static unsigned counter = 0;
    path_ = test::TempFile(("document-" + std::to_string(counter++) + ".zdm").c_str());
  }
  ~DocumentFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  DocumentFile(const DocumentFile&) = delete;
  DocumentFile& operator=(const DocumentFile&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  void Write(const std::uint8_t* data, std::size_t size) const {
    std::ofstream file(path_, std::ios::binary);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  std::vector<char> Read() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path path_;
};

/// What is saved opens, and is saved again as the same bytes.
inline void RequireRoundTrip(CZDocument& document) {
  const DocumentFile first;
  document.SaveAs(first.Path());
  const auto opened = CZDocument::Open(first.Path());
  const DocumentFile second;
  opened->SaveAs(second.Path());
  Require(first.Read() == second.Read(), "an opened document is saved as the same bytes");
}

}  // namespace zdm::fuzz
