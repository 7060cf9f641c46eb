// An object with geometry, asked for the shape of one of its sub-entities in its own coordinates.
// In every operation `sub` is null for the whole object, and `*valid` tells whether the object
// itself stands by the answer; the library believes a false only of an object that is being updated
// (ZOS_AFFECTED). An answer and its validity are independent.
#pragma once

#include "platform/core/IZObject.h"

class GiContext;
class SubID;
struct IGeCurve;
struct IGePlane;
struct ZGeIOData;

struct ZDM_INTERFACE IZDMEntity : IZObject {
  /// `*out`: one reference for the caller, null when `sub` is no curve. It may be the entity's own:
  /// whoever changes it clones it first.
  virtual void GetGeCurve(SubID* sub, GiContext* context, IGeCurve** out, bool* valid) = 0;  // 3
  /// As GetGeCurve, for a plane.
  virtual void GetGePlane(SubID* sub, GiContext* context, IGePlane** out, bool* valid) = 0;  // 4
  /// As GetGeCurve, for geometry of any kind. `data` comes without an answer.
  virtual void GetGeometry(SubID* sub, ZGeIOData& data, bool* valid) = 0;  // 5
};
