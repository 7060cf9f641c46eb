#include "platform/ole/portable/StorageEnum.h"

#include "platform/ole/portable/ContentStream.h"

#include <new>
#include <utility>

namespace zdm {

StorageEnum::StorageEnum(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
                         std::shared_ptr<StorageScope> scope, std::u16string last)
    : tree_(std::move(tree)),
      node_(std::move(node)),
      scope_(std::move(scope)),
      last_(std::move(last)) {}

/// The next element, or null at the end.
const StorageNode* StorageEnum::Peek() const {
  const auto next = node_->children.upper_bound(std::u16string_view(last_));
  return next == node_->children.end() ? nullptr : next->get();
}

HRESULT StorageEnum::Next(ULONG count, STATSTG* entries, ULONG* fetched) try {
  if (fetched != nullptr) *fetched = 0;
  if (entries == nullptr || (fetched == nullptr && count != 1)) return STG_E_INVALIDPOINTER;
  if (IsReverted()) return STG_E_REVERTED;
  ULONG done = 0;
  for (; done < count; ++done) {
    const StorageNode* node = Peek();
    if (node == nullptr) break;
    std::u16string name = node->name;
    STATSTG& entry = entries[done];
    const HRESULT result = StartStat(&entry, STATFLAG_DEFAULT, &name);
    if (FAILED(result)) return result;
    last_ = std::move(name);
    entry.type = node->IsStorage() ? STGTY_STORAGE : STGTY_STREAM;
    entry.clsid = node->clsid;
    entry.cbSize.QuadPart = node->Size();
    if (fetched != nullptr) *fetched = done + 1;
  }
  return done == count ? S_OK : S_FALSE;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT StorageEnum::Skip(ULONG count) try {
  if (IsReverted()) return STG_E_REVERTED;
  for (ULONG i = 0; i < count; ++i) {
    const StorageNode* node = Peek();
    if (node == nullptr) return S_FALSE;
    last_ = node->name;
  }
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT StorageEnum::Reset() {
  if (IsReverted()) return STG_E_REVERTED;
  last_.clear();
  return S_OK;
}

HRESULT StorageEnum::Clone(IEnumSTATSTG** out) try {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  if (IsReverted()) return STG_E_REVERTED;
  *out = new StorageEnum(tree_, node_, scope_, last_);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace zdm
