#include "platform/geometry/ZGeIOData.h"

ZGeIOData::ZGeIOData(const ZGeIOData& other) : ZGeIOData(other.Context) {
  SetGeometry(other.geometry_);
}

ZGeIOData& ZGeIOData::operator=(const ZGeIOData& other) {
  Context = other.Context;
  SetGeometry(other.geometry_);
  return *this;
}

ZGeIOData::~ZGeIOData() {
  SetGeometry(nullptr);
}

void ZGeIOData::SetGeometry(IZObject* geometry) {
  IZObject* former = geometry_;
  if (geometry != nullptr) geometry->AddRef();
  geometry_ = geometry;
  if (former != nullptr) former->Release();
}
