// The elements of a compound file as a tree in memory: storages with their elements in the order of
// a compound file's directory, streams with their bytes.
// Nodes are shared with the open IStorage and IStream objects: a node that was removed from the
// tree lives on with them, marked. Nothing here recurses; depth is bounded by kMaxStorageDepth.
#pragma once

#include "platform/ole/CompoundFile.h"
#include "platform/ole/portable/StreamContent.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace zdm {

class StorageScope;

struct StorageNode {
  struct NameLess {
    using is_transparent = void;
    static std::u16string_view NameOf(std::u16string_view name) { return name; }
    static std::u16string_view NameOf(const std::shared_ptr<StorageNode>& node) {
      return node->name;
    }
    template <class Left, class Right>
    bool operator()(const Left& left, const Right& right) const {
      return CompareElementNames(NameOf(left), NameOf(right)) < 0;
    }
  };
  using Children = std::set<std::shared_ptr<StorageNode>, NameLess>;

  std::u16string name;
  CLSID clsid = CLSID_NULL;
  std::unique_ptr<StreamContent> content;  // of a stream; null while it is empty and unopened
  Children children;
  StorageNode* parent = nullptr;
  ULONG depth = 0;  // 0 for a root
  bool storage = true;
  bool removed = false;              // from its tree
  std::weak_ptr<StorageScope> user;  // of the IStorage or IStream that was opened last

  bool IsStorage() const { return storage; }
  ULONGLONG Size() const { return content == nullptr ? 0 : content->Size(); }
  /// The element of that name in any case, or null.
  std::shared_ptr<StorageNode> Find(std::u16string_view elementName) const;
};

class StorageTree {
 public:
  /// An element beyond this number is refused in a storage that is to be saved: libgsf chains the
  /// elements of a storage one behind the other and searches the chain for each of them.
  static constexpr std::size_t kMaxElements = 2 * kMaxSiblingDepth - 1;

  StorageTree();
  ~StorageTree();
  StorageTree(const StorageTree&) = delete;
  StorageTree& operator=(const StorageTree&) = delete;

  /// Fills an empty tree from an opened file. STG_E_DOCFILECORRUPT when two names in a storage are
  /// equal here.
  HRESULT Load(const std::shared_ptr<StorageSource>& source);

  const std::shared_ptr<StorageNode>& Root() const { return root_; }

  // The operations below throw std::bad_alloc. After that, or a failure, nothing was changed,
  // unless an operation says otherwise.

  /// An element that waits for its place in a tree, which then needs no memory.
  using NewElement = StorageNode::Children::node_type;
  /// An element for `parent`; `replace`: in place of one of that name. STG_E_INVALIDNAME;
  /// STG_E_FILEALREADYEXISTS; STG_E_MEDIUMFULL when the storage would have more than kMaxElements
  /// or lie too deep. Changes nothing.
  static HRESULT Prepare(const StorageNode& parent, std::u16string_view name, bool storage,
                         bool replace, NewElement* out);
  /// Puts a prepared element into its parent, in place of one of its name.
  void Insert(StorageNode& parent, NewElement element);
  /// Removes the element and what is below it; their open objects are reverted.
  void Remove(StorageNode& node);
  /// Gives an element another name, which no other element of its storage has.
  HRESULT Rename(StorageNode& node, std::u16string_view name);
  /// Copies the elements of `from` and its class id into `to`; streams of the same name are
  /// replaced, storages merged. Bytes are shared until they are written. Neither may lie below the
  /// other. STG_E_MEDIUMFULL when storages would lie too deep; a failure leaves what was copied.
  HRESULT CopyInto(const StorageNode& from, StorageNode& to, bool storages, bool streams);
  /// Copies one element into `parent` under `name`, which is not there yet.
  HRESULT CopyElement(const StorageNode& node, StorageNode& parent, std::u16string_view name);

  /// To be called before a stream or class id of the tree is changed; the operations above do it.
  /// Throws std::bad_alloc, and then there is no change.
  void Touch();
  /// Differs from its file, or has none yet.
  bool IsChanged() const { return changed_ || new_; }
  /// There is no file yet.
  void MarkNew() { new_ = true; }
  void MarkSaved();

  /// From now on Revert can undo changes: the first one after a save takes a copy.
  void KeepCommitted() { keepsCommitted_ = true; }
  /// Goes back to what was there at KeepCommitted or the last MarkSaved; cannot fail. The root
  /// stays, nodes below it are replaced.
  void Revert();

 private:
  std::shared_ptr<StorageNode> root_;
  std::unique_ptr<StorageTree> committed_;  // from the first change until it is saved
  bool keepsCommitted_ = false;
  bool changed_ = false;
  bool new_ = false;
};

}  // namespace zdm
