// The ID table beside what plain C++ would use for the same: a sorted vector of records.
#include "tests/support/ByteStream.h"
#include "tests/support/TestDatabase.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using namespace zdm::test;

/// What a program without this table would keep by value.
struct Record {
  LONG id;
  LONG aux1;
  LONG aux2;
  ULONGLONG status;
  LONGLONG options;
  void* object;
};

/// IDs from 1; of those up to `count` times `spread`, every one in `spread` at random.
std::vector<LONG> MakeIDs(long count, unsigned spread) {
  std::mt19937 random(1);
  std::vector<LONG> ids;
  for (LONG id = 1; static_cast<long>(ids.size()) < count;
       id += spread == 1 ? 1 : 1 + static_cast<LONG>(random() % (2 * spread - 1))) {
    ids.push_back(id);
  }
  return ids;
}

std::vector<LONG> MakeQueries(const std::vector<LONG>& ids) {
  std::mt19937 random(2);
  std::vector<LONG> queries(1 << 16);
  std::ranges::generate(queries, [&] { return ids[random() % ids.size()]; });
  return queries;
}

void Find(benchmark::State& state, unsigned spread) {
  const auto ids = MakeIDs(state.range(0), spread);
  COIDManager table;
  for (const LONG id : ids) table.AddOID(new OID(0, 0, id, nullptr));
  table.SetIDRange();
  const auto queries = MakeQueries(ids);
  for (auto _ : state) {
    LONGLONG sum = 0;
    for (const LONG id : queries) sum += table.GetOIDByID(id)->ID;
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<LONGLONG>(queries.size()));
}

void FindPlain(benchmark::State& state, unsigned spread) {
  const auto ids = MakeIDs(state.range(0), spread);
  std::vector<Record> records;
  for (const LONG id : ids) records.push_back({id, 0, 0, 0, -1, nullptr});
  const auto queries = MakeQueries(ids);
  for (auto _ : state) {
    LONGLONG sum = 0;
    for (const LONG id : queries) {
      sum += std::lower_bound(records.begin(), records.end(), id,
                              [](const Record& record, LONG wanted) { return record.id < wanted; })
                 ->id;
    }
    benchmark::DoNotOptimize(sum);
  }
}

#define ZDM_BENCH_FIND(Case, spread)                                                      \
  void BM_COIDManager_GetOIDByID_##Case(benchmark::State& state) { Find(state, spread); } \
  BENCHMARK(BM_COIDManager_GetOIDByID_##Case)->RangeMultiplier(16)->Range(64, 1 << 20);   \
  void BM_COIDManager_GetOIDByID_##Case##_LowerBound(benchmark::State& state) {           \
    FindPlain(state, spread);                                                             \
  }                                                                                       \
  BENCHMARK(BM_COIDManager_GetOIDByID_##Case##_LowerBound)->RangeMultiplier(16)->Range(64, 1 << 20)

ZDM_BENCH_FIND(NoGaps, 1);
ZDM_BENCH_FIND(HalfDeleted, 2);
ZDM_BENCH_FIND(Sparse, 100);

/// `count` objects get IDs of one kind; the objects are there before.
void Assign(benchmark::State& state, bool hard) {
  std::vector<ZRefPtr<IZDMObject>> objects(static_cast<std::size_t>(state.range(0)));
  for (auto& object : objects) object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  COIDManager table;  // before the first pass, so that each keeps the same records
  for (auto _ : state) {
    table.Init();
    for (const auto& object : objects) {
      object->ClearStatus(ZOS_ATTACHED);
      table.AssignItemID(object, hard, false);
    }
    benchmark::DoNotOptimize(table.GetOIDs().data());
  }
}

void BM_COIDManager_AssignItemID_Hard(benchmark::State& state) { Assign(state, true); }
BENCHMARK(BM_COIDManager_AssignItemID_Hard)->Arg(1000000)->Unit(benchmark::kMillisecond);
void BM_COIDManager_AssignItemID_Hard_Soft(benchmark::State& state) { Assign(state, false); }
BENCHMARK(BM_COIDManager_AssignItemID_Hard_Soft)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_COIDManager_Load(benchmark::State& state) {
  ByteStream stored;
  const auto count = static_cast<LONG>(state.range(0));
  stored.Write(&count, sizeof(count));
  for (LONG id = 1; id <= count; ++id) OID(0, 0, id, nullptr).Save(&stored);
  for (auto _ : state) {
    stored.Seek(0, STREAM_SEEK_SET);
    COIDManager table;
    benchmark::DoNotOptimize(table.Load(&stored));
  }
}
BENCHMARK(BM_COIDManager_Load)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_COIDManager_Load_Plain(benchmark::State& state) {
  const std::vector<LONG> stored(static_cast<std::size_t>(state.range(0)) * 3, 1);
  for (auto _ : state) {
    std::vector<Record*> records;
    for (std::size_t i = 0; i < stored.size(); i += 3) {
      records.push_back(new Record{stored[i + 2], stored[i], stored[i + 1], 0, -1, nullptr});
    }
    benchmark::DoNotOptimize(records.data());
    for (const Record* record : records) delete record;
  }
}
BENCHMARK(BM_COIDManager_Load_Plain)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// A pool of paths of three records; the paths have IDs from 1.
class Pool {
 public:
  explicit Pool(long count) : sequences(static_cast<std::size_t>(count)) {
    std::vector<OID*> path(3);
    LONG id = 0;
    for (auto& sequence : sequences) {
      OID*& record = path[static_cast<std::size_t>(id % 3)];
      record = new OID(0, 0, ++id, nullptr);
      table.AddOID(record);
      sequence = path;
      pool.QueryPID(sequence);
    }
  }
  /// Goes through all paths in an order that no cache foresees.
  std::size_t Next() { return next_ = (next_ + 7919) % sequences.size(); }

  COIDManager table;
  CPIDManager pool;
  std::vector<std::vector<OID*>> sequences;

 private:
  std::size_t next_ = 0;
};

void BM_CPIDManager_FindPID(benchmark::State& state) {
  Pool paths(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(paths.pool.FindPID(paths.sequences[paths.Next()]));
}
BENCHMARK(BM_CPIDManager_FindPID)->RangeMultiplier(10)->Range(100, 100000);

void BM_CPIDManager_GetPIDByID(benchmark::State& state) {
  Pool paths(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(paths.pool.GetPIDByID(static_cast<LONG>(paths.Next()) + 1)->ID);
  }
}
BENCHMARK(BM_CPIDManager_GetPIDByID)->RangeMultiplier(10)->Range(100, 100000);

/// Objects that all refer to the last, which goes to the front one place a pass.
void BM_COIDManager_Sort_LastFirst(benchmark::State& state) {
  TestDatabase db;
  std::vector<ZRefPtr<IZDMObject>> objects(static_cast<std::size_t>(state.range(0)));
  for (auto& object : objects) object = db.MakeObject();
  const auto relation = RelationTo(objects.back());
  for (const auto& object : objects) {
    if (object != objects.back()) object->AddRelation(relation->GetIZObject());
  }
  for (auto _ : state) {
    std::vector<OID*> oids = db.oids.GetOIDs();
    COIDManager::Sort(oids);
    benchmark::DoNotOptimize(oids.data());
  }
}
BENCHMARK(BM_COIDManager_Sort_LastFirst)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
