// A placement: an affine map of space, as a matrix of four rows for row vectors.
//   p' = p * M          the point stands on the left, so in A * B the map A is applied first
// The first three rows are the images of the X, Y and Z axes, the fourth is the image of the origin
// (the translation, in drawing units). The fourth column of an affine matrix is 0, 0, 0, 1; it is
// not stored. For an object nested in others, "local to root" is  inner * ... * outer.
#pragma once

#include "platform/Export.h"
#include "platform/geometry/XYZ.h"

class ZDM_API GeMatrix {
 public:
  /// The unit matrix.
  GeMatrix() { SetUnit(); }
  /// Four rows of three columns.
  explicit GeMatrix(const double rows[][3]);
  /// Four rows of four columns. Of the fourth only the last entry counts: when finite and not 0, it
  /// divides the whole matrix. The others, a perspective, are ignored.
  explicit GeMatrix(const double rows[][4]);

  static GeMatrix MakeTranslation(const XYZ& offset);
  /// Right-handed rotation by `angle` radians about the line through `point` along `axis`, which
  /// need not have length 1. The unit matrix when `axis` has no direction.
  static GeMatrix MakeRotation(const XYZ& point, const XYZ& axis, double angle);
  static GeMatrix MakeScale(const XYZ& center, double factor);
  /// One factor for each axis.
  static GeMatrix MakeScale(const XYZ& center, const XYZ& factors);
  /// Reflection in the plane through `point` across `normal`, which need not have length 1. The
  /// unit matrix when `normal` has no direction.
  static GeMatrix MakeMirror(const XYZ& point, const XYZ& normal);
  /// Takes the world's origin and axes to the given ones, whatever their lengths and angles.
  static GeMatrix MakeFrame(const XYZ& origin, const XYZ& xAxis, const XYZ& yAxis,
                            const XYZ& zAxis);

  void SetUnit();
  /// True when every entry of the first three rows is within CMT::GetAngle(), and every coordinate
  /// of the translation within CMT::GetDist(), of the unit matrix.
  bool IsUnit() const { return IsSame(GeMatrix()); }
  /// The same comparison with another matrix.
  bool IsSame(const GeMatrix& other) const;

  /// this = this * other: what this did, then what `other` does.
  void MultiRightToSelf(const GeMatrix& other) { *this = *this * other; }
  /// this = other * this: what `other` does, then what this did.
  void MultiLeftToSelf(const GeMatrix& other) { *this = other * *this; }
  friend ZDM_API GeMatrix operator*(const GeMatrix& first, const GeMatrix& second);

  /// Writes the inverse. False, and `inverse` unchanged, when there is none: the images of the axes
  /// lie within a part in 10^12 of a plane, or an entry is not finite.
  [[nodiscard]] bool GetInverse(GeMatrix& inverse) const;
  /// Ratio of volumes, negative for a map that mirrors.
  double GetDeterminant() const;
  /// True when all lengths change by one factor, which goes to `*scale` (may be null): rotations,
  /// translations, mirrors, uniform scales and their products.
  bool IsSimilarity(double* scale = nullptr) const;

  XYZ TransformPoint(const XYZ& point) const { return TransformVector(point) + rows_[3]; }
  /// Without the translation.
  XYZ TransformVector(const XYZ& vector) const {
    return rows_[0] * vector.x + rows_[1] * vector.y + rows_[2] * vector.z;
  }

  /// Image of the X, Y or Z axis for 0, 1, 2; image of the origin for 3.
  const XYZ& GetRow(int row) const { return rows_[row]; }
  const XYZ& GetTranslation() const { return rows_[3]; }
  /// Four rows of three columns.
  void GetRows(double rows[][3]) const;
  /// Four rows of four columns; the fourth column is 0, 0, 0, 1.
  void GetRows(double rows[][4]) const;

 private:
  XYZ rows_[4];
};
