// The elements of a storage one after the other. An enumerator stands behind a name, not on an
// element, so that elements may come and go meanwhile.
#pragma once

#include "platform/ole/portable/CountedStorage.h"
#include "platform/ole/portable/Storage.h"
#include "platform/ole/portable/StorageScope.h"
#include "platform/ole/portable/StorageTree.h"

#include <memory>
#include <string>

namespace zdm {

class StorageEnum final : public CountedStorage<IEnumSTATSTG> {
 public:
  /// Goes on behind `last`; an empty name is the start.
  StorageEnum(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
              std::shared_ptr<StorageScope> scope, std::u16string last);

  HRESULT STDMETHODCALLTYPE Next(ULONG count, STATSTG* entries, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumSTATSTG** out) override;

 private:
  bool Answers(REFIID iid) const override { return iid == IID_IEnumSTATSTG; }
  bool IsReverted() const { return node_->removed || scope_->IsClosed(); }
  const StorageNode* Peek() const;

  std::shared_ptr<StorageTree> tree_;
  std::shared_ptr<StorageNode> node_;
  std::shared_ptr<StorageScope> scope_;
  std::u16string last_;
};

}  // namespace zdm
