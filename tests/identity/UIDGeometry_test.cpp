// Where the referred object is seen from the referring one, and what shape it has.
#include "platform/geometry/GeMatrix.h"
#include "platform/geometry/IGePlane.h"
#include "platform/geometry/SubID.h"
#include "platform/geometry/ZGeIOData.h"
#include "tests/identity/Records.h"
#include "tests/platform/geometry/Near.h"
#include "zdm/host/IZDMEntity.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/model/IZDMObjectImpl.h"

namespace zdm::test {
class Placed;
}  // namespace zdm::test

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Placed,
              "7E570000-0000-4000-8000-0000000000A1", IZObject, IZDMObject, IZRelation, IZDMEntity)
ZDM_TEST_CLASS(Plane, IZObject, IGePlane)

namespace zdm::test {

class Plane : public IZObjectImpl<IGePlane> {
  ZDM_OBJECT(Plane)
 public:
  IZObject* Clone() override {
    auto* copy = new Plane;
    copy->ForgetReference();
    return copy->GetIZObject();
  }
  GePlane GetPlane() override { return {}; }
  void SetPlane(const GePlane&) override {}
  bool TransformBy(const GeMatrix&) override { return true; }
};

/// An object with a placement and a plane; copying keeps the placement.
class Placed : public IZDMObjectImpl<IZDMObject>, public IZObjectImpl<IZDMEntity> {
  ZDM_OBJECT(Placed)
 public:
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::Transform;

  IZObject* Clone() override {
    auto* copy = new Placed;
    copy->placement = placement;
    copy->ForgetReference();
    return copy->GetIZObject();
  }
  ULONG AddRef() override { return IncrementCount(); }
  ULONG Release() override { return DecrementCount(); }
  void Transform(const GeMatrix& matrix) override { placement.MultiRightToSelf(matrix); }
  void GetTransform(GeMatrix& matrix) override { matrix = placement; }

  void GetGeCurve(SubID*, GiContext*, IGeCurve** out, bool* valid) override {
    *out = nullptr;
    *valid = word;
  }
  void GetGePlane(SubID* sub, GiContext*, IGePlane** out, bool* valid) override {
    asked = sub;
    *out = plane;
    plane->AddRef();
    *valid = word;
  }
  void GetGeometry(SubID* sub, ZGeIOData& data, bool* valid) override {
    asked = sub;
    data.SetGeometry(plane->GetIZObject());
    *valid = word;
  }

  GeMatrix placement;
  ZRefPtr<Plane> plane = MakeObject<Plane, Plane>();
  SubID* asked = nullptr;
  bool word = false;  // its own word on its geometry
};

ZDM_OBJECT_BODY(Plane)
ZDM_OBJECT_BODY(Placed)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

class Seen : public testing::Test {
 protected:
  ZRefPtr<Placed> MakePlaced(const GeMatrix& placement) {
    auto object = zdm::MakeObject<Placed, Placed>();
    object->placement = placement;
    db->Add(object);
    return object;
  }
  static XYZ Image(const GeMatrix& matrix) { return matrix.TransformPoint({1, 0, 0}); }

