#include "document/CZDMCircle.h"

#include <algorithm>

ZDM_OBJECT_BODY(CZDMCircle)

std::array<double, zdm::CircleKind::kNumbers> zdm::CircleKind::ToNumbers(const GeArc& circle) {
  std::array<double, kNumbers> numbers;
  std::copy_n(ArcToNumbers(circle).begin(), kNumbers, numbers.begin());
  return numbers;
}

GeArc zdm::CircleKind::FromNumbers(const std::array<double, kNumbers>& numbers) {
  std::array<double, kArcNumbers> arc = {};  // equal angles are the full circle
  std::ranges::copy(numbers, arc.begin());
  return ArcFromNumbers(arc);
}
