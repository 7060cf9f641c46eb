// Name comparison against the plain comparison of strings, and away from Windows against ICU alone.
// One iteration compares one name with every name of a set, as a look-up by name does.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#if !defined(_WIN32)
#include <unicode/ucol.h>
#endif

namespace {

using zdm::Bstr;
using zdm::WideString;

constexpr int kNames = 1000;

struct Names {
  std::vector<WideString> texts;
  std::vector<Bstr> strings;
};

// Prefix and number; every name is met, one of them equal.
Names MakeNames(const WideString& prefix) {
  Names names;
  for (int i = 0; i < kNames; ++i) {
    names.texts.push_back(prefix + zdm::FromUtf8(std::to_string(1000 + i * 7)));
    names.strings.emplace_back(names.texts.back());
  }
  return names;
}

// Every name equal to the one looked for, but not the same object.
Names MakeEqualNames(const WideString& name) {
  Names names;
  for (int i = 0; i < kNames; ++i) {
    names.texts.push_back(name);
    names.strings.emplace_back(name);
  }
  return names;
}

Names MakeCase(int which) {
  switch (which) {
    case 0:
      return MakeNames(OLESTR("Wall "));
    case 1:
      return MakeNames(OLESTR("Curtain wall, north side, level "));
    case 2:
      return MakeEqualNames(OLESTR("Wall 1000"));
    case 3:
      return MakeEqualNames(OLESTR("Curtain wall, north side, level 1000"));
    case 4:
      return MakeNames(OLESTR("\u5899\u4F53 "));
    case 5:
      return MakeNames(OLESTR("\u00E9tage sup\u00E9rieur "));
    default:
      return MakeEqualNames(OLESTR("\u00E9tage sup\u00E9rieur 1000"));
  }
}

template <typename Compare>
void Run(benchmark::State& state, const Compare& equal) {
  const Names names = MakeCase(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    int found = 0;
    for (std::size_t i = 0; i < names.texts.size(); ++i) found += equal(names, i) ? 1 : 0;
    benchmark::DoNotOptimize(found);
  }
  state.SetItemsProcessed(state.iterations() * kNames);
}

void BM_VarBstrCmp_Names(benchmark::State& state) {
  Run(state, [](const Names& names, std::size_t i) {
    return VarBstrCmp(names.strings[0].Get(), names.strings[i].Get(), LOCALE_USER_DEFAULT, 0) ==
           static_cast<HRESULT>(VARCMP_EQ);
  });
}

void BM_WideString_Names(benchmark::State& state) {
  Run(state, [](const Names& names, std::size_t i) { return names.texts[0] == names.texts[i]; });
}

#if !defined(_WIN32)
void BM_IcuCollator_Names(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* collator = ucol_open(nullptr, &status);
  Run(state, [collator](const Names& names, std::size_t i) {
    const WideString& left = names.texts[0];
    const WideString& right = names.texts[i];
    return ucol_strcoll(collator, left.data(), static_cast<int>(left.size()), right.data(),
                        static_cast<int>(right.size())) == UCOL_EQUAL;
  });
  ucol_close(collator);
}
BENCHMARK(BM_IcuCollator_Names)->DenseRange(0, 6)->ArgName("case");
#endif

BENCHMARK(BM_VarBstrCmp_Names)->DenseRange(0, 6)->ArgName("case");
BENCHMARK(BM_WideString_Names)->DenseRange(0, 6)->ArgName("case");

}  // namespace