  Document db;
  ZRefPtr<Placed> turned =
      MakePlaced(GeMatrix::MakeRotation({0, 0, 0}, {0, 0, 1}, kPi / 2));  // x to y
  ZRefPtr<Placed> moved = MakePlaced(GeMatrix::MakeTranslation({10, 0, 0}));
  ZRefPtr<Placed> target = MakePlaced(GeMatrix());
  std::vector<OID*> path = {turned->GetOID(), moved->GetOID()};
};

TEST_F(Seen, FromOutsideThroughTheInnermostPlacementFirst) {
  GeMatrix matrix;
  db->pids.QueryPID(path)->get_SToP(matrix);
  EXPECT_TRUE(IsNear(Image(matrix), {0, 11, 0}));  // moved, the last, comes first: (11, 0, 0)
  matrix = GeMatrix::MakeTranslation({0, 0, 5});
  PID(1).get_SToP(matrix);
  EXPECT_TRUE(IsNear(Image(matrix), {1, 0, 5}));
}

TEST_F(Seen, AlongEitherPathAndBack) {
  const UID uid(db, &path, nullptr, target, nullptr);
  EXPECT_TRUE(IsNear(Image(uid.GetSelfToRootMatrix()), {0, 11, 0}));
  EXPECT_TRUE(IsNear(uid.GetRootToSelfMatrix().TransformPoint({0, 11, 0}), {1, 0, 0}));
  EXPECT_TRUE(uid.GetRefToRootMatrix().IsUnit());
  const UID other(db, nullptr, &path, target, nullptr);
  EXPECT_TRUE(IsNear(Image(other.GetRefToRootMatrix()), {0, 11, 0}));
  EXPECT_TRUE(IsNear(other.GetRootToRefMatrix().TransformPoint({0, 11, 0}), {1, 0, 0}));
  EXPECT_TRUE(UID().GetRefToRootMatrix().IsUnit());
  turned->placement = GeMatrix::MakeScale({0, 0, 0}, XYZ{0, 1, 1});  // without an inverse
  EXPECT_TRUE(uid.GetRootToSelfMatrix().IsUnit());
}

TEST_F(Seen, AsItselfFromTheSamePlace) {
  EXPECT_EQ(UID(db, nullptr, nullptr, target, nullptr).GetUIDObject(), target.Get());
  EXPECT_EQ(UID(db, &path, &path, target, nullptr).GetUIDObject(), target.Get());
  EXPECT_EQ(UID().GetUIDObject(), nullptr);
}

TEST_F(Seen, AsAMovedCopyFromElsewhere) {
  const std::vector<OID*> self = {moved->GetOID()};
  const std::vector<OID*> ref = {turned->GetOID()};
  IZDMObject* seen = UID(db, &self, &ref, target, nullptr).GetUIDObject();
  ASSERT_NE(seen, nullptr);
  ASSERT_NE(seen, target.Get());
  EXPECT_EQ(seen->GetReferenceCount(), 0U);
  const ZRefPtr<IZDMObject> held = seen;
  GeMatrix placement;
  held->GetTransform(placement);
  EXPECT_TRUE(
      IsNear(Image(placement), {-10, 1, 0}));  // turned to (0, 1, 0), then seen from (10, 0, 0)
  EXPECT_TRUE(target->placement.IsUnit());
}

TEST_F(Seen, WithTheShapeOfItsPart) {
  const SubID face(SubID::kFace);
  const UID top(db, nullptr, nullptr, target, &face);
  bool valid = false;
  ZRefPtr<IGePlane> plane;
  top.Get_Updated_OCS_Valid_GePlane(nullptr, plane.Out(), &valid);
  EXPECT_EQ(plane.Get(), target->plane.Get());
  EXPECT_EQ(target->asked, top.SubID);
  EXPECT_TRUE(valid) << "its own word counts only while it is affected";
  ZGeIOData data;
  top.Get_Updated_OCS_Valid_Geometry(data, nullptr);
  EXPECT_EQ(data.GetGeometry(), target->plane->GetIZObject());
  target->SetStatus(ZOS_AFFECTED);
  for (const bool word : {false, true}) {
    target->word = word;
    valid = !word;
    top.Get_Updated_OCS_Valid_GePlane(nullptr, plane.Out(), &valid);
    EXPECT_EQ(valid, word);
  }
}

TEST_F(Seen, WithACopyOfItsShapeThroughAPath) {
  const UID uid(db, nullptr, &path, target, nullptr);
  ZRefPtr<IGePlane> plane;
  uid.Get_Updated_OCS_Valid_GePlane(nullptr, plane.Out(), nullptr);
  ASSERT_NE(plane, nullptr);
  EXPECT_NE(plane.Get(), target->plane.Get());
  ZGeIOData data;
  uid.Get_Updated_OCS_Valid_Geometry(data, nullptr);
  ASSERT_NE(data.GetGeometry(), nullptr);
  EXPECT_NE(data.GetGeometry(), target->plane->GetIZObject());
  IGeCurve* curve = nullptr;
  uid.Get_Updated_OCS_Valid_GeCurve(nullptr, &curve, nullptr);
  EXPECT_EQ(curve, nullptr) << "it has none";
}

TEST_F(Seen, WithoutShapeWhenNobodyCanBeAsked) {
  const auto plain = db->MakeObject();
  const UID noEntity(db, nullptr, nullptr, plain, nullptr);
  const UID invalid(db, nullptr, nullptr, target, nullptr);
  target->SetObjectValid(false);
  for (const UID* uid : {&noEntity, &invalid}) {
    bool valid = true;
    ZRefPtr<IGePlane> plane;
    uid->Get_Updated_OCS_Valid_GePlane(nullptr, plane.Out(), &valid);
    EXPECT_EQ(plane, nullptr);
    EXPECT_FALSE(valid);
    ZGeIOData data;
    data.SetGeometry(target->plane->GetIZObject());
    uid->Get_Updated_OCS_Valid_Geometry(data, &valid);
    EXPECT_EQ(data.GetGeometry(), nullptr) << "an old answer is taken away";
  }
}

}  // namespace
