// W(n) made of the library's own objects, and the operations on it.
#pragma once

#include "bench/workload/Plan.h"
#include "document/Document.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace workload {

class LibraryDocument {
 public:
  void Build(const std::vector<ObjectPlan>& plans);
  void Save(const std::filesystem::path& file) { document_->Save(file); }
  void Load(const std::filesystem::path& file) { document_ = zdm::Document::Open(file); }
  void Close();
  /// Fetches the handles of n objects, as a client of an opened document would.
  void FetchHandles(std::uint32_t n);

  std::uint64_t Lookup(const std::vector<std::uint32_t>& ids) const;
  double Params(const std::vector<ParamPick>& picks) const;
  std::uint64_t Walk() const;
  /// Visits every object until it shows a reference to the target.
  std::uint64_t ReverseScan(std::uint32_t target) const;
  /// The document's index is built by the first question.
  void MakeIndex() const { static_cast<void>(document_->GetReferrers()); }
  std::uint64_t Reverse(const std::vector<std::uint32_t>& targets) const;
  std::uint64_t Dependents(std::uint32_t changed) const;
  std::uint64_t Closure(std::uint32_t start) const;
  void Copy();

 private:
  std::optional<zdm::Document> document_;
  std::vector<IZDMObject*> objects_;
};

}  // namespace workload
