#include "platform/ole/portable/StorageStream.h"

#include <new>
#include <utility>

namespace zdm {

StorageStream::StorageStream(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
                             std::shared_ptr<StorageScope> scope, DWORD mode)
    : ContentStream(mode),
      tree_(std::move(tree)),
      node_(std::move(node)),
      scope_(std::move(scope)) {}

HRESULT StorageStream::Clone(IStream** out) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  StreamContent* content = nullptr;
  const HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  auto* clone = new (std::nothrow) StorageStream(tree_, node_, scope_, mode_);
  if (clone == nullptr) return E_OUTOFMEMORY;
  clone->position_ = position_;
  *out = clone;
  return S_OK;
}

HRESULT StorageStream::GetContent(StreamContent** out) {
  if (node_->removed || scope_->IsClosed()) return STG_E_REVERTED;
  *out = node_->content.get();
  return S_OK;
}

}  // namespace zdm
