// How long an opened element may be used: until it, or anything it was opened through, is closed.
#pragma once

#include <memory>
#include <utility>

namespace zdm {

class StorageScope {
 public:
  explicit StorageScope(std::shared_ptr<StorageScope> parent) : parent_(std::move(parent)) {}
  /// Lets go of parents that nobody else holds one by one: they may be many.
  ~StorageScope() {
    while (parent_ != nullptr && parent_.use_count() == 1) {
      const std::shared_ptr<StorageScope> next = std::move(parent_->parent_);
      parent_ = next;
    }
  }
  StorageScope(const StorageScope&) = delete;
  StorageScope& operator=(const StorageScope&) = delete;

  void Close() { closed_ = true; }
  bool IsClosed() const {
    for (const StorageScope* scope = this; scope != nullptr; scope = scope->parent_.get()) {
      if (scope->closed_) return true;
    }
    return false;
  }

 private:
  std::shared_ptr<StorageScope> parent_;
  bool closed_ = false;
};

}  // namespace zdm
