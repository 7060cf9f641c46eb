// W(n) as linked heap blocks: every object is a chain of as many blocks, of the same sizes, as the
// library's object takes, and nothing more. Five blocks of a chain are references, which show their
// target's record to a visitor; one is that record; the others stand for the rest.
#pragma once

#include "bench/workload/Plan.h"

#include <filesystem>
#include <vector>

namespace workload {

/// Blocks of one size, per thousand objects.
struct BlockCount {
  std::size_t size;
  std::uint64_t perThousand;
};

/// Lines "SIZE COUNT" as the program workload_blocks prints them.
std::vector<BlockCount> ReadBlockCounts(const std::filesystem::path& file);

class PlainBlocks {
 public:
  explicit PlainBlocks(const std::vector<BlockCount>& counts) : counts_(counts) {}
  ~PlainBlocks() { Close(); }
  PlainBlocks(const PlainBlocks&) = delete;
  PlainBlocks& operator=(const PlainBlocks&) = delete;

  void Build(const std::vector<ObjectPlan>& plans);
  /// The IDs referred to, five an object.
  void Save(const std::filesystem::path& file) const;
  void Load(const std::filesystem::path& file);
  std::uint64_t Walk() const;
  std::uint64_t ReverseScan(std::uint32_t target) const;
  void Copy();
  void Close();

 private:
  class Block;
  class Record;
  class Reference;
  class Filler;
  class Visitor;
  class Adder;
  class Seeker;
  using Targets = std::array<std::uint32_t, 5>;

  void Add(std::uint32_t id);
  void Refer(std::size_t i, const Targets& targets);

  const std::vector<BlockCount>& counts_;
  std::vector<Record*> heads_;    // targets before the objects
  std::vector<Record*> objects_;  // each begins its chain
};

}  // namespace workload
