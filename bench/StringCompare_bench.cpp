// Name comparison against the plain comparison of strings, and away from Windows against ICU alone.
// One iteration compares one name with every name of a set, as a look-up by name does.
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"

#include <benchmark/benchmark.h>

#include <iterator>
#include <string>
#include <utility>
#include <vector>
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

enum class Ending { Equal, Number, FourDigits, Ideograph };

struct Case {
  const char* label;
  const OLECHAR* prefix;
  Ending ending;  // what follows the prefix, other in every name but for Equal
};

constexpr Case kCases[] = {
    {"short, equal", OLESTR("Wall 1000"), Ending::Equal},
    {"short", OLESTR("Wall "), Ending::FourDigits},
    {"short, several lengths", OLESTR("Wall "), Ending::Number},
    {"long, equal", OLESTR("Curtain wall, north side, level 1000"), Ending::Equal},
    {"long", OLESTR("Curtain wall, north side, level "), Ending::FourDigits},
    {"Chinese, equal", OLESTR("\u5899\u4F53 1000"), Ending::Equal},
    {"Chinese and number", OLESTR("\u5899\u4F53 "), Ending::FourDigits},
    {"Chinese", OLESTR("\u5899\u4F53"), Ending::Ideograph},
    {"accents and number", OLESTR("\u00E9tage sup\u00E9rieur "), Ending::FourDigits},
};

Names MakeNames(const Case& which) {
  Names names;
  for (int i = 0; i < kNames; ++i) {
    WideString text = which.prefix;
    if (which.ending == Ending::FourDigits) text += zdm::FromUtf8(std::to_string(1000 + i * 7));
    if (which.ending == Ending::Number) text += zdm::FromUtf8(std::to_string(i * 7));
    if (which.ending == Ending::Ideograph) text += static_cast<OLECHAR>(0x4E00 + i * 7);
    names.strings.emplace_back(text);
    names.texts.push_back(std::move(text));
  }
  return names;
}

template <typename Compare>
void Run(benchmark::State& state, const Compare& equal) {
  const Case& which = kCases[state.range(0)];
  const Names names = MakeNames(which);
  for (auto _ : state) {
    int found = 0;
    for (std::size_t i = 0; i < names.texts.size(); ++i) found += equal(names, i) ? 1 : 0;
    benchmark::DoNotOptimize(found);
  }
  state.SetItemsProcessed(state.iterations() * kNames);
  state.SetLabel(which.label);
}

void BM_VarBstrCmp_Names(benchmark::State& state) {
  Run(state, [](const Names& names, std::size_t i) {
    return VarBstrCmp(names.strings[0].Get(), names.strings[i].Get(), LOCALE_USER_DEFAULT, 0) ==
           static_cast<HRESULT>(VARCMP_EQ);
  });
}

void BM_VarBstrCmp_Names_Plain(benchmark::State& state) {
  Run(state, [](const Names& names, std::size_t i) { return names.texts[0] == names.texts[i]; });
}

#if !defined(_WIN32)
void BM_VarBstrCmp_Names_Icu(benchmark::State& state) {
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
BENCHMARK(BM_VarBstrCmp_Names_Icu)->DenseRange(0, std::size(kCases) - 1)->ArgName("case");
#endif

BENCHMARK(BM_VarBstrCmp_Names)->DenseRange(0, std::size(kCases) - 1)->ArgName("case");
BENCHMARK(BM_VarBstrCmp_Names_Plain)->DenseRange(0, std::size(kCases) - 1)->ArgName("case");

}  // namespace
