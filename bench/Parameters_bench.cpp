// Parameters of objects: reading one by its definition's GUID, beside a sorted vector of structs;
// adding eight of them, and building a property sheet, beside programs that allocate and link heap
// blocks of the same number and sizes.
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/GuidKey.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/module/DllRegisterZModule.h"
#include "zdm/parameters/CZParameter.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/properties/CZPropertyColl.h"
#include "zdm/properties/CZPropertyGroup.h"
#include "zdm/properties/CZPropertyGroupColl.h"
#include "zdm/relations/ZDfValues.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <vector>

namespace {

using namespace zdm::test;
using zdm::GuidKey;

constexpr int kDefinitions = 30;
constexpr int kParameters = 8;  // of each object: two doubles, longs and texts, a bool, a reference
constexpr const OLECHAR* kText = OLESTR("interior wall");

GUID DefinitionKey(int number) {
  return {0xD0000000u | static_cast<unsigned>(number), 0, 0x4000, {0x80, 0, 0, 0, 0, 0, 0, 1}};
}

/// The definition of an object's parameter at `place`: a type of its own, two of some types.
int DefinitionOf(std::size_t object, int place) {
  constexpr std::array<int, kParameters> kFirst = {0, 0, 8, 8, 15, 15, 22, 26};
  constexpr std::array<int, kParameters> kCount = {8, 8, 7, 7, 7, 7, 4, 4};
  const auto at = static_cast<std::size_t>(place);
  const auto second = static_cast<std::size_t>(place % 2);
  return kFirst[at] + static_cast<int>((object * 7 + second) % static_cast<unsigned>(kCount[at]));
}

struct Definitions : TestDatabase {
  explicit Definitions(int count = kDefinitions) {
    DllRegisterZModule();
    Add(manager);
    for (int number = 0; number < count; ++number) {
      const auto property = zdm::MakeObject<IZProperty, CZProperty>();
      property->SetName(OLESTR("Width of the opening"));
      property->SetGUID(DefinitionKey(number));
      property->SetType(3);
      const auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
      definition->SetProperty(property, true);
      definition->SetIndex(number % 5);
      manager->AddDefinition(definition);
    }
    for (LONG index = 5; index > 0; --index) manager->RegisterName(index - 1, OLESTR("Geometry"));
  }

  void AddParameters(IZParameterArray* array, std::size_t object, IZDMObject* target) {
    array->BeginAdd();
    for (int place = 0; place < kParameters; ++place) {
      const GUID key = DefinitionKey(DefinitionOf(object, place));
      const auto number = static_cast<USHORT>(place);
      if (place < 2) {
        array->AddDoubleParameter(manager, &key, number, 1.5 * place, 0x0A);
      } else if (place < 4) {
        array->AddLongParameter(manager, &key, number, place, 0x0A);
      } else if (place < 6) {
        array->AddStringParameter(manager, &key, kText, 0x0A);
      } else if (place < 7) {
        array->AddBoolParameter(manager, &key, true, 0x0A);
      } else {
        array->AddRelationParameter(manager, &key, number, target, true, 0x0A);
      }
    }
    array->EndAdd();
  }

  ZRefPtr<IZDefinitionMgr> manager = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
};

/// xorshift over 64 bits.
struct Random {
  std::size_t Below(std::size_t count) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state % count;
  }
  ULONGLONG state = 0x94D049BB133111EB;
};

/// Which object and which of its two doubles are read; the same in both programs.
template <class Read>
void ReadAll(benchmark::State& state, std::size_t objects, const Read& read) {
  constexpr int kReads = 1000000;
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    Random random;
    double sum = 0;
    for (int i = 0; i < kReads; ++i) {
      const std::size_t object = random.Below(objects);
      const int place = static_cast<int>(random.Below(2));
      sum += read(object, DefinitionKey(DefinitionOf(object, place)));
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kReads);
}

