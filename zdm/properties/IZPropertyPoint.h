// A point. Each coordinate is known to be the same for all merged sources, or not, on its own.
// Extra 3 is the point's number: which block of coordinates is its own, from 1; -1 for none.
#pragma once

#include "platform/geometry/XYZ.h"
#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyPoint : IZProperty {
  /// All coordinates, uniform or not. False, and the zero point, when the value is no array of
  /// three doubles.
  virtual bool GetPoint(XYZ* out) = 0;          // 62
  virtual void SetPoint(const XYZ& point) = 0;  // 63
  virtual void SetUniformX(bool flag) = 0;      // 64
  virtual bool IsUniformX() = 0;                // 65
  virtual void SetUniformY(bool flag) = 0;      // 66
  virtual bool IsUniformY() = 0;                // 67
  virtual void SetUniformZ(bool flag) = 0;      // 68
  virtual bool IsUniformZ() = 0;                // 69
  /// Two numbers of the host's; neither copied nor stored.
  virtual void GetPair(double* first, double* second) = 0;  // 70
  virtual void SetPair(double first, double second) = 0;    // 71
  /// Takes x, y and z from elements 1 to 3 of the point's block; nothing for a number below 1.
  /// @param coordinates  blocks of four doubles, at least as many as the point's number.
  virtual void SetPointFromArray(const double* coordinates) = 0;  // 72
  /// Changes nothing.
  virtual void CombinePoint(const XYZ& point) = 0;  // 73
};
