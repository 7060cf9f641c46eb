// Reading objects back from a bare stream, and cleaning and validating the table: time per object
// must not grow with their number. Beside the reading, what a program without this table would do.
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjMgr.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

using namespace zdm::test;

/// A manager of ID 1 and records 2 to count + 1; their objects are in the stream.
struct Recovered {
  explicit Recovered(LONG count) {
    database.Add(manager, 1);
    for (LONG id = 2; id <= count + 1; ++id) database.oids.AddOID(new OID(0, 0, id, nullptr));
  }

  TestDatabase database;
  ZRefPtr<IZDMObjMgr> manager = zdm::CreateAs<IZDMObjMgr>(zdm::ClassRow<CZDMObjMgr>::kClassID);
};

std::vector<BYTE> StreamOf(LONG count, std::size_t padding) {
  const auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetName(OLESTR("Object"));
  object->SetObjectValid(true);
  std::vector<BYTE> record = BytesOf(*object);
  const std::size_t size = record.size();
  record.resize(size + padding);
  std::vector<BYTE> stream;
  for (LONG id = 2; id <= count + 1; ++id) {
    const LONG ids[] = {id, 1};
    std::memcpy(&record[24], ids, sizeof(ids));
    stream.insert(stream.end(), record.begin(), record.end());
  }
  return stream;
}

void Read(benchmark::State& state, std::size_t padding) {
  const auto count = static_cast<LONG>(state.range(0));
  ByteStream stream(StreamOf(count, padding));
  for (auto _ : state) {
    state.PauseTiming();
    auto target = std::make_unique<Recovered>(count);
    stream.Seek(0, STREAM_SEEK_SET);
    state.ResumeTiming();
    benchmark::DoNotOptimize(target->database.oids.ReadStream(&stream));
    state.PauseTiming();
    if (target->manager->GetCount() != count) state.SkipWithError("objects are missing");
    target.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void BM_COIDManager_ReadStream(benchmark::State& state) { Read(state, 0); }
BENCHMARK(BM_COIDManager_ReadStream)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
void BM_COIDManager_ReadStream_Padded(benchmark::State& state) { Read(state, 40); }
BENCHMARK(BM_COIDManager_ReadStream_Padded)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

/// The same bytes into plain objects, found by ID in an array and listed by their owner.
void BM_COIDManager_ReadStream_Plain(benchmark::State& state) {
  struct Object {
    LONG id;
    LONGLONG options;
    std::basic_string<OLECHAR> name;
  };
  const auto count = static_cast<std::size_t>(state.range(0));
  const std::vector<BYTE> bytes = StreamOf(static_cast<LONG>(count), 0);
  const std::size_t size = bytes.size() / count;
  for (auto _ : state) {
    std::vector<std::unique_ptr<Object>> byId(count + 2);
    std::vector<Object*> owned;
    for (const BYTE* record = bytes.data(); record != bytes.data() + bytes.size(); record += size) {
      auto object = std::make_unique<Object>();
      ULONG length = 0;
      std::memcpy(&object->id, record + 24, sizeof(LONG));
      std::memcpy(&object->options, record + 33, sizeof(LONGLONG));
      std::memcpy(&length, record + 48, sizeof(length));
      object->name.resize(length / 2 - 1);
      std::memcpy(object->name.data(), record + 52, length - 2);
      owned.push_back(object.get());
      byId[static_cast<std::size_t>(object->id)] = std::move(object);
    }
    benchmark::DoNotOptimize(owned.data());
    state.PauseTiming();
    byId.clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_COIDManager_ReadStream_Plain)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

/// Zeros up to the end of the stream, then bytes that name no class.
void Scan(benchmark::State& state, BYTE fill) {
  std::vector<BYTE> bytes(static_cast<std::size_t>(state.range(0)), fill);
  std::memset(bytes.data(), 0, 16);
  ByteStream stream(bytes);
  COIDManager table;
  for (auto _ : state) {
    stream.Seek(0, STREAM_SEEK_SET);
    benchmark::DoNotOptimize(table.ReadStream(&stream));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_COIDManager_ReadStream_Zeros(benchmark::State& state) { Scan(state, 0); }
BENCHMARK(BM_COIDManager_ReadStream_Zeros)->Arg(1 << 26)->Unit(benchmark::kMillisecond);
void BM_COIDManager_ReadStream_Noise(benchmark::State& state) { Scan(state, 0x5A); }
BENCHMARK(BM_COIDManager_ReadStream_Noise)->Arg(1 << 26)->Unit(benchmark::kMillisecond);

/// A table of objects, of which every second is deleted (Clean) or has no object (AssertValid).
template <class Operation>
void OnTable(benchmark::State& state, bool deletes, Operation operation) {
  const auto count = static_cast<LONG>(state.range(0));
  ByteStream stream(StreamOf(count, 0));
  for (auto _ : state) {
    state.PauseTiming();
    auto target = std::make_unique<Recovered>(deletes ? count : 2 * count);
    COIDManager& table = target->database.oids;
    stream.Seek(0, STREAM_SEEK_SET);
    table.ReadStream(&stream);
    for (LONG id = 2; deletes && id <= count; id += 2) table.GetOIDByID(id)->SetStatus(8, 0);
    if (deletes) table.SetRootOID(target->manager->GetOID());
    state.ResumeTiming();
    operation(table);
    state.PauseTiming();
    target.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void BM_COIDManager_Clean(benchmark::State& state) {
  OnTable(state, true, [](COIDManager& table) { table.Clean(); });
}
BENCHMARK(BM_COIDManager_Clean)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
void BM_COIDManager_AssertValid(benchmark::State& state) {
  OnTable(state, false, [](COIDManager& table) { table.AssertValid(); });
}
BENCHMARK(BM_COIDManager_AssertValid)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
