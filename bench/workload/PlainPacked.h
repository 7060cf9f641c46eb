// W(n) as structs in vectors: references are positions, all text is one character array, IDs stand
// in one ascending table, and the file is these arrays one after the other.
#pragma once

#include "bench/workload/Plan.h"

#include <filesystem>
#include <vector>

namespace workload {

class PlainPacked {
 public:
  using Position = std::uint32_t;  // in the table of IDs

  struct Text {
    std::uint32_t first;
    std::uint32_t length;
  };
  struct Object {
    Text name;
    Position owner;
    std::array<Position, 3> references;
    Position category;
    Position referred;
    std::array<std::uint8_t, 2> doubleDefinitions;
    std::array<std::uint8_t, 2> longDefinitions;
    std::array<std::uint8_t, 2> stringDefinitions;
    std::uint8_t boolDefinition;
    std::uint8_t referenceDefinition;
    std::uint8_t diffusible;  // a bit for each of `references`
    bool flag;
    std::array<std::int32_t, 2> longs;
    std::array<double, 2> doubles;
    std::array<Text, 2> strings;
    double area;
    Text note;
  };

  void Build(const std::vector<ObjectPlan>& plans);
  void Save(const std::filesystem::path& file) const;
  void Load(const std::filesystem::path& file);

  /// The position of an ID that is there.
  Position Find(std::uint32_t id) const;
  std::uint32_t ID(Position position) const { return ids_[position]; }
  /// A double parameter of object `i`; 0 if it has none of that definition.
  double DoubleOf(std::uint32_t i, std::uint32_t definition) const {
    const Object& object = objects_[i];
    for (std::size_t k = 0; k < object.doubleDefinitions.size(); ++k) {
      if (object.doubleDefinitions[k] == definition) return object.doubles[k];
    }
    return 0;
  }
  /// The sum of the IDs of everything that objects refer to.
  std::uint64_t Walk() const;
  /// The sum of the IDs of the objects that refer to `target`, by looking at all.
  std::uint64_t ReverseScan(Position target) const;
  void MakeIndex();
  std::uint64_t Reverse(Position target) const;
  /// The sums of the IDs of all objects that lead to `start`, and of all that `start` leads to.
  std::uint64_t Dependents(Position start) const;
  std::uint64_t Closure(Position start) const;
  void Copy();

  Position LastObject() const { return static_cast<Position>(kHeads + objects_.size() - 1); }

 private:
  static constexpr Position kHeads = kFirstObject - 1;  // what stands before the objects

  template <class Next>
  std::uint64_t Reach(Position start, Next next) const;
  Text Add(const std::u16string& text);

  std::vector<std::uint32_t> ids_;
  std::vector<Text> heads_;  // names of categories, definitions and containers
  std::vector<Object> objects_;
  std::vector<char16_t> text_;
  std::vector<std::uint32_t> firstReferrer_;  // by object; the index
  std::vector<Position> referrers_;
};

}  // namespace workload
