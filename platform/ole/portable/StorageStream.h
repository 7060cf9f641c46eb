// An IStream over a stream element of a storage. A stream and its clones share one scope.
#pragma once

#include "platform/ole/portable/ContentStream.h"
#include "platform/ole/portable/StorageScope.h"
#include "platform/ole/portable/StorageTree.h"

#include <memory>

namespace zdm {

class StorageStream final : public ContentStream {
 public:
  StorageStream(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
                std::shared_ptr<StorageScope> scope, DWORD mode);

  HRESULT STDMETHODCALLTYPE Clone(IStream** out) override;

 private:
  HRESULT GetContent(StreamContent** out) override;
  void NoteChange() override { tree_->Touch(); }
  const std::u16string* Name() const override { return &node_->name; }

  std::shared_ptr<StorageTree> tree_;
  std::shared_ptr<StorageNode> node_;
  std::shared_ptr<StorageScope> scope_;
};

}  // namespace zdm
