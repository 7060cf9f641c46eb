#include "platform/ole/portable/StorageObject.h"

#include "platform/ole/OleRef.h"
#include "platform/ole/portable/StorageEnum.h"
#include "platform/ole/portable/StorageError.h"
#include "platform/ole/portable/StorageMode.h"
#include "platform/ole/portable/StorageSave.h"
#include "platform/ole/portable/StorageStream.h"

#include <new>
#include <utility>

namespace zdm {

namespace {

/// `node` is `other` or lies above it.
bool IsAtOrAbove(const StorageNode& node, const StorageNode* other) {
  while (other != nullptr && other != &node) other = other->parent;
  return other == &node;
}

/// Runs an operation that may run out of memory.
template <class Operation>
HRESULT Guarded(Operation operation) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace

StorageObject::StorageObject(std::shared_ptr<StorageTree> tree, std::shared_ptr<StorageNode> node,
                             std::shared_ptr<StorageScope> parent, StoragePlace place, DWORD mode)
    : tree_(std::move(tree)),
      node_(std::move(node)),
      scope_(std::make_shared<StorageScope>(std::move(parent))),
      elements_(std::make_shared<StorageScope>(scope_)),
      place_(std::move(place)),
      mode_(mode) {
  node_->user = scope_;
}

StorageObject::~StorageObject() {
  // Nobody is left to hear of a failure; whoever wants to know commits before.
  if (IsRoot() && !IsTransacted(mode_) && tree_->IsChanged()) Guarded([&] { return Save(false); });
  scope_->Close();
}

StorageObject* StorageObject::NewRoot(std::shared_ptr<StorageTree> tree, StoragePlace place,
                                      DWORD mode) {
  if (IsTransacted(mode)) tree->KeepCommitted();
  const std::shared_ptr<StorageNode> root = tree->Root();
  return new StorageObject(std::move(tree), root, nullptr, std::move(place), mode);
}

HRESULT StorageObject::CheckAlive() const {
  return node_->removed || scope_->IsClosed() ? STG_E_REVERTED : S_OK;
}

HRESULT StorageObject::CheckWritable() const {
  const HRESULT result = CheckAlive();
  if (FAILED(result)) return result;
  return IsWritable(mode_) ? S_OK : STG_E_ACCESSDENIED;
}

/// The object of the new element is made before the element takes its place, so that a failure
/// leaves what was there.
template <class Interface>
HRESULT StorageObject::Create(LPCOLESTR name, DWORD mode, bool storage, Interface** out) {
  if (name == nullptr) return STG_E_INVALIDNAME;
  HRESULT result = CheckElementMode(mode);
  if (FAILED(result)) return result;
  result = CheckAlive();
  if (FAILED(result)) return result;
  if (!IsElementName(name)) return STG_E_INVALIDNAME;
  const bool replace = (mode & STGM_CREATE) != 0;
  if (!replace && node_->Find(name) != nullptr) return STG_E_FILEALREADYEXISTS;
  if (!IsWritable(mode_)) return STG_E_ACCESSDENIED;
  StorageTree::NewElement element;
  result = StorageTree::Prepare(*node_, name, storage, replace, &element);
  if (FAILED(result)) return result;
  OleRef<Interface> object;
  Wrap(element.value(), mode, object.Out());
  tree_->Insert(*node_, std::move(element));
  *out = object.Detach();
  return S_OK;
}

HRESULT StorageObject::Open(LPCOLESTR name, DWORD mode, bool storage,
                            std::shared_ptr<StorageNode>* out) const {
  if (name == nullptr) return STG_E_INVALIDNAME;
  HRESULT result = CheckElementMode(mode);
  if (FAILED(result)) return result;
  result = CheckAlive();
  if (FAILED(result)) return result;
  const std::shared_ptr<StorageNode> node = node_->Find(name);
  if (node == nullptr || node->IsStorage() != storage) return STG_E_FILENOTFOUND;
  if (IsWritable(mode) && !IsWritable(mode_)) return STG_E_ACCESSDENIED;
  const std::shared_ptr<StorageScope> user = node->user.lock();
  if (user != nullptr && !user->IsClosed()) return STG_E_ACCESSDENIED;
  *out = node;
  return S_OK;
}

void StorageObject::Wrap(std::shared_ptr<StorageNode> node, DWORD mode, IStream** out) const {
  if (node->content == nullptr) node->content = std::make_unique<StreamContent>();
  auto scope = std::make_shared<StorageScope>(elements_);
  node->user = scope;
  *out = new StorageStream(tree_, std::move(node), std::move(scope), mode);
}

void StorageObject::Wrap(std::shared_ptr<StorageNode> node, DWORD mode, IStorage** out) const {
  *out = new StorageObject(tree_, std::move(node), elements_, {}, mode);
}

HRESULT StorageObject::CreateStream(LPCOLESTR name, DWORD mode, DWORD /*reserved1*/,
                                    DWORD /*reserved2*/, IStream** out) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  return Guarded([&] {
    if (IsTransacted(mode)) return STG_E_INVALIDFUNCTION;
    return Create(name, mode, false, out);
  });
}

HRESULT StorageObject::OpenStream(LPCOLESTR name, void* /*reserved1*/, DWORD mode,
                                  DWORD /*reserved2*/, IStream** out) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  return Guarded([&] {
    if (IsTransacted(mode)) return STG_E_INVALIDFUNCTION;
    std::shared_ptr<StorageNode> node;
    const HRESULT result = Open(name, mode, false, &node);
    if (SUCCEEDED(result)) Wrap(std::move(node), mode, out);
    return result;
  });
}

