// Copying, merging and deleting in documents of plain objects, each with a name, three relations, a
// category, extended data and five parameters, in managers of a thousand. Times are the
// processor's. Beside a copy stands a program that takes as many blocks of the same sizes from the
// heap and links them, and nothing more: the sizes are those that stay behind when one such object
// is copied, whether the library takes them from the heap or from its pages of small blocks.
#include "document/Document.h"
#include "platform/core/SmallBlocks.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/CZProperty.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>
#include <vector>

extern "C" void* __libc_malloc(std::size_t size);  // NOLINT: the C library's own
extern "C" void __libc_free(void* block);          // NOLINT

namespace {

struct Block {
  void* place;
  std::size_t size;
};

constexpr std::size_t kMostBlocks = 4096;
std::array<Block, kMostBlocks> blocks;
std::size_t blockCount = 0;
bool isRecording = false;

}  // namespace

extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t size) {
  void* const place = __libc_malloc(size);
  if (isRecording && blockCount < kMostBlocks) blocks[blockCount++] = {place, size};
  return place;
}

extern "C" __attribute__((visibility("default"))) void free(void* place) {
  for (std::size_t i = blockCount; isRecording && i > 0; --i) {
    if (blocks[i - 1].place == place) blocks[i - 1] = blocks[--blockCount];
  }
  __libc_free(place);
}

namespace {

constexpr LONG kPerManager = 1000;
constexpr GUID kModule = zdm::ParseGuid("E0000000-0000-4000-8000-000000000001");

GUID KeyOf(BYTE number) { return {0xD0000000U + number, 0, 0x4000, {0x80, 0, 0, 0, 0, 0, 0, 1}}; }

double Worked() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

struct Content {
  zdm::Document document = zdm::Document::Create();
  std::vector<IZDMObject*> managers;
  std::vector<IZDMObject*> objects;
};

void AddParameters(IZDMObject* object, IZDefinitionMgr* definitions, IZDMObject* target) {
  ZRefPtr<IZParameterArray> array;
  object->GetParameterArray(array.Out());
  array->BeginAdd();
  for (BYTE number = 0; number < 5; ++number) {
    const GUID key = KeyOf(number);
    if (number == 4) {
      array->AddRelationParameter(definitions, &key, 1, target, false, 0);
    } else if (number == 3) {
      array->AddStringParameter(definitions, &key, OLESTR("abcdefghijkl"), 0);
    } else {
      array->AddDoubleParameter(definitions, &key, 1, number, 0);
    }
  }
  array->EndAdd();
}

Content MakeContent(LONG count) {
  Content content;
  zdm::Document& document = content.document;
  const auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
  document.Add(category, nullptr);
  const auto definitions = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  document.Add(definitions.Get(), nullptr);
  for (BYTE number = 0; number < 5; ++number) {
    const auto property = zdm::NewOf<IZProperty, CZProperty>();
    property->SetGUID(KeyOf(number));
    const auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
    definition->SetProperty(property, true);
    definitions->AddDefinition(definition);
  }
  IZDMObjMgr* manager = nullptr;
  for (LONG i = 0; i < count; ++i) {
    if (i % kPerManager == 0) {
      manager = document.AddManager(OLESTR("Manager"));
      content.managers.push_back(manager);
    }
    IZDMObject* object = document.Add(OLESTR("Object-00000000"), manager);
    content.objects.push_back(object);
    for (const LONGLONG step : {7, 1, 13}) {
      const auto target = static_cast<std::size_t>((step * i + 1) % (i + 1));
      document.Relate(object, content.objects[target]);
    }
    const auto relation = zdm::MakeObject<IZCategoryReltn, CZCategoryReltn>();
    relation->SetReltnObj(category->GetIZObject());
    object->AddRelation(relation.Get());
    AddParameters(object, definitions, content.objects[static_cast<std::size_t>(i / 2)]);
    ZExtDataWrapper::AddExtData(object, kModule, OLESTR("area"), 1.0, true);
  }
  return content;
}

/// What stays behind when one object is copied.
std::vector<std::size_t> BlocksOfACopy() {
  Content content = MakeContent(10);
  content.document.Copy({content.objects[5]});  // tables have room afterwards
  const std::vector<zdm::SmallBlockUse> before = zdm::GetSmallBlockUse();
  blockCount = 0;
  isRecording = true;
  content.document.Copy({content.objects[5]});
  isRecording = false;
  std::vector<std::size_t> sizes;
  for (std::size_t i = 0; i < blockCount; ++i) sizes.push_back(blocks[i].size);
  const std::vector<zdm::SmallBlockUse> after = zdm::GetSmallBlockUse();
  for (std::size_t i = 0; i < after.size(); ++i) {
    sizes.insert(sizes.end(), after[i].count - before[i].count, after[i].size);
  }
  return sizes;
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->UseManualTime();
}

/// The time of `run`, over content made anew.
template <class Run>
void Time(benchmark::State& state, Run run) {
  for (auto _ : state) {
    Content content = MakeContent(static_cast<LONG>(state.range(0)));
    const double start = Worked();
    run(content);
    state.SetIterationTime(Worked() - start);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_Document_Copy(benchmark::State& state) {
  Time(state, [](Content& content) {
    benchmark::DoNotOptimize(content.document.Copy(content.objects).objects.size());
  });
}
BENCHMARK(BM_Document_Copy)->Apply(Sizes);

void BM_Document_Copy_Blocks(benchmark::State& state) {
  const std::vector<std::size_t> sizes = BlocksOfACopy();
  void* last = nullptr;
  Time(state, [&](Content& content) {
    for (std::size_t i = 0; i < content.objects.size(); ++i) {
      for (const std::size_t size : sizes) {
        void* const block = std::malloc(std::max(size, sizeof(last)));
        std::memset(block, 0, size);
        *static_cast<void**>(block) = last;
        last = block;
      }
    }
  });
  while (last != nullptr) std::free(std::exchange(last, *static_cast<void**>(last)));
  state.counters["blocks"] = static_cast<double>(sizes.size());
}
BENCHMARK(BM_Document_Copy_Blocks)->Apply(Sizes);

void BM_Document_CopyTo(benchmark::State& state) {
  Time(state, [](Content& content) {
    zdm::Document other = zdm::Document::Create();
    content.document.CopyTo(other, content.objects);
  });
}
BENCHMARK(BM_Document_CopyTo)->Apply(Sizes);

void BM_Document_Merge_Same(benchmark::State& state) {
  const Content other = MakeContent(static_cast<LONG>(state.range(0)));
  Time(state, [&](Content& content) { content.document.Merge(other.document); });
}
BENCHMARK(BM_Document_Merge_Same)->Apply(Sizes);

void BM_Document_Merge_Replace(benchmark::State& state) {
  const Content other = MakeContent(static_cast<LONG>(state.range(0)));
  Time(state, [&](Content& content) {
    content.document.Merge(other.document, {.counterparts = ZMO_REPLACE, .choose = {}});
  });
}
BENCHMARK(BM_Document_Merge_Replace)->Apply(Sizes);

void BM_Document_Delete(benchmark::State& state) {
  Time(state, [](Content& content) { content.document.Delete(content.managers); });
}
BENCHMARK(BM_Document_Delete)->Apply(Sizes);

}  // namespace
