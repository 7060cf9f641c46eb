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

/// Categories below a hundred roots, numbered from 1 in no order.
struct Categories {
  explicit Categories(LONG count) {
    db.Add(manager);
    for (LONG number = 1; number <= count; ++number) numbers.push_back(number);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    std::vector<ZRefPtr<IZCategory>> roots;
    for (const LONG number : numbers) {
      auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
      category->SetNumber(static_cast<ULONG>(number));
      manager->AddCategory(category);
      if (roots.size() < 100) {
        roots.push_back(category);
      } else {
        roots[static_cast<std::size_t>(number) % 100]->AddMember(category);
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
  const Categories categories(static_cast<LONG>(state.range(0)));
  for (auto _ : state) categories.manager->GetReltnMap().RebuildCategoryMap();
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ZCategoryReltnMap_Rebuild)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
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
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