HRESULT StorageObject::CreateStorage(LPCOLESTR name, DWORD mode, DWORD /*reserved1*/,
                                     DWORD /*reserved2*/, IStorage** out) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  return Guarded([&] {
    if (IsTransacted(mode)) return STG_E_UNIMPLEMENTEDFUNCTION;
    return Create(name, mode, true, out);
  });
}

HRESULT StorageObject::OpenStorage(LPCOLESTR name, IStorage* priority, DWORD mode, SNB exclude,
                                   DWORD /*reserved*/, IStorage** out) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  return Guarded([&] {
    if (priority != nullptr || exclude != nullptr) return STG_E_INVALIDPARAMETER;
    if (IsTransacted(mode)) return STG_E_UNIMPLEMENTEDFUNCTION;
    std::shared_ptr<StorageNode> node;
    const HRESULT result = Open(name, mode, true, &node);
    if (SUCCEEDED(result)) Wrap(std::move(node), mode, out);
    return result;
  });
}

HRESULT StorageObject::CopyTo(DWORD excludedCount, const IID* excluded, SNB exclude,
                              IStorage* target) {
  auto* to = dynamic_cast<StorageObject*>(target);
  if (to == nullptr) return STG_E_INVALIDPOINTER;
  if (excluded == nullptr && excludedCount != 0) return STG_E_INVALIDPOINTER;
  if (exclude != nullptr) return STG_E_UNIMPLEMENTEDFUNCTION;
  return Guarded([&] {
    HRESULT result = CheckAlive();
    if (SUCCEEDED(result)) result = to->CheckWritable();
    if (FAILED(result)) return result;
    if (IsAtOrAbove(*node_, to->node_.get())) return STG_E_ACCESSDENIED;
    bool storages = true;
    bool streams = true;
    for (DWORD i = 0; i < excludedCount; ++i) {
      if (excluded[i] == IID_IStorage) storages = false;
      if (excluded[i] == IID_IStream) streams = false;
    }
    // By way of a copy: the target may lie above this storage, and replace it.
    StorageTree copy;
    result = copy.CopyInto(*node_, *copy.Root(), storages, streams);
    if (FAILED(result)) return result;
    return to->tree_->CopyInto(*copy.Root(), *to->node_, true, true);
  });
}

HRESULT StorageObject::MoveElementTo(LPCOLESTR name, IStorage* target, LPCOLESTR newName,
                                     DWORD flags) {
  auto* to = dynamic_cast<StorageObject*>(target);
  if (to == nullptr) return STG_E_INVALIDPOINTER;
  if (name == nullptr || newName == nullptr) return STG_E_INVALIDNAME;
  const bool move = flags == STGMOVE_MOVE;
  if (!move && flags != STGMOVE_COPY) return STG_E_INVALIDFLAG;
  return Guarded([&] {
    HRESULT result = move ? CheckWritable() : CheckAlive();
    if (SUCCEEDED(result)) result = to->CheckWritable();
    if (FAILED(result)) return result;
    const std::shared_ptr<StorageNode> node = node_->Find(name);
    if (node == nullptr) return STG_E_FILENOTFOUND;
    if (IsAtOrAbove(*node, to->node_.get())) return STG_E_ACCESSDENIED;
    if (to->node_->Find(newName) != nullptr) return STG_E_FILEALREADYEXISTS;
    if (move) tree_->Touch();  // so that removing cannot fail any more
    result = to->tree_->CopyElement(*node, *to->node_, newName);
    if (SUCCEEDED(result) && move) tree_->Remove(*node);
    return result;
  });
}

