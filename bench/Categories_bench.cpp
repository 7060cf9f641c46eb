// Asking the map of category relations for the visibility of a number, beside a std::map of the
// same numbers; and rebuilding it, beside filling a std::map by number and one by address.
#include "tests/support/TestDatabase.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/CZDMCategoryMgr.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace {

enum class Shape {
  kWide,   // a hundred roots, the others below them
  kChain,  // each below the one before, 256 to a root
};

/// Categories numbered from 1 in no order.
struct Categories {
  explicit Categories(LONG count, Shape shape = Shape::kWide) {
    db.Add(manager);
    for (LONG number = 1; number <= count; ++number) numbers.push_back(number);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    std::vector<ZRefPtr<IZCategory>> above;
    const std::size_t limit = shape == Shape::kWide ? 100 : 256;
    for (const LONG number : numbers) {
      auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
      category->SetNumber(static_cast<ULONG>(number));
      manager->AddCategory(category);
      if (shape == Shape::kChain) {
        if (above.size() == limit) above.clear();
        if (!above.empty()) above.back()->AddMember(category);
        above.push_back(category);
      } else if (above.size() < limit) {
        above.push_back(category);
      } else {
        above[static_cast<std::size_t>(number) % limit]->AddMember(category);
      }
    }
    manager->RebuildReltnMap();
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(2));
  }

  zdm::test::TestDatabase db;
  ZRefPtr<CZDMCategoryMgr> manager = zdm::MakeObject<CZDMCategoryMgr, CZDMCategoryMgr>();
  std::vector<LONG> numbers;
};

void BM_ZCategoryReltnMap_GetCategoryVisible(benchmark::State& state) {
  const Categories categories(static_cast<LONG>(state.range(0)));
  const ZCategoryReltnMap& map = categories.manager->GetReltnMap();
  for (auto _ : state) {
    for (const LONG number : categories.numbers) {
      benchmark::DoNotOptimize(map.GetCategoryVisible(number));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ZCategoryReltnMap_GetCategoryVisible)->Arg(1000)->Arg(100000);

void BM_ZCategoryReltnMap_GetCategoryVisible_Plain(benchmark::State& state) {
  const Categories categories(static_cast<LONG>(state.range(0)));
  struct Values {
    bool visible = true;
  };
  std::vector<std::unique_ptr<Values>> values;
  std::map<LONG, Values*> map;
  for (const LONG number : categories.numbers) {
    values.push_back(std::make_unique<Values>());
    map[number] = values.back().get();
  }
  for (auto _ : state) {
    for (const LONG number : categories.numbers) {
      const auto found = map.find(number);
      benchmark::DoNotOptimize(found == map.end() || found->second->visible);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ZCategoryReltnMap_GetCategoryVisible_Plain)->Arg(1000)->Arg(100000);

void BM_ZCategoryReltnMap_Rebuild(benchmark::State& state) {
  const Categories categories(static_cast<LONG>(state.range(0)),
                              static_cast<Shape>(state.range(1)));
  for (auto _ : state) categories.manager->GetReltnMap().RebuildCategoryMap();
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ZCategoryReltnMap_Rebuild)
    ->ArgNames({"relations", "chain"})
    ->ArgsProduct({benchmark::CreateRange(10000, 1000000, 10), {0, 1}})
    ->Unit(benchmark::kMillisecond);

/// The trees of relations too.
void BM_CZDMCategoryMgr_RebuildReltnMap(benchmark::State& state) {
  const Categories categories(static_cast<LONG>(state.range(0)),
                              static_cast<Shape>(state.range(1)));
  for (auto _ : state) categories.manager->RebuildReltnMap();
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_CZDMCategoryMgr_RebuildReltnMap)
    ->ArgNames({"relations", "chain"})
    ->ArgsProduct({benchmark::CreateRange(10000, 100000, 10), {0, 1}})
    ->Unit(benchmark::kMillisecond);

void BM_ZCategoryReltnMap_Rebuild_Plain(benchmark::State& state) {
  const Categories categories(static_cast<LONG>(state.range(0)));
  std::vector<IZDMObject*> objects;
  for (LONGLONG pos = categories.manager->GetHeadPosition(); pos != 0;) {
    objects.push_back(categories.manager->GetNext(pos));
  }
  for (auto _ : state) {
    std::map<LONG, IZDMObject*> byNumber;
    std::map<IZDMObject*, IZDMObject*> byCategory;
    for (IZDMObject* object : objects) {
      byNumber.emplace(static_cast<LONG>(object->GetNumber()), object);
      byCategory.emplace(object, object);
    }
    benchmark::DoNotOptimize(byNumber.size() + byCategory.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ZCategoryReltnMap_Rebuild_Plain)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
