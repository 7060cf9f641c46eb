// Who holds the answer to a question for geometry.
#include "platform/geometry/ZGeIOData.h"

#include "platform/geometry/IGePlane.h"

#include <gtest/gtest.h>

namespace {

class Plane final : public IGePlane {
 public:
  explicit Plane(int& alive) : alive_(alive) { ++alive_; }
  Plane(const Plane&) = delete;
  Plane& operator=(const Plane&) = delete;
  ~Plane() override { --alive_; }

  ULONG Release() override { return DecrementCount(); }
  ULONG AddRef() override { return IncrementCount(); }
  IZObject* Clone() override { return nullptr; }
  GePlane GetPlane() override { return plane_; }
  void SetPlane(const GePlane& plane) override { plane_ = plane; }
  bool TransformBy(const GeMatrix& matrix) override { return plane_.TransformBy(matrix); }

 private:
  int& alive_;
  GePlane plane_;
};

TEST(ZGeIOData, KeepsItsAnswerAliveAndLetsItGo) {
  int alive = 0;
  auto* plane = new Plane(alive);
  {
    ZGeIOData data;
    data.SetGeometry(plane);
    plane->Release();
    data.SetGeometry(data.GetGeometry());
    EXPECT_EQ(plane->GetReferenceCount(), 1u);
    auto* other = new Plane(alive);
    data.SetGeometry(other);
    other->Release();
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

}  // namespace
