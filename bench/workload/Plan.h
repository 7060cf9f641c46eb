// The contents of the benchmark document W(n), drawn from one stream of random numbers: the same in
// every program that is measured. Objects have the IDs from kFirstObject on; before them stand
// categories, definitions and containers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace workload {

constexpr std::uint32_t kCategories = 50;
constexpr std::uint32_t kDefinitions = 30;
constexpr std::uint32_t kContainers = 10;
constexpr std::uint32_t kFirstCategory = 1;
constexpr std::uint32_t kFirstDefinition = kFirstCategory + kCategories;
constexpr std::uint32_t kFirstContainer = kFirstDefinition + kDefinitions;
constexpr std::uint32_t kFirstObject = kFirstContainer + kContainers;

constexpr std::uint64_t kBuildSeed = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kLookupSeed = 0xD1B54A32D192ED03;
constexpr std::uint64_t kParamsSeed = 0x94D049BB133111EB;
constexpr std::uint64_t kReverseSeed = 0xBF58476D1CE4E5B9;

constexpr std::size_t kLookups = 1000000;
constexpr std::size_t kTargets = 100;
constexpr std::uint32_t kChanged = 10;

// First definitions of each type.
constexpr std::uint8_t kDoubles = 0;
constexpr std::uint8_t kLongs = 8;
constexpr std::uint8_t kStrings = 15;
constexpr std::uint8_t kBools = 22;
constexpr std::uint8_t kReferences = 26;

using Word = std::array<char, 12>;

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return state_;
  }
  std::uint32_t Below(std::uint64_t bound) { return static_cast<std::uint32_t>(Next() % bound); }
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1p-53; }
  Word Text() {
    Word word;
    std::uint64_t value = Next();
    for (char& letter : word) {
      letter = static_cast<char>('a' + value % 26);
      value /= 26;
    }
    return word;
  }

 private:
  std::uint64_t state_;
};

/// What is drawn for one object. References are IDs, definitions numbers from 0 to 29.
struct ObjectPlan {
  std::array<std::uint32_t, 3> references;  // the first is diffusible
  std::uint32_t category;
  std::uint32_t referred;  // by the reference parameter
  std::array<std::uint8_t, 2> doubleDefinitions;
  std::array<std::uint8_t, 2> longDefinitions;
  std::array<std::uint8_t, 2> stringDefinitions;
  std::uint8_t boolDefinition;
  std::uint8_t referenceDefinition;
  bool flag;
  std::array<std::int32_t, 2> longs;
  std::array<double, 2> doubles;
  std::array<Word, 2> strings;
  double area;
  Word note;
};

/// Numbers `first` + a and `first` + b of `count` definitions, a and b different.
inline std::array<std::uint8_t, 2> DrawTwo(Random& random, std::uint8_t first,
                                           std::uint32_t count) {
  const std::uint32_t a = random.Below(count);
  const std::uint32_t b = (a + 1 + random.Below(count - 1)) % count;
  return {static_cast<std::uint8_t>(first + a), static_cast<std::uint8_t>(first + b)};
}

inline ObjectPlan DrawObject(Random& random, std::uint32_t i) {
  const auto earlier = [&] { return i == 0 ? kFirstCategory : kFirstObject + random.Below(i); };
  ObjectPlan plan;
  for (std::uint32_t& reference : plan.references) reference = earlier();
  plan.category = kFirstCategory + random.Below(kCategories);
  plan.doubleDefinitions = DrawTwo(random, kDoubles, 8);
  for (double& value : plan.doubles) value = random.Unit() * 1000;
  plan.longDefinitions = DrawTwo(random, kLongs, 7);
  for (std::int32_t& value : plan.longs) value = static_cast<std::int32_t>(random.Next() >> 32);
  plan.stringDefinitions = DrawTwo(random, kStrings, 7);
  for (Word& value : plan.strings) value = random.Text();
  plan.boolDefinition = static_cast<std::uint8_t>(kBools + random.Below(4));
  plan.flag = (random.Next() & 1) != 0;
  plan.referenceDefinition = static_cast<std::uint8_t>(kReferences + random.Below(4));
  plan.referred = earlier();
  plan.area = random.Unit() * 1000;
  plan.note = random.Text();
  return plan;
}

inline std::vector<ObjectPlan> DrawObjects(std::uint32_t n) {
  Random random(kBuildSeed);
  std::vector<ObjectPlan> plans;
  plans.reserve(n);
  for (std::uint32_t i = 0; i < n; ++i) plans.push_back(DrawObject(random, i));
  return plans;
}

/// "Category-07"; as wide text, like all text of a document.
inline std::u16string NameOf(const char* format, std::uint32_t number) {
  char name[32];
  const int length = std::snprintf(name, sizeof(name), format, number);
  return {name, name + length};
}
inline std::u16string WideText(const Word& word) { return {word.begin(), word.end()}; }

// The inputs of the operations.

inline std::vector<std::uint32_t> LookupIDs(std::uint32_t n) {
  Random random(kLookupSeed);
  std::vector<std::uint32_t> ids(kLookups);
  for (std::uint32_t& id : ids) id = kFirstObject + random.Below(n);
  return ids;
}

struct ParamPick {
  std::uint32_t object;      // from 0
  std::uint32_t definition;  // a double one that the object has
};

inline std::vector<ParamPick> ParamPicks(std::uint32_t n) {
  Random random(kBuildSeed);
  std::vector<std::array<std::uint8_t, 2>> definitions(n);
  for (std::uint32_t i = 0; i < n; ++i) definitions[i] = DrawObject(random, i).doubleDefinitions;
  random = Random(kParamsSeed);
  std::vector<ParamPick> picks(kLookups);
  for (ParamPick& pick : picks) {
    pick.object = random.Below(n);
    pick.definition = definitions[pick.object][random.Below(2)];
  }
  return picks;
}

inline std::vector<std::uint32_t> ReverseTargets(std::uint32_t n) {
  Random random(kReverseSeed);
  std::vector<std::uint32_t> ids(kTargets);
  for (std::uint32_t& id : ids) id = kFirstObject + random.Below(n);
  return ids;
}

inline std::array<std::uint32_t, kChanged> ChangedIDs(std::uint32_t n) {
  std::array<std::uint32_t, kChanged> ids;
  for (std::uint64_t k = 0; k < kChanged; ++k) {
    ids[k] = kFirstObject + static_cast<std::uint32_t>(std::uint64_t{n} * k / kChanged);
  }
  return ids;
}

}  // namespace workload
