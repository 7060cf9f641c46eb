#include "platform/ole/portable/StorageTree.h"

#include <utility>
#include <vector>

namespace zdm {

namespace {

/// Marks everything below `top` as removed and takes it apart.
void TakeApart(std::shared_ptr<StorageNode> top) {
  std::vector<std::shared_ptr<StorageNode>> nodes;
  nodes.push_back(std::move(top));
  while (!nodes.empty()) {
    const std::shared_ptr<StorageNode> node = std::move(nodes.back());
    nodes.pop_back();
    node->removed = true;
    node->parent = nullptr;
    for (auto& [name, child] : node->children) nodes.push_back(std::move(child));
    node->children.clear();
  }
}

/// A new element without content, or null if there is one of that name.
std::shared_ptr<StorageNode> Attach(StorageNode& parent, std::u16string_view name) {
  auto node = std::make_shared<StorageNode>();
  node->name = name;
  node->parent = &parent;
  node->depth = parent.depth + 1;
  if (!parent.children.emplace(node->name, node).second) return nullptr;
  return node;
}

}  // namespace

std::shared_ptr<StorageNode> StorageNode::Find(std::u16string_view elementName) const {
  const auto found = children.find(elementName);
  return found == children.end() ? nullptr : found->second;
}

StorageTree::StorageTree() : root_(std::make_shared<StorageNode>()) {}

StorageTree::~StorageTree() {
  TakeApart(std::move(root_));
}

HRESULT StorageTree::Load(const std::shared_ptr<StorageSource>& source) {
  std::vector<CompoundEntry> entries;
  std::vector<CompoundLayout::Element> elements;
  source->TakeDirectory(&entries, &elements);
  std::vector<StorageNode*> nodes(entries.size(), nullptr);
  nodes[0] = root_.get();
  root_->clsid = entries[0].clsid;
  for (const auto& element : elements) {
    const CompoundEntry& entry = entries[element.entry];
    const auto node = Attach(*nodes[element.parent], entry.Name());
    if (node == nullptr) return STG_E_DOCFILECORRUPT;
    if (entry.type == kEntryStorage) {
      node->clsid = entry.clsid;
    } else {
      node->content = std::make_unique<StreamContent>(source, entry.start, entry.size);
    }
    nodes[element.entry] = node.get();
  }
  return S_OK;
}

HRESULT StorageTree::Add(StorageNode& parent, std::u16string_view name, bool storage,
                         std::shared_ptr<StorageNode>* out) {
  if (!IsElementName(name)) return STG_E_INVALIDNAME;
  if (parent.children.size() >= kMaxElements) return STG_E_MEDIUMFULL;
  if (storage && parent.depth >= kMaxStorageDepth) return STG_E_MEDIUMFULL;
  std::unique_ptr<StreamContent> content;
  if (!storage) content = std::make_unique<StreamContent>();
  *out = Attach(parent, name);
  if (*out == nullptr) return STG_E_FILEALREADYEXISTS;
  (*out)->content = std::move(content);
  changed_ = true;
  return S_OK;
}

void StorageTree::Remove(StorageNode& node) {
  auto& siblings = node.parent->children;
  const auto place = siblings.find(node.name);
  std::shared_ptr<StorageNode> held = std::move(place->second);
  siblings.erase(place);
  TakeApart(std::move(held));
  changed_ = true;
}

void StorageTree::RemoveChildren(StorageNode& storage) {
  while (!storage.children.empty()) Remove(*storage.children.begin()->second);
}

HRESULT StorageTree::Rename(StorageNode& node, std::u16string_view name) {
  if (!IsElementName(name)) return STG_E_INVALIDNAME;
  std::u16string newName(name);
  auto& siblings = node.parent->children;
  auto handle = siblings.extract(node.name);
  handle.key() = newName;
  siblings.insert(std::move(handle));
  node.name = std::move(newName);
  changed_ = true;
  return S_OK;
}

HRESULT StorageTree::CopyElement(const StorageNode& node, StorageNode& parent,
                                 std::u16string_view name) {
  std::shared_ptr<StorageNode> copy;
  const HRESULT result = Add(parent, name, node.IsStorage(), &copy);
  if (FAILED(result)) return result;
  if (node.IsStorage()) return CopyInto(node, *copy, true, true);
  *copy->content = *node.content;
  return S_OK;
}

HRESULT StorageTree::CopyInto(const StorageNode& from, StorageNode& to, bool storages,
                              bool streams) {
  struct Pair {
    const StorageNode* from;
    StorageNode* to;
  };
  std::vector<Pair> pairs = {{&from, &to}};
  changed_ = true;
  while (!pairs.empty()) {
    const Pair pair = pairs.back();
    pairs.pop_back();
    pair.to->clsid = pair.from->clsid;
    for (const auto& [name, child] : pair.from->children) {
      if (!(child->IsStorage() ? storages : streams)) continue;
      std::shared_ptr<StorageNode> copy = pair.to->Find(name);
      if (copy != nullptr && (!copy->IsStorage() || !child->IsStorage())) {
        Remove(*copy);
        copy = nullptr;
      }
      if (copy == nullptr) {
        if (child->IsStorage() && pair.to->depth >= kMaxStorageDepth) return STG_E_MEDIUMFULL;
        copy = Attach(*pair.to, name);
        if (!child->IsStorage()) copy->content = std::make_unique<StreamContent>(*child->content);
      }
      if (child->IsStorage()) pairs.push_back({child.get(), copy.get()});
    }
  }
  return S_OK;
}

}  // namespace zdm
