// What goes in and out when an object is asked for geometry of any kind: the display context it is
// seen in, and the answer (an IGePt, IGeCurve, IGePlane or another), which the record keeps alive.
#pragma once

#include "platform/core/IZObject.h"

class GiContext;

struct ZDM_API ZGeIOData {
  explicit ZGeIOData(GiContext* context = nullptr) : Context(context) {}
  ZGeIOData(const ZGeIOData&) = delete;
  ZGeIOData& operator=(const ZGeIOData&) = delete;
  ~ZGeIOData();

  /// The answer; borrowed, null when there is none.
  IZObject* GetGeometry() const { return geometry_; }
  /// Takes one reference and gives up the one to the former answer. Null for no answer.
  void SetGeometry(IZObject* geometry);

  GiContext* Context;  ///< borrowed, may be null

 private:
  IZObject* geometry_ = nullptr;
};
