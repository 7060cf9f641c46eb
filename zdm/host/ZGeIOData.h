// A request for geometry of any kind and its result.
#pragma once

class GiContext;
struct IZObject;

struct ZGeIOData {
  GiContext* Context = nullptr;  ///< the display context asked for (borrowed, may be null)
  IZObject* Geometry =
      nullptr;  ///< the result: one reference for the caller; null when there is none
};
