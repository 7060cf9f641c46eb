#include "platform/ole/portable/StorageEnum.h"

#include <new>
#include <utility>

#include "platform/ole/portable/ContentStream.h"

namespace zdm {

StorageEnum::StorageEnum(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
                         std::shared_ptr<StorageScope> scope, std::u16string last)
    : tree_(std::move(tree)),
      node_(std::move(node)),
      scope_(std::move(scope)),
      last_(std::move(last)) {}

/// The next element, or null at the end.
const StorageNode* StorageEnum::Advance() {
  const auto next = node_->children.upper_bound(last_);
  if (next == node_->children.end()) return nullptr;
  last_ = next->first;
  return next->second.get();
}

HRESULT StorageEnum::Next(ULONG count, STATSTG* entries, ULONG* fetched) try {
  if (fetched != nullptr) *fetched = 0;
  if (entries == nullptr || (fetched == nullptr && count != 1)) return STG_E_INVALIDPOINTER;
  if (IsReverted()) return STG_E_REVERTED;
  ULONG done = 0;
  for (; done < count; ++done) {
    const StorageNode* node = Advance();
    if (node == nullptr) break;
    STATSTG& entry = entries[done];
    const HRESULT result = StartStat(&entry, STATFLAG_DEFAULT, &node->name);
    if (FAILED(result)) return result;
    entry.type = node->IsStorage() ? STGTY_STORAGE : STGTY_STREAM;
    entry.clsid = node->clsid;
    if (!node->IsStorage()) entry.cbSize.QuadPart = node->content->Size();
    if (fetched != nullptr) *fetched = done + 1;
  }
  return done == count ? S_OK : S_FALSE;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT StorageEnum::Skip(ULONG count) try {
  if (IsReverted()) return STG_E_REVERTED;
  for (ULONG i = 0; i < count; ++i) {
    if (Advance() == nullptr) return S_FALSE;
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
