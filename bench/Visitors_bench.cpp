// The visitors over large graphs, beside the same marks spread over plain C++ records.
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/relations/ZReltnVisitorDeduce.h"
#include "zdm/relations/ZReltnVisitorDiffuse.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

using namespace zdm::test;

/// Objects of which each refers to the next by a diffusible relation.
struct Chain {
  explicit Chain(long count) {
    for (long i = 0; i < count; ++i) objects.push_back(db->MakeObject());
    for (std::size_t i = 0; i + 1 < objects.size(); ++i) {
      const auto reltn = RelationTo(objects[i + 1]);
      reltn->SetReltnDiffusible(true);
      objects[i]->AddRelation(reltn);
    }
  }

  std::unique_ptr<TestDatabase> db = std::make_unique<TestDatabase>();
  std::vector<ZRefPtr<IZDMObject>> objects;
};

/// What a program without relations would keep.
struct Plain {
  Plain* next = nullptr;
  ULONGLONG status = 0;
};

void BM_Deduce_Chain(benchmark::State& state) {
  const Chain chain(state.range(0));
  chain.objects.back()->SetStatus(ZOS_AFFECTED);
  for (auto _ : state) {
    ZReltnVisitorDeduce visitor;
    benchmark::DoNotOptimize(chain.objects.front()->VisitReferences(nullptr, &visitor));
    state.PauseTiming();
    for (const auto& object : chain.objects) {
      object->ClearStatus(ZOS_DEDUCEVISITED);
      if (object != chain.objects.back()) object->ClearStatus(ZOS_AFFECTED);
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Deduce_Chain)->RangeMultiplier(10)->Range(1000, 1000000);

void BM_Diffuse_Chain(benchmark::State& state) {
  const Chain chain(state.range(0));
  for (auto _ : state) {
    ZReltnVisitorDiffuse visitor;
    chain.objects.front()->VisitReferences(nullptr, &visitor);
    state.PauseTiming();
    for (const auto& object : chain.objects) object->ClearStatus(ZOS_DIFFUSEMARK);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Diffuse_Chain)->RangeMultiplier(10)->Range(1000, 1000000);

void BM_Diffuse_Chain_Plain(benchmark::State& state) {
  std::vector<std::unique_ptr<Plain>> records;
  for (long i = 0; i < state.range(0); ++i) {
    records.push_back(std::make_unique<Plain>());
    if (i > 0) records[static_cast<std::size_t>(i - 1)]->next = records.back().get();
  }
  ULONGLONG mark = 1;
  for (auto _ : state) {
    for (Plain* record = records.front().get(); record != nullptr; record = record->next) {
      record->status ^= mark;
    }
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Diffuse_Chain_Plain)->RangeMultiplier(10)->Range(1000, 1000000);

void BM_COIDManager_GetReltnObjs(benchmark::State& state) {
  const Chain chain(state.range(0));
  for (auto _ : state) {
    const auto found = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
    chain.db->oids.GetReltnObjs(ZR_ALL, chain.objects.back(), found);
    benchmark::DoNotOptimize(found->GetCount());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_COIDManager_GetReltnObjs)->RangeMultiplier(10)->Range(1000, 100000);

}  // namespace
