#include "platform/ole/portable/StorageTree.h"

#include <utility>
#include <vector>

namespace zdm {

namespace {

/// Marks `top` and everything below it as removed and takes it apart, from the leaves up. Allocates
/// nothing: this is how memory comes back.
void TakeApart(const std::shared_ptr<StorageNode>& top) {
  top->parent = nullptr;
  for (StorageNode* node = top.get(); node != nullptr;) {
    if (!node->children.empty()) {
      node = node->children.begin()->get();
      continue;
    }
    node->removed = true;
    StorageNode* parent = std::exchange(node->parent, nullptr);
    if (parent != nullptr) parent->children.erase(parent->children.begin());
    node = parent;
  }
}

StorageTree::NewElement MakeNode(std::u16string_view name, bool storage) {
  auto node = std::make_shared<StorageNode>();
  node->name = name;
  node->storage = storage;
  StorageNode::Children one;
  one.insert(std::move(node));
  return one.extract(one.begin());
}

/// The attached element; null when there is one of that name.
std::shared_ptr<StorageNode> Attach(StorageNode& parent, StorageTree::NewElement element) {
  StorageNode& node = *element.value();
  node.parent = &parent;
  node.depth = parent.depth + 1;
  const auto result = parent.children.insert(std::move(element));
  return result.inserted ? *result.position : nullptr;
}

std::unique_ptr<StreamContent> CopyContent(const StorageNode& node) {
  return node.content == nullptr ? nullptr : std::make_unique<StreamContent>(*node.content);
}

void SetParents(const std::shared_ptr<StorageNode>& parent) {
  for (const auto& child : parent->children) child->parent = parent.get();
}

}  // namespace

std::shared_ptr<StorageNode> StorageNode::Find(std::u16string_view elementName) const {
  const auto found = children.find(elementName);
  return found == children.end() ? nullptr : *found;
}

StorageTree::StorageTree() : root_(std::make_shared<StorageNode>()) {}

StorageTree::~StorageTree() { TakeApart(root_); }

HRESULT StorageTree::Load(const std::shared_ptr<StorageSource>& source) {
  std::vector<CompoundEntry> entries;
  std::vector<CompoundLayout::Element> elements;
  source->TakeDirectory(&entries, &elements);
  std::vector<StorageNode*> nodes(entries.size(), nullptr);
  nodes[0] = root_.get();
  root_->clsid = entries[0].clsid;
  for (const auto& element : elements) {
    const CompoundEntry& entry = entries[element.entry];
    const bool storage = entry.type == kEntryStorage;
    const auto node = Attach(*nodes[element.parent], MakeNode(entry.Name(), storage));
    if (node == nullptr) return STG_E_DOCFILECORRUPT;
    if (storage) {
      node->clsid = entry.clsid;
    } else if (entry.size != 0) {
      node->content = std::make_unique<StreamContent>(source, entry.start, entry.size);
    }
    nodes[element.entry] = node.get();
  }
  return S_OK;
}

void StorageTree::Touch() {
  if (changed_) return;
  if (keepsCommitted_) {
    auto committed = std::make_unique<StorageTree>();
    const HRESULT result = committed->CopyInto(*root_, *committed->root_, true, true);
    if (FAILED(result)) return;  // a tree is never deeper than its copy may be
    committed_ = std::move(committed);
  }
  changed_ = true;
}

void StorageTree::MarkSaved() {
  changed_ = false;
  new_ = false;
  committed_.reset();
}

void StorageTree::Revert() {
  changed_ = false;
  const std::unique_ptr<StorageTree> committed = std::move(committed_);
  if (committed == nullptr) return;
  root_->clsid = committed->root_->clsid;
  root_->children.swap(committed->root_->children);
  SetParents(root_);
  SetParents(committed->root_);  // and its end marks them as removed
}

HRESULT StorageTree::Prepare(const StorageNode& parent, std::u16string_view name, bool storage,
                             bool replace, NewElement* out) {
  if (!IsElementName(name)) return STG_E_INVALIDNAME;
  const bool replaces = parent.Find(name) != nullptr;
  if (replaces && !replace) return STG_E_FILEALREADYEXISTS;
  if (!replaces && parent.children.size() >= kMaxElements) return STG_E_MEDIUMFULL;
  if (storage && parent.depth >= kMaxStorageDepth) return STG_E_MEDIUMFULL;
  *out = MakeNode(name, storage);
  return S_OK;
}

void StorageTree::Insert(StorageNode& parent, NewElement element) {
  Touch();
  if (const auto old = parent.Find(element.value()->name)) Remove(*old);
  Attach(parent, std::move(element));
}

void StorageTree::Remove(StorageNode& node) {
  Touch();
  auto& siblings = node.parent->children;
  const auto held = siblings.extract(siblings.find(node.name));
  TakeApart(held.value());
}

HRESULT StorageTree::Rename(StorageNode& node, std::u16string_view name) {
  if (!IsElementName(name)) return STG_E_INVALIDNAME;
  std::u16string newName(name);
  Touch();
  auto& siblings = node.parent->children;
  auto slot = siblings.extract(siblings.find(node.name));
  node.name.swap(newName);
  siblings.insert(std::move(slot));
  return S_OK;
}

HRESULT StorageTree::CopyElement(const StorageNode& node, StorageNode& parent,
                                 std::u16string_view name) {
  NewElement element;
  HRESULT result = Prepare(parent, name, node.IsStorage(), false, &element);
  if (FAILED(result)) return result;
  const std::shared_ptr<StorageNode> copy = element.value();
  if (!node.IsStorage()) {
    copy->content = CopyContent(node);
    Insert(parent, std::move(element));
    return S_OK;
  }
  // In a tree of its own at first, so that a half copy is nowhere.
  StorageTree tree;
  tree.root_->depth = parent.depth + 1;
  result = tree.CopyInto(node, *tree.root_, true, true);
  if (FAILED(result)) return result;
  Insert(parent, std::move(element));
  copy->clsid = tree.root_->clsid;
  copy->children.swap(tree.root_->children);
  SetParents(copy);
  return S_OK;
}

HRESULT StorageTree::CopyInto(const StorageNode& from, StorageNode& to, bool storages,
                              bool streams) {
  struct Pair {
    const StorageNode* from;
    StorageNode* to;
  };
  std::vector<Pair> pairs = {{&from, &to}};
  Touch();
  while (!pairs.empty()) {
    const Pair pair = pairs.back();
    pairs.pop_back();
    pair.to->clsid = pair.from->clsid;
    for (const auto& child : pair.from->children) {
      if (!(child->IsStorage() ? storages : streams)) continue;
      std::shared_ptr<StorageNode> copy = pair.to->Find(child->name);
      if (copy == nullptr || !copy->IsStorage() || !child->IsStorage()) {
        if (child->IsStorage() && pair.to->depth >= kMaxStorageDepth) return STG_E_MEDIUMFULL;
        auto slot = MakeNode(child->name, child->IsStorage());
        slot.value()->content = CopyContent(*child);
        if (copy != nullptr) Remove(*copy);
        copy = Attach(*pair.to, std::move(slot));
      }
      if (child->IsStorage()) pairs.push_back({child.get(), copy.get()});
    }
  }
  return S_OK;
}

}  // namespace zdm
