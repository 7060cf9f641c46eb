#include "bench/workload/PlainBlocks.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <new>
#include <stdexcept>
#include <utility>

namespace workload {

class PlainBlocks::Visitor {
 public:
  virtual bool Visit(Record* owner, Record* target) = 0;

 protected:
  ~Visitor() = default;
};

class PlainBlocks::Block {
 public:
  virtual bool Accept(Record*, Visitor&) { return false; }
  Block* next = nullptr;
};

class PlainBlocks::Filler final : public Block {};

class PlainBlocks::Record final : public Block {
 public:
  explicit Record(std::uint32_t number) : id(number) {}
  std::uint32_t id;
};

class PlainBlocks::Reference final : public Block {
 public:
  bool Accept(Record* owner, Visitor& visitor) override { return visitor.Visit(owner, target); }
  Record* target = nullptr;
};

/// The IDs of all that is referred to.
class PlainBlocks::Adder final : public Visitor {
 public:
  bool Visit(Record*, Record* target) override {
    sum += target->id;
    return false;
  }
  std::uint64_t sum = 0;
};

/// Stops at a reference to one object.
class PlainBlocks::Seeker final : public Visitor {
 public:
  explicit Seeker(std::uint32_t id) : id_(id) {}
  bool Visit(Record*, Record* target) override { return target->id == id_; }

 private:
  std::uint32_t id_;
};

namespace {

constexpr std::size_t kReferencesEach = 5;
constexpr std::size_t kSmallest = 24;  // what malloc has for any size below

}  // namespace

std::vector<BlockCount> ReadBlockCounts(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<BlockCount> counts;
  for (BlockCount count; in >> count.size >> count.perThousand;) counts.push_back(count);
  std::uint64_t all = 0;
  for (const BlockCount& count : counts) all += count.perThousand;
  if (all < 1000 * (1 + kReferencesEach))
    throw std::runtime_error("no block sizes in " + file.string());
  return counts;
}

void PlainBlocks::Add(std::uint32_t id) {
  const std::size_t i = objects_.size();
  Block* last = nullptr;
  std::size_t made = 0;
  for (const BlockCount& count : counts_) {
    const auto upTo = [&](std::size_t number) { return number * count.perThousand / 1000; };
    for (std::uint64_t left = upTo(i + 1) - upTo(i); left > 0; --left) {
      void* memory = std::malloc(std::max(count.size, kSmallest));
      if (memory == nullptr) throw std::bad_alloc();
      Block* block = nullptr;
      if (made == 0) {
        auto* record = new (memory) Record(id);
        objects_.push_back(record);
        block = record;
      } else if (made <= kReferencesEach) {
        block = new (memory) Reference;
      } else {
        block = new (memory) Filler;
      }
      if (last != nullptr) last->next = block;
      last = block;
      ++made;
    }
  }
}

void PlainBlocks::Refer(std::size_t i, const Targets& targets) {
  Block* block = objects_[i];
  for (const std::uint32_t id : targets) {
    block = block->next;
    static_cast<Reference*>(block)->target =
        id < kFirstObject ? heads_[id - 1] : objects_[id - kFirstObject];
  }
}

void PlainBlocks::Build(const std::vector<ObjectPlan>& plans) {
  for (std::uint32_t id = 1; id < kFirstObject; ++id) heads_.push_back(new Record(id));
  for (const ObjectPlan& plan : plans) {
    const std::size_t i = objects_.size();
    Add(kFirstObject + static_cast<std::uint32_t>(i));
    Refer(i, {plan.references[0], plan.references[1], plan.references[2], plan.category,
              plan.referred});
  }
}

void PlainBlocks::Save(const std::filesystem::path& file) const {
  std::vector<Targets> all;
  all.reserve(objects_.size());
  for (const Record* object : objects_) {
    Targets targets;
    const Block* block = object;
    for (std::uint32_t& target : targets) {
      block = block->next;
      target = static_cast<const Reference*>(block)->target->id;
    }
    all.push_back(targets);
  }
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(all.data()),
             static_cast<std::streamsize>(all.size() * sizeof(Targets)));
}

void PlainBlocks::Load(const std::filesystem::path& file) {
  std::vector<Targets> all(std::filesystem::file_size(file) / sizeof(Targets));
  std::ifstream(file, std::ios::binary)
      .read(reinterpret_cast<char*>(all.data()),
            static_cast<std::streamsize>(all.size() * sizeof(Targets)));
  for (std::uint32_t id = 1; id < kFirstObject; ++id) heads_.push_back(new Record(id));
  for (std::size_t i = 0; i < all.size(); ++i) Add(kFirstObject + static_cast<std::uint32_t>(i));
  for (std::size_t i = 0; i < all.size(); ++i) Refer(i, all[i]);
}

std::uint64_t PlainBlocks::Walk() const {
  Adder adder;
  for (Record* object : objects_) {
    for (Block* block = object; block != nullptr; block = block->next) {
      if (block->Accept(object, adder)) break;
    }
  }
  return adder.sum;
}

std::uint64_t PlainBlocks::ReverseScan(std::uint32_t target) const {
  std::uint64_t sum = 0;
  Seeker seeker(target);
  for (Record* object : objects_) {
    for (Block* block = object; block != nullptr; block = block->next) {
      if (!block->Accept(object, seeker)) continue;
      sum += object->id;
      break;
    }
  }
  return sum;
}

void PlainBlocks::Copy() {
  const std::size_t count = objects_.size();
  for (std::size_t i = 0; i < count; ++i) {
    Add(objects_[i]->id + static_cast<std::uint32_t>(count));
    Targets targets;
    const Block* block = objects_[i];
    for (std::uint32_t& target : targets) {
      block = block->next;
      target = static_cast<const Reference*>(block)->target->id;
      if (target >= kFirstObject) target += static_cast<std::uint32_t>(count);
    }
    Refer(count + i, targets);  // to copies made already, since references lead backwards
  }
}

void PlainBlocks::Close() {
  for (Record* object : objects_) {
    for (Block* block = object; block != nullptr;) std::free(std::exchange(block, block->next));
  }
  for (Record* head : heads_) delete head;
  objects_.clear();
  heads_.clear();
}

}  // namespace workload
