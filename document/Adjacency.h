// For each of many numbered nodes a short list of others, each once, in one array: a list that
// outgrows its place moves to the end.
#pragma once

#include "platform/ole/ole.h"

#include <algorithm>
#include <span>
#include <vector>

namespace zdm {

class Adjacency {
 public:
  using Node = ULONG;

  /// Empty lists for so many nodes; further ones when Resize is told.
  void Reset(std::size_t nodes) {
    runs_.assign(nodes, {});
    pool_.clear();
  }
  void Resize(std::size_t nodes) { runs_.resize(nodes); }

  std::span<const Node> operator[](Node node) const {
    return {pool_.data() + runs_[node].first, runs_[node].count};
  }

  /// The list of a node that had none since Reset.
  void Append(Node node, std::span<const Node> others) {
    const auto count = static_cast<ULONG>(others.size());
    runs_[node] = {pool_.size(), count, count};
    pool_.insert(pool_.end(), others.begin(), others.end());
  }
  /// All lists turned round: `other` has `node` where `node` has `other` here.
  void Reverse(Adjacency& out) const {
    out.Reset(runs_.size());
    ForEach([&](Node, Node other) { ++out.runs_[other].room; });
    std::size_t first = 0;
    for (Run& run : out.runs_) {
      run.first = first;
      first += run.room;
    }
    out.pool_.resize(first);
    ForEach([&](Node node, Node other) {
      Run& run = out.runs_[other];
      out.pool_[run.first + run.count++] = node;
    });
  }

  void Add(Node node, Node other) {
    Run& run = runs_[node];
    if (run.count == run.room) {
      const std::size_t first = pool_.size();
      const ULONG room = 2 * run.room + 2;
      pool_.resize(first + room);
      std::copy_n(pool_.begin() + static_cast<std::ptrdiff_t>(run.first), run.count,
                  pool_.begin() + static_cast<std::ptrdiff_t>(first));
      run.first = first;
      run.room = room;
    }
    pool_[run.first + run.count++] = other;
  }
  void Remove(Node node, Node other) {
    Run& run = runs_[node];
    const auto begin = pool_.begin() + static_cast<std::ptrdiff_t>(run.first);
    const auto end = begin + run.count;
    const auto found = std::find(begin, end, other);
    if (found == end) return;
    *found = *(end - 1);
    --run.count;
  }

 private:
  struct Run {
    std::size_t first = 0;
    ULONG count = 0;
    ULONG room = 0;
  };

  template <class Take>
  void ForEach(Take take) const {
    for (Node node = 0; node < runs_.size(); ++node) {
      for (const Node other : (*this)[node]) take(node, other);
    }
  }

  std::vector<Run> runs_;
  std::vector<Node> pool_;
};

}  // namespace zdm
