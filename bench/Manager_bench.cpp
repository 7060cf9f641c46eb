// Managers and collections at the size of a large document, beside vectors of the same objects.
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/model/CZDMObjMgr.h"

#include <benchmark/benchmark.h>

#include <optional>
#include <vector>

namespace {

using zdm::test::TestDatabase;

constexpr LONG kBit = 40;

/// A document with one manager in it.
struct Document {
  Document() { db.Add(manager); }

  TestDatabase db;
  ZRefPtr<IZDMObjMgr> manager = zdm::MakeObject<IZDMObjMgr, CZDMObjMgr>();
};

/// Objects are made and added; taking the document down is not counted.
void BM_CZDMObjMgr_AddTail(benchmark::State& state) {
  for (auto _ : state) {
    auto document = std::make_optional<Document>();
    for (auto left = state.range(0); left > 0; --left) {
      document->manager->AddTail(zdm::MakeObject<IZDMObject, CZDMPlainObject>());
    }
    benchmark::DoNotOptimize(document->manager->GetCount());
    state.PauseTiming();
    document.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_CZDMObjMgr_AddTail)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_CZDMObjMgr_AddTail_Plain(benchmark::State& state) {
  for (auto _ : state) {
    auto objects = std::make_optional<std::vector<ZRefPtr<IZDMObject>>>();
    for (auto left = state.range(0); left > 0; --left) {
      objects->push_back(zdm::MakeObject<IZDMObject, CZDMPlainObject>());
    }
    benchmark::DoNotOptimize(objects->data());
    state.PauseTiming();
    objects.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_CZDMObjMgr_AddTail_Plain)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// A manager of so many objects, every third of which has kBit.
ZRefPtr<IZDMObjMgr> MakeFilled(benchmark::State& state, std::vector<IZDMObject*>& objects) {
  auto manager = zdm::MakeObject<IZDMObjMgr, CZDMObjMgr>();
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
    if (i % 3 == 0) object->SetStatus(kBit);
    manager->AttachTail(object);
    objects.push_back(object);
  }
  return manager;
}

void BM_CZDMObjMgr_GetStatusNext(benchmark::State& state) {
  std::vector<IZDMObject*> objects;
  const auto manager = MakeFilled(state, objects);
  for (auto _ : state) {
    LONGLONG sum = 0;
    for (LONGLONG pos = manager->GetHeadStatusPosition(kBit); pos != 0; ++sum) {
      benchmark::DoNotOptimize(manager->GetStatusNext(kBit, pos));
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_CZDMObjMgr_GetStatusNext)->Arg(1000000)->Unit(benchmark::kMicrosecond);

void BM_CZDMObjMgr_GetStatusNext_Plain(benchmark::State& state) {
  std::vector<IZDMObject*> objects;
  const auto manager = MakeFilled(state, objects);
  for (auto _ : state) {
    LONGLONG sum = 0;
    for (IZDMObject* object : objects) {
      if (!object->GetOID()->Status.test(kBit)) continue;
      benchmark::DoNotOptimize(object);
      ++sum;
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_CZDMObjMgr_GetStatusNext_Plain)->Arg(1000000)->Unit(benchmark::kMicrosecond);

/// Each object once, of a list that holds every object once.
void BM_CZDMObjMgr_Collect(benchmark::State& state) {
  std::vector<IZDMObject*> objects;
  const auto manager = MakeFilled(state, objects);
  for (auto _ : state) {
    ZRefPtr<IZDMObjColl> coll;
    manager->Collect(0, false, coll.Out());
    benchmark::DoNotOptimize(coll->GetCount());
  }
}
BENCHMARK(BM_CZDMObjMgr_Collect)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_CZDMObjMgr_Collect_Plain(benchmark::State& state) {
  std::vector<IZDMObject*> objects;
  const auto manager = MakeFilled(state, objects);
  for (auto _ : state) {
    std::vector<ZRefPtr<IZDMObject>> found;
    for (IZDMObject* object : objects) {
      OID* oid = object->GetOID();
      if (oid->Status.test(ZOS_VISITMARK)) continue;
      oid->Status.set(ZOS_VISITMARK);
      found.emplace_back(object);
    }
    for (IZDMObject* object : found) object->GetOID()->Status.reset(ZOS_VISITMARK);
    benchmark::DoNotOptimize(found.data());
  }
}
BENCHMARK(BM_CZDMObjMgr_Collect_Plain)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// Of 1000 managers, one in the other in tens, with all objects below them.
void BM_CZDMObjMgr_RemoveStatusObjects(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<ZRefPtr<IZDMObjMgr>> managers(1000);
    for (std::size_t i = 0; i < managers.size(); ++i) {
      managers[i] = zdm::MakeObject<IZDMObjMgr, CZDMObjMgr>();
      if (i > 0) managers[(i - 1) / 10]->AttachTail(managers[i]);
    }
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
      object->SetStatus(kBit);
      managers[static_cast<std::size_t>(i) % managers.size()]->AttachTail(object);
    }
    state.ResumeTiming();
    managers.front()->RemoveStatusObjects(kBit);
  }
}
BENCHMARK(BM_CZDMObjMgr_RemoveStatusObjects)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

void BM_CZDMObjColl_AddTailUnique(benchmark::State& state) {
  std::vector<IZDMObject*> objects;
  const auto manager = MakeFilled(state, objects);
  for (auto _ : state) {
    auto coll = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
    coll->AddTailUnique(zdm::ViewAs<IZDMObjIterator>(manager));
    benchmark::DoNotOptimize(coll->GetCount());
  }
}
BENCHMARK(BM_CZDMObjColl_AddTailUnique)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
