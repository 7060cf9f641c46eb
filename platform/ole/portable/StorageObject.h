// IStorage over a node of a StorageTree. The root also knows the file: it writes it when it is
// committed, and, unless it is transacted, when it is released for the last time after a change.
//   direct       changes count at once; Revert does nothing
//   transacted   (root only) Revert goes back to the last Commit; what was not committed is dropped
// When a storage is released for the last time, everything opened through it is reverted: it
// answers STG_E_REVERTED from then on.
#pragma once

#include "platform/ole/portable/CountedStorage.h"
#include "platform/ole/portable/Storage.h"
#include "platform/ole/portable/StorageScope.h"
#include "platform/ole/portable/StorageTree.h"

#include <memory>
#include <string>

namespace zdm {

/// Where a root came from.
struct StoragePlace {
  std::u16string name;  // as the caller gave it
  std::string file;     // absolute and without links; empty: never saved
};

class StorageObject final : public CountedStorage<IStorage> {
 public:
  /// The root of `tree`, to be saved at `place`.
  static StorageObject* NewRoot(std::shared_ptr<StorageTree> tree, StoragePlace place, DWORD mode);

  HRESULT STDMETHODCALLTYPE CreateStream(LPCOLESTR name, DWORD mode, DWORD reserved1,
                                         DWORD reserved2, IStream** out) override;
  HRESULT STDMETHODCALLTYPE OpenStream(LPCOLESTR name, void* reserved1, DWORD mode, DWORD reserved2,
                                       IStream** out) override;
  HRESULT STDMETHODCALLTYPE CreateStorage(LPCOLESTR name, DWORD mode, DWORD reserved1,
                                          DWORD reserved2, IStorage** out) override;
  HRESULT STDMETHODCALLTYPE OpenStorage(LPCOLESTR name, IStorage* priority, DWORD mode, SNB exclude,
                                        DWORD reserved, IStorage** out) override;
  /// `target` must be a storage of this module, not this one nor below it (STG_E_ACCESSDENIED).
  HRESULT STDMETHODCALLTYPE CopyTo(DWORD excludedCount, const IID* excluded, SNB exclude,
                                   IStorage* target) override;
  HRESULT STDMETHODCALLTYPE MoveElementTo(LPCOLESTR name, IStorage* target, LPCOLESTR newName,
                                          DWORD flags) override;
  /// At the root: writes the file, and unless STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE is given, has
  /// it on the disk when it returns. Elsewhere nothing.
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
  HRESULT STDMETHODCALLTYPE Revert() override;
  HRESULT STDMETHODCALLTYPE EnumElements(DWORD reserved1, void* reserved2, DWORD reserved3,
                                         IEnumSTATSTG** out) override;
  HRESULT STDMETHODCALLTYPE DestroyElement(LPCOLESTR name) override;
  HRESULT STDMETHODCALLTYPE RenameElement(LPCOLESTR oldName, LPCOLESTR newName) override;
  /// Times are always zero, so that the same content gives the same file; they are not kept.
  HRESULT STDMETHODCALLTYPE SetElementTimes(LPCOLESTR name, const FILETIME* created,
                                            const FILETIME* accessed,
                                            const FILETIME* modified) override;
  HRESULT STDMETHODCALLTYPE SetClass(REFCLSID clsid) override;
  /// libgsf writes no state bits: STG_E_UNIMPLEMENTEDFUNCTION.
  HRESULT STDMETHODCALLTYPE SetStateBits(DWORD bits, DWORD mask) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override;

 private:
  StorageObject(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
                std::shared_ptr<StorageScope> parent, StoragePlace place, DWORD mode);
  ~StorageObject() override;

  bool Answers(REFIID iid) const override { return iid == IID_IStorage; }
  bool IsRoot() const { return node_ == tree_->Root(); }
  HRESULT CheckAlive() const;
  HRESULT CheckWritable() const;
  template <class Interface>
  HRESULT Create(LPCOLESTR name, DWORD mode, bool storage, Interface** out);
  HRESULT Open(LPCOLESTR name, DWORD mode, bool storage, std::shared_ptr<StorageNode>* out) const;
  void Wrap(std::shared_ptr<StorageNode> node, DWORD mode, IStream** out) const;
  void Wrap(std::shared_ptr<StorageNode> node, DWORD mode, IStorage** out) const;
  HRESULT Save(bool flush);

  std::shared_ptr<StorageTree> tree_;
  std::shared_ptr<StorageNode> node_;
  std::shared_ptr<StorageScope> scope_;     // this storage's own
  std::shared_ptr<StorageScope> elements_;  // what is opened through it; renewed by Revert
  StoragePlace place_;                      // root only
  DWORD mode_;
};

}  // namespace zdm
