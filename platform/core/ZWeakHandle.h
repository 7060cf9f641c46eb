// A pointer that does not keep its object alive and answers null once the object is gone.
#pragma once

#include "platform/core/CZObject.h"

class ZDM_API ZWeakHandle {
 public:
  ZWeakHandle() = default;
  explicit ZWeakHandle(CZObject* object);
  ZWeakHandle(const ZWeakHandle& other);
  ZWeakHandle(ZWeakHandle&& other) noexcept;
  ZWeakHandle& operator=(ZWeakHandle other) noexcept;
  ~ZWeakHandle();

  /// The object (borrowed); null when it is gone, is being destroyed, or was never set.
  CZObject* Get() const { return block_ != nullptr ? block_->object : nullptr; }

 private:
  friend class CZObject;
  struct Block {
    CZObject* object;
    ULONG holders;  // handles, and the object itself
  };

  static void Drop(Block* block);

  Block* block_ = nullptr;
};