void BM_IZDMObject_GetParamDouble(benchmark::State& state) {
  Definitions db;
  std::vector<ZRefPtr<IZDMObject>> objects(static_cast<std::size_t>(state.range(0)));
  for (auto& object : objects) object = db.MakeObject();
  for (std::size_t i = 0; i < objects.size(); ++i) {
    ZRefPtr<IZParameterArray> array;
    objects[i]->GetParameterArray(array.Out());
    db.AddParameters(array, i, objects[i / 2]);
  }
  ReadAll(state, objects.size(), [&](std::size_t object, const GUID& key) {
    double value = 0;
    objects[object]->GetParamDouble(&key, &value);
    return value;
  });
}
BENCHMARK(BM_IZDMObject_GetParamDouble)
    ->Arg(1)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

struct PlainParameter {
  GuidKey definition;
  ULONG type;
  ULONG flags;
  union {
    double real;
    LONG integer;
    const OLECHAR* text;
  };
};

void BM_IZDMObject_GetParamDouble_Plain(benchmark::State& state) {
  std::vector<std::vector<PlainParameter>> objects(static_cast<std::size_t>(state.range(0)));
  for (std::size_t i = 0; i < objects.size(); ++i) {
    for (int place = 0; place < kParameters; ++place) {
      PlainParameter& made = objects[i].emplace_back();
      made.definition = GuidKey(DefinitionKey(DefinitionOf(i, place)));
      made.type = place < 2 ? 1 : 6;
      made.real = 1.5 * place;
    }
    std::ranges::sort(objects[i], {}, &PlainParameter::definition);
  }
  ReadAll(state, objects.size(), [&](std::size_t object, const GUID& key) {
    const GuidKey wanted(key);
    const auto& parameters = objects[object];
    const auto found =
        std::ranges::lower_bound(parameters, wanted, {}, &PlainParameter::definition);
    return found != parameters.end() && found->definition == wanted && found->type == 1
               ? found->real
               : 0;
  });
}
BENCHMARK(BM_IZDMObject_GetParamDouble_Plain)
    ->Arg(1)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

constexpr int kArrays = 1000;  // made before any is released, so that memory is not just reused

void BM_CZParameterArray_BulkAdd(benchmark::State& state) {
  Definitions db;
  const auto target = db.MakeObject();
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    std::vector<ZRefPtr<IZParameterArray>> arrays(kArrays);
    for (std::size_t i = 0; i < arrays.size(); ++i) {
      arrays[i] = zdm::NewOf<IZParameterArray, CZParameterArray>();
      db.AddParameters(arrays[i], i, target);
    }
    benchmark::DoNotOptimize(arrays.data());
  }
  state.SetItemsProcessed(state.iterations() * kArrays * kParameters);
}
BENCHMARK(BM_CZParameterArray_BulkAdd)->Unit(benchmark::kMicrosecond);

/// A heap block as large as an object of class C, cleared.
template <class C>
struct Block {
  alignas(void*) char bytes[sizeof(C)] = {};
};

struct PlainBlocks {
  std::unique_ptr<Block<CZParameter>> parameter = std::make_unique<Block<CZParameter>>();
  std::unique_ptr<Block<CZPlainSingleReltn>> toDefinition =
      std::make_unique<Block<CZPlainSingleReltn>>();
  std::unique_ptr<Block<ZDfCComBSTR>> value = std::make_unique<Block<ZDfCComBSTR>>();
  std::unique_ptr<Block<CZPlainSingleReltn>> relation;  // of a reference
  std::unique_ptr<OLECHAR[]> text;                      // of a text
  GuidKey key;
  const GUID* definition = nullptr;
};

std::unique_ptr<OLECHAR[]> CopyOf(const OLECHAR* text) {
  const std::size_t length = std::basic_string_view<OLECHAR>(text).size();
  auto copy = std::make_unique<OLECHAR[]>(length + 3);  // length in front, terminator behind
  std::copy_n(text, length, copy.get() + 2);
  return copy;
}

