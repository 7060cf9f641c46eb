// A box along the axes, by its two extreme corners, in drawing units.
// A new box is empty: minima 1e20, maxima -1e20. Union is the plain minimum and maximum of the
// corners, so an empty box changes nothing, and a coordinate that is not a number is passed over.
#pragma once

#include "platform/Export.h"
#include "platform/geometry/XYZ.h"

class GeMatrix;

class ZDM_API GeBox {
 public:
  GeBox() { SetEmpty(); }
  GeBox(const XYZ& minPos, const XYZ& maxPos) : min_(minPos), max_(maxPos) {}

  void SetEmpty();
  void SetMinPosCoord(double x, double y, double z) { min_ = {x, y, z}; }
  void SetMaxPosCoord(double x, double y, double z) { max_ = {x, y, z}; }
  void SetMinPosCoord(const XYZ& pos) { min_ = pos; }
  void SetMaxPosCoord(const XYZ& pos) { max_ = pos; }
  const XYZ& GetMinPos() const { return min_; }
  const XYZ& GetMaxPos() const { return max_; }
  /// Six values: minima x, y, z, then maxima x, y, z.
  void GetBox(double box[6]) const;

  /// `box`: minima x, y, z, then maxima x, y, z.
  void UnionBoxToSelf(const double box[6]);
  void UnionBoxToSelf(double minX, double minY, double minZ, double maxX, double maxY, double maxZ);
  void UnionBoxToSelf(const GeBox& other);
  void UnionPointToSelf(const XYZ& point);

  /// True when a minimum lies above its maximum, or a coordinate is not a number.
  bool IsEmpty() const;
  /// Half way between the corners; of no use for an empty box.
  XYZ GetCenter() const { return min_ * 0.5 + max_ * 0.5; }
  /// Edge lengths; zero for an empty box.
  XYZ GetSize() const;
  /// True inside, on the faces, and outside by less than `tolerance`. False for an empty box.
  bool Contains(const XYZ& point, double tolerance = CMT::GetDist()) const;
  /// True when the boxes share a point or are less than `tolerance` apart along each axis. An empty
  /// box shares none.
  bool Intersects(const GeBox& other, double tolerance = CMT::GetDist()) const;
  /// Becomes the smallest box around its own image. An empty box stays as it is.
  void TransformBy(const GeMatrix& matrix);

  friend bool operator==(const GeBox&, const GeBox&) = default;

 private:
  XYZ min_;
  XYZ max_;
};
