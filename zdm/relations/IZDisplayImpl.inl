#pragma once

#include "platform/geometry/GeBox.h"
#include "platform/geometry/GeMatrix.h"

#include <algorithm>
#include <cmath>

template <class Base>
void IZDisplayImpl<Base>::GetBox(double* box, SubID*, GiContext*) {
  std::fill_n(box, 6, 1e20);
}

template <class Base>
void IZDisplayImpl<Base>::GetGeBox(GeBox* box, SubID* sub, GiContext* context) {
  double values[6];
  this->GetBox(values, sub, context);
  box->SetMinPosCoord(values[0], values[1], values[2]);
  box->SetMaxPosCoord(values[3], values[4], values[5]);
}

template <class Base>
void IZDisplayImpl<Base>::UnionBox(GeBox* box) {
  double values[6];
  this->GetBox(values, nullptr, nullptr);
  box->UnionBoxToSelf(values);
}

template <class Base>
void IZDisplayImpl<Base>::Transform(const double rows[][3]) {
  this->Transform(GeMatrix(rows));
}

template <class Base>
void IZDisplayImpl<Base>::Transform(const double rows[][4]) {
  this->Transform(GeMatrix(rows));
}

template <class Base>
double IZDisplayImpl<Base>::Size(int axis, SubID* sub, GiContext* context) {
  double values[6];
  this->GetBox(values, sub, context);
  return std::abs(values[axis + 3] - values[axis]);
}
