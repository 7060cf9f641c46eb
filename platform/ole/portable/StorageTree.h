// The elements of a compound file as a tree in memory: storages with their elements in the order of
// a compound file's directory, streams with their bytes.
// Nodes are shared with the open IStorage and IStream objects: a node that was removed from the
// tree lives on with them, marked. Nothing here recurses; depth is bounded by kMaxStorageDepth.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/ole/CompoundFile.h"
#include "platform/ole/portable/StreamContent.h"

namespace zdm {

class StorageScope;

struct StorageNode {
  struct NameLess {
    using is_transparent = void;
    bool operator()(std::u16string_view left, std::u16string_view right) const {
      return CompareElementNames(left, right) < 0;
    }
  };
  using Children = std::map<std::u16string, std::shared_ptr<StorageNode>, NameLess>;

  std::u16string name;
  CLSID clsid = CLSID_NULL;
  std::unique_ptr<StreamContent> content;  // null: a storage
  Children children;
  StorageNode* parent = nullptr;
  ULONG depth = 0;                   // 0 for a root
  bool removed = false;              // from its tree
  std::weak_ptr<StorageScope> user;  // of the IStorage or IStream that was opened last

  bool IsStorage() const { return content == nullptr; }
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

  /// Adds an element that is not there yet. STG_E_INVALIDNAME; STG_E_MEDIUMFULL when the storage
  /// has kMaxElements or lies too deep.
  HRESULT Add(StorageNode& parent, std::u16string_view name, bool storage,
              std::shared_ptr<StorageNode>* out);
  /// Removes the element and what is below it; their open objects are reverted.
  void Remove(StorageNode& node);
  /// Removes every element of a storage.
  void RemoveChildren(StorageNode& storage);
  /// Gives an element another name, which no other element of its storage has.
  HRESULT Rename(StorageNode& node, std::u16string_view name);
  /// Copies the elements of `from` and its class id into `to`; streams of the same name are
  /// replaced, storages merged. Bytes are shared until they are written. Neither may lie below the
  /// other. STG_E_MEDIUMFULL when storages would lie too deep.
  HRESULT CopyInto(const StorageNode& from, StorageNode& to, bool storages, bool streams);
  /// Copies one element into `parent` under `name`, which is not there yet.
  HRESULT CopyElement(const StorageNode& node, StorageNode& parent, std::u16string_view name);

  bool IsChanged() const { return changed_; }
  void SetChanged(bool changed) { changed_ = changed; }

 private:
  std::shared_ptr<StorageNode> root_;
  bool changed_ = false;
};

}  // namespace zdm
