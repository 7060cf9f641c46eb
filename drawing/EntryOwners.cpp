#include "drawing/EntryOwners.h"

#include "drawing/DrawingPart.h"
#include "drawing/GroupCodes.h"

#include <unordered_map>

namespace zdm {

namespace {

constexpr std::size_t kNone = ~std::size_t{0};
constexpr std::size_t kDeepest = 64;
constexpr LONG kKeyCode = 3;

struct Owner {
  std::size_t index = kNone;
  std::string_view key;
};

/// Depth of each below its owners; an owner that leads back, or too deep, is given up.
void BreakRings(std::vector<Owner>* owners) {
  std::vector<std::size_t> depths(owners->size(), 0);  // 0: not known yet
  std::vector<bool> isOnWay(owners->size(), false);
  std::vector<std::size_t> way;
  for (std::size_t start = 0; start < owners->size(); ++start) {
    way.clear();
    std::size_t at = start;
    while (at != kNone && depths[at] == 0 && !isOnWay[at]) {
      isOnWay[at] = true;
      way.push_back(at);
      at = (*owners)[at].index;
    }
    if (at != kNone && isOnWay[at]) {
      (*owners)[way.back()] = {};
      at = kNone;
    }
    std::size_t depth = at == kNone ? 0 : depths[at];
    for (; !way.empty(); way.pop_back()) {
      if (depth == kDeepest) {
        (*owners)[way.back()] = {};
        depth = 0;
      }
      depths[way.back()] = ++depth;
      isOnWay[way.back()] = false;
    }
  }
}

}  // namespace

std::vector<Entry> OwnersOfEntries(const std::vector<IZDMObject*>& objects,
                                   const std::function<IZDMObject*(std::string_view)>& find) {
  std::unordered_map<IZDMObject*, std::size_t> places;
  for (std::size_t i = 0; i < objects.size(); ++i) places.emplace(objects[i], i);
  std::vector<Owner> owners(objects.size());
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const DrawingPart* part = PartOf(objects[i]);
    if (!IsDictionary(part->Type())) continue;
    std::string_view key;
    bool hasKey = false;
    for (const Group group : part->Groups()) {
      const bool isEntry = group.code == 350 || group.code == 360;
      const auto found = isEntry && hasKey ? places.find(find(group.text)) : places.end();
      if (found != places.end() && owners[found->second].index == kNone) {
        owners[found->second] = {i, key};
      }
      if (group.code == kKeyCode) key = group.text;
      hasKey = group.code == kKeyCode;
    }
  }
  BreakRings(&owners);

  std::vector<std::vector<std::size_t>> entries(objects.size());
  std::vector<std::size_t> waiting;
  for (std::size_t i = objects.size(); i-- != 0;) {
    (owners[i].index == kNone ? waiting : entries[owners[i].index]).push_back(i);
  }
  std::vector<Entry> ordered;
  while (!waiting.empty()) {
    const std::size_t at = waiting.back();
    waiting.pop_back();
    const Owner& owner = owners[at];
    ordered.push_back({at, owner.index == kNone ? nullptr : objects[owner.index], owner.key});
    waiting.insert(waiting.end(), entries[at].begin(), entries[at].end());
  }
  return ordered;
}

}  // namespace zdm
