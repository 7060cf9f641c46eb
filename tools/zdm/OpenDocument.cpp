#include "tools/zdm/OpenDocument.h"

#include "tools/zdm/ExitCodes.h"
#include "tools/zdm/Progress.h"

namespace zdm::tool {

std::filesystem::path PathOf(const std::string& name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

Document Open(const std::string& file) {
  const auto bar = Attached(new ProgressBar("reading"));
  return Document::Open(PathOf(file), bar);
}

void Save(Document& document) {
  const auto bar = Attached(new ProgressBar("saving"));
  document.Save(bar);
}

IZDMObject* Require(const Document& document, LONG id) {
  IZDMObject* object = document.Find(id);
  if (object == nullptr) throw Failure(kNoObject, "no object " + std::to_string(id));
  return object;
}

CZDMDrawing& RequireDrawing(const Document& document) {
  CZDMDrawing* drawing = FindDrawing(*document.Get());
  if (drawing == nullptr) throw Failure(kNoObject, "the document has no drawing");
  return *drawing;
}

void RequireNoFile(const std::string& file) {
  std::error_code failed;
  if (std::filesystem::exists(std::filesystem::symlink_status(PathOf(file), failed))) {
    throw Failure(kRefused, file + ": is there already");
  }
}

}  // namespace zdm::tool
