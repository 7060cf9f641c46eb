#include "platform/geometry/ZGeIOData.h"

ZGeIOData::~ZGeIOData() { SetGeometry(nullptr); }

void ZGeIOData::SetGeometry(IZObject* geometry) {
  IZObject* former = geometry_;
  if (geometry != nullptr) geometry->AddRef();
  geometry_ = geometry;
  if (former != nullptr) former->Release();
}
