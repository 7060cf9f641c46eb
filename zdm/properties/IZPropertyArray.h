// A list of properties that is a property: in practice the points of a polygon, one for each
// vertex. Its value is the number of points, of 16 bits. Coordinates come in blocks of four
// doubles, one for each vertex, of which elements 1 to 3 are x, y and z.
#pragma once

#include "zdm/framework/IZList.h"
#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyArray : IZList<IZProperty, IZPropertyArray, IZProperty> {
  /// Stores the low 16 bits; 0.
  virtual LONG SetPointCount(USHORT count) = 0;  // 93
  /// 0xFFFFFFFF when there is none.
  virtual ULONG GetPointCount() = 0;  // 94
  /// Appends `count` point properties whose extra 2 count from 0; nothing below 1.
  virtual void AddPoints(LONG count, const OLECHAR* name, const OLECHAR* displayName,
                         const GUID& guid) = 0;  // 95
  /// Gives each point its coordinates and sets the number of points; 0. When the list does not have
  /// `count` elements, the number that it has, and nothing changes. Elements that are no points are
  /// passed over.
  virtual ULONG SetPoints(const double* coordinates, ULONG count) = 0;  // 96
};
