#include "zdm/properties/CZPropertyScaleIndex.h"

#include <cmath>

ZDM_OBJECT_BODY(CZPropertyScaleIndex)

namespace {

struct Scale {
  const OLECHAR* label;
  double ratio;
  bool isStandard;
};

constexpr Scale kScales[] = {
#define ZDM_SCALE(label, ratio) {OLESTR(label), ratio, true},
#define ZDM_SCALE_BY_RATIO(label, ratio) {OLESTR(label), ratio, false},
#include "zdm/properties/ScaleLabels.def"
};

}  // namespace

void CZPropertyScaleIndex::CopyFrom(IZProperty* source) {
  if (!TakeFrom(source)) return;
  const auto& from = static_cast<CZPropertyScaleIndex&>(*source);
  entries_.Add(from.entries_);
  added_ += from.entries_.GetCount();
}

bool CZPropertyScaleIndex::GetScaleText(double ratio, BSTR* label) {
  constexpr double kTolerance = 1e-5;
  return entries_.FindLabel([&](double own) { return std::abs(own - ratio) < kTolerance; }, label);
}

void CZPropertyScaleIndex::AddScale(double ratio, const OLECHAR* label) {
  entries_.Add(ratio, zdm::Bstr(label));
  ++added_;
}

void CZPropertyScaleIndex::AddStandardScale(double ratio) {
  constexpr double kTolerance = 1e-4;
  const OLECHAR* label = nullptr;
  for (const Scale& scale : kScales) {
    if (std::abs(scale.ratio - ratio) < kTolerance) {
      label = scale.label;
      break;
    }
  }
  AddScale(ratio, label);
}

void CZPropertyScaleIndex::AddStandardScales() {
  for (const Scale& scale : kScales) {
    if (scale.isStandard) AddStandardScale(scale.ratio);
  }
}

void CZPropertyScaleIndex::AddScales(const double* ratios, LONG count) {
  for (LONG i = 0; i < count; ++i) AddStandardScale(ratios[i]);
}
