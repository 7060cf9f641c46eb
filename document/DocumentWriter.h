// Writes a document's file. The same document gives the same bytes.
#pragma once

#include "document/DocumentFormat.h"
#include "platform/core/IZStream.h"

#include <filesystem>
#include <functional>
#include <vector>

class CZDocument;
struct IZProgressMeter;

namespace zdm {

class DocumentWriter {
 public:
  /// @param meter  may be null.
  DocumentWriter(CZDocument& document, IZProgressMeter* meter)
      : document_(document), meter_(meter) {}
  /// Throws DocumentError, and CAtlException for an object that cannot be saved; the file that is
  /// there stays then.
  void Write(const std::filesystem::path& path);

 private:
  void Fill(IStorage* root);
  ULONG WriteStream(IStorage* root, const OLECHAR* name,
                    const std::function<void(IZStream*)>& write);
  void WriteObjects(IStorage* root);
  void WriteOrder(IZStream* stream);

  CZDocument& document_;
  IZProgressMeter* meter_;
  VersionRecord version_ = {};
  std::vector<IndexEntry> index_;
};

}  // namespace zdm