void BM_CZParameterArray_BulkAdd_Blocks(benchmark::State& state) {
  std::vector<std::unique_ptr<GUID>> definitions;
  definitions.reserve(kDefinitions);
  for (int number = 0; number < kDefinitions; ++number) {
    definitions.push_back(std::make_unique<GUID>(DefinitionKey(number)));
  }
  struct Array {
    std::unique_ptr<Block<CZParameterArray>> array = std::make_unique<Block<CZParameterArray>>();
    std::vector<PlainBlocks> parameters;
  };
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    std::vector<Array> arrays(kArrays);
    for (std::size_t i = 0; i < arrays.size(); ++i) {
      auto& parameters = arrays[i].parameters;
      parameters.reserve(kParameters);
      for (int place = 0; place < kParameters; ++place) {
        PlainBlocks& made = parameters.emplace_back();
        const GUID key = DefinitionKey(DefinitionOf(i, place));
        made.definition =
            std::ranges::find(definitions, key, [](const auto& each) { return *each; })->get();
        made.key = GuidKey(key);
        if (place == 4 || place == 5) made.text = CopyOf(kText);
        if (place == 7) made.relation = std::make_unique<Block<CZPlainSingleReltn>>();
      }
      std::ranges::sort(parameters, {}, &PlainBlocks::key);
    }
    benchmark::DoNotOptimize(arrays.data());
  }
  state.SetItemsProcessed(state.iterations() * kArrays * kParameters);
}
BENCHMARK(BM_CZParameterArray_BulkAdd_Blocks)->Unit(benchmark::kMicrosecond);

constexpr int kShown = 50;

void BM_CZParameterArray_PropertySheet(benchmark::State& state) {
  Definitions db(kShown);
  const auto array = zdm::NewOf<IZParameterArray, CZParameterArray>();
  array->BeginAdd();
  for (int number = 0; number < kShown; ++number) {
    const GUID key = DefinitionKey(number);
    array->AddDoubleParameter(db.manager, &key, 1, number, 0x0A);
  }
  array->EndAdd();
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    const auto groups = zdm::NewOf<IZPropertyGroupColl, CZPropertyGroupColl>();
    array->BuildPropertyGroups(0, groups);
    for (LONGLONG pos = groups->GetHeadPosition(); pos != 0;) {
      IZPropertyColl* properties = groups->GetNext(pos)->GetProperties();
      for (LONGLONG at = properties->GetHeadPosition(); at != 0;) {
        array->FillProperties(0, properties->GetNext(at));
      }
    }
    benchmark::DoNotOptimize(groups.Get());
  }
  state.SetItemsProcessed(state.iterations() * kShown);
}
BENCHMARK(BM_CZParameterArray_PropertySheet)->Unit(benchmark::kMicrosecond);

/// Offers each property to the parameters in turn, as the library does, for lack of an index.
void BM_CZParameterArray_PropertySheet_Blocks(benchmark::State& state) {
  struct Property {
    std::unique_ptr<Block<CZProperty>> block = std::make_unique<Block<CZProperty>>();
    std::unique_ptr<OLECHAR[]> name = CopyOf(OLESTR("Width of the opening"));
    GuidKey key;
    double value = 0;
  };
  struct Group {
    std::unique_ptr<Block<CZPropertyGroup>> block = std::make_unique<Block<CZPropertyGroup>>();
    std::unique_ptr<Block<CZPropertyGroupColl>> groups =
        std::make_unique<Block<CZPropertyGroupColl>>();
    std::unique_ptr<Block<CZPropertyColl>> properties = std::make_unique<Block<CZPropertyColl>>();
    std::unique_ptr<OLECHAR[]> name = CopyOf(OLESTR("Geometry"));
    std::vector<Property> members;
  };
  std::vector<std::unique_ptr<PlainParameter>> parameters;
  for (int number = 0; number < kShown; ++number) {
    auto& made = parameters.emplace_back(std::make_unique<PlainParameter>());
    made->definition = GuidKey(DefinitionKey(number));
    made->real = number;
  }
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    std::vector<Group> groups(5);
    for (const auto& parameter : parameters) {
      auto& members = groups[(parameter->definition.high >> 32) % groups.size()].members;
      members.emplace_back().key = parameter->definition;
    }
    for (Group& group : groups) {
      for (Property& property : group.members) {
        const auto served = std::ranges::find_if(
            parameters, [&](const auto& each) { return each->definition == property.key; });
        property.value = (*served)->real;
      }
    }
    benchmark::DoNotOptimize(groups.data());
  }
  state.SetItemsProcessed(state.iterations() * kShown);
}
BENCHMARK(BM_CZParameterArray_PropertySheet_Blocks)->Unit(benchmark::kMicrosecond);

}  // namespace
