// What the object framework costs beside the plain C++ that does the same.
#include "platform/core/ZCore.h"
#include "tests/support/TestClasses.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <list>
#include <unordered_map>
#include <vector>

namespace {

using namespace zdm::test;

void BM_QueryZInterface_Present(benchmark::State& state) {
  auto element = zdm::MakeObject<ITestElement, Twofold>();
  CZObject* object = element;
  const unsigned short id = ZInterface<ITestExtra>::ID();
  for (auto _ : state) {
    benchmark::DoNotOptimize(object);
    void* view = nullptr;
    benchmark::DoNotOptimize(QueryZInterface(object, id, &view));
    benchmark::DoNotOptimize(view);
    element->ForgetReference();
  }
}
BENCHMARK(BM_QueryZInterface_Present);

void BM_QueryZInterface_Present_Plain(benchmark::State& state) {
  auto element = zdm::MakeObject<ITestElement, Twofold>();
  CZObject* object = element;
  for (auto _ : state) {
    benchmark::DoNotOptimize(object);
    benchmark::DoNotOptimize(object->GetLPVOID());
  }
}
BENCHMARK(BM_QueryZInterface_Present_Plain);

void BM_CZFactory_Create(benchmark::State& state) {
  Element::zInit();
  const GUID classId = Element::kClassID;
  const CZFactory* factory = ZCore::GetZFactory();
  for (auto _ : state) {
    CZObject* object = factory->Create(classId);
    benchmark::DoNotOptimize(object);
    object->DecrementCount();
  }
}
BENCHMARK(BM_CZFactory_Create);

struct Hash {
  std::size_t operator()(const GUID& guid) const {
    std::size_t half;
    std::memcpy(&half, &guid, sizeof(half));
    return half;
  }
};

void BM_CZFactory_Create_Plain(benchmark::State& state) {
  std::unordered_map<GUID, int, Hash> table;
  const GUID classId = Element::kClassID;
  table[classId] = 1;
  table[GUID_NULL] = 2;
  for (auto _ : state) {
    benchmark::DoNotOptimize(table.find(classId)->second);
    CZObject* object = new Element;
    benchmark::DoNotOptimize(object);
    delete object;
  }
}
BENCHMARK(BM_CZFactory_Create_Plain);

void BM_IZList_AddTailAndRemoveAll(benchmark::State& state) {
  auto element = zdm::MakeObject<ITestElement, Element>("e");
  for (auto _ : state) {
    auto coll = MakeColl();
    for (long i = 0; i < state.range(0); ++i) coll->AddTail(element);
    coll->RemoveAll();
  }
}
BENCHMARK(BM_IZList_AddTailAndRemoveAll)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_IZList_AddTailAndRemoveAll_Plain(benchmark::State& state) {
  auto element = zdm::MakeObject<ITestElement, Element>("e");
  for (auto _ : state) {
    std::list<ZRefPtr<ITestElement>> list;
    for (long i = 0; i < state.range(0); ++i) list.emplace_back(element);
    list.clear();
    benchmark::DoNotOptimize(list);
  }
}
BENCHMARK(BM_IZList_AddTailAndRemoveAll_Plain)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