HRESULT StorageObject::Save(bool flush) {
  if (!place_.file.empty()) {
    const HRESULT result = SaveTree(*tree_, place_.file, flush);
    if (FAILED(result)) return result;
  }
  tree_->MarkSaved();
  return S_OK;
}

HRESULT StorageObject::Commit(DWORD flags) {
  return Guarded([&] {
    const HRESULT result = CheckAlive();
    if (FAILED(result) || !IsRoot() || !IsWritable(mode_) || !tree_->IsChanged()) return result;
    return Save((flags & STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE) == 0);
  });
}

HRESULT StorageObject::Revert() {
  return Guarded([&] {
    const HRESULT result = CheckAlive();
    if (FAILED(result) || !IsRoot() || !IsTransacted(mode_)) return result;
    auto elements = std::make_shared<StorageScope>(scope_);
    elements_->Close();
    elements_ = std::move(elements);
    tree_->Revert();
    return S_OK;
  });
}

HRESULT StorageObject::EnumElements(DWORD /*reserved1*/, void* /*reserved2*/, DWORD /*reserved3*/,
                                    IEnumSTATSTG** out) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  return Guarded([&] {
    const HRESULT result = CheckAlive();
    if (SUCCEEDED(result)) *out = new StorageEnum(tree_, node_, scope_, {});
    return result;
  });
}

HRESULT StorageObject::DestroyElement(LPCOLESTR name) {
  if (name == nullptr) return STG_E_INVALIDPOINTER;
  return Guarded([&] {
    const HRESULT result = CheckWritable();
    if (FAILED(result)) return result;
    const std::shared_ptr<StorageNode> node = node_->Find(name);
    if (node == nullptr) return STG_E_FILENOTFOUND;
    tree_->Remove(*node);
    return S_OK;
  });
}

HRESULT StorageObject::RenameElement(LPCOLESTR oldName, LPCOLESTR newName) {
  if (oldName == nullptr || newName == nullptr) return STG_E_INVALIDNAME;
  return Guarded([&] {
    const HRESULT result = CheckWritable();
    if (FAILED(result)) return result;
    const std::shared_ptr<StorageNode> other = node_->Find(newName);
    if (other != nullptr) return STG_E_FILEALREADYEXISTS;
    const std::shared_ptr<StorageNode> node = node_->Find(oldName);
    if (node == nullptr) return STG_E_FILENOTFOUND;
    return tree_->Rename(*node, newName);
  });
}

HRESULT StorageObject::SetElementTimes(LPCOLESTR name, const FILETIME* /*created*/,
                                       const FILETIME* /*accessed*/, const FILETIME* /*modified*/) {
  const HRESULT result = CheckWritable();
  if (FAILED(result)) return result;
  return name == nullptr || node_->Find(name) != nullptr ? S_OK : STG_E_FILENOTFOUND;
}

HRESULT StorageObject::SetClass(REFCLSID clsid) {
  return Guarded([&] {
    const HRESULT result = CheckWritable();
    if (FAILED(result)) return result;
    tree_->Touch();
    node_->clsid = clsid;
    return S_OK;
  });
}

HRESULT StorageObject::SetStateBits(DWORD /*bits*/, DWORD /*mask*/) {
  return STG_E_UNIMPLEMENTEDFUNCTION;
}

HRESULT StorageObject::Stat(STATSTG* stat, DWORD flags) {
  HRESULT result = CheckAlive();
  if (FAILED(result)) return result;
  result = StartStat(stat, flags, IsRoot() ? &place_.name : &node_->name);
  if (FAILED(result)) return result;
  stat->type = STGTY_STORAGE;
  stat->grfMode = mode_;
  stat->clsid = node_->clsid;
  return S_OK;
}

}  // namespace zdm
