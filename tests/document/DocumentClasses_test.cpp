// The document's own classes: registration, paths, and which objects count as the same.
#include "document/CZDMArc.h"
#include "document/CZDMCircle.h"
#include "document/CZDMLnSeg.h"
#include "document/CZOptPath.h"
#include "platform/core/ZCore.h"
#include "platform/ole/CAtlException.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"

#include <gtest/gtest.h>

#include <cstring>

using zdm::test::TestDatabase;

namespace {

TEST(DocumentClasses, AreMadeByTheirIdentifiersAndAnswerWhatTheLibraryAsks) {
  zdm::RegisterDocumentClasses();
  const std::size_t count = ZCore::GetZFactory()->GetClasses().size();
  zdm::RegisterDocumentClasses();
  EXPECT_EQ(ZCore::GetZFactory()->GetClasses().size(), count);
  EXPECT_NE(zdm::CreateAs<IZSingleReltn>(zdm::ParseGuid("69F8E456-23A8-4BF9-A765-5CCF27951F72")),
            nullptr);
  EXPECT_NE(zdm::CreateAs<IZOptPath>(zdm::ParseGuid("1DB813D4-9E9D-4FC6-A01B-014C44778E4B")),
            nullptr);
  auto object = zdm::CreateAs<IZDMObject, CZDMPlainObject>();
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->GetReferenceCount(), 1u);
  EXPECT_NE(zdm::ViewAs<IZDisplay>(object), nullptr);
}

// Curves on display.

template <class C, class Geometry>
struct Shaped {
  Shaped() : object(zdm::MakeObject<IZDMObject, C>()), geometry(zdm::ViewAs<Geometry>(object)) {}
  ZRefPtr<IZDMObject> object;
  Geometry* geometry;
};

GeBox BoxOf(IZDMObject* object) {
  GeBox box;
  object->GetGeBox(&box, nullptr, nullptr);
  return box;
}

TEST(Shapes, ShowTheirCurveAndItsBox) {
  Shaped<CZDMLnSeg, IGeLnSeg> line;
  line.geometry->SetPoints({1, 5, 0}, {4, 1, 0});
  EXPECT_EQ(BoxOf(line.object), GeBox({1, 1, 0}, {4, 5, 0}));
  EXPECT_EQ(line.geometry->GetCurve(0.1).GetLength(), 5.0);
  Shaped<CZDMCircle, IGeCircle> circle;
  circle.geometry->SetCircle({1, 0, 0}, {0, 0, 3}, 2);
  EXPECT_TRUE(circle.geometry->GetCurve(0.1).IsClosed());
  EXPECT_EQ(circle.object->GetSizeX(nullptr, nullptr), 4.0);
  Shaped<CZDMArc, IGeArc> arc;
  arc.geometry->SetArc(GeArc({0, 0, 0}, 2, 0, 1.5));
  EXPECT_EQ(arc.geometry->GetArc().GetEndAngle(), 1.5);
  EXPECT_EQ(arc.geometry->GetCurve(0.1).GetLength(), 3.0);
}

TEST(Shapes, MoveWithTheirPlacementUnlessTheImageIsNoCurveOfTheirKind) {
  Shaped<CZDMLnSeg, IGeLnSeg> line;
  Shaped<CZDMArc, IGeArc> arc;
  line.geometry->SetPoints({0, 0, 0}, {1, 1, 0});
  arc.geometry->SetArc(GeArc({1, 0, 0}, 2, 0, 1));
  const GeMatrix stretch = GeMatrix::MakeScale({0, 0, 0}, {3, 1, 1});
  EXPECT_TRUE(line.geometry->TransformBy(stretch));
  EXPECT_EQ(line.geometry->GetLnSeg().End, (XYZ{3, 1, 0}));
  EXPECT_FALSE(arc.geometry->TransformBy(stretch));
  arc.object->Transform(stretch);
  EXPECT_EQ(arc.geometry->GetArc().GetCenter(), (XYZ{1, 0, 0}));
  arc.object->Transform(GeMatrix::MakeScale({0, 0, 0}, 3));
  EXPECT_EQ(arc.geometry->GetArc().GetRadius(), 6.0);
}

TEST(Shapes, CopyTheirCurveAndDisplayValueFromTheirKindOnly) {
  Shaped<CZDMArc, IGeArc> arc;
  arc.geometry->SetArc(GeArc({1, 2, 3}, 2, 0.5, 1));
  arc.object->SetDisplayValue(7);
  const auto copy = zdm::CloneAs<IZDMObject>(arc.object);
  EXPECT_EQ(copy->GetDisplayValue(), 7u);
  EXPECT_EQ(zdm::ViewAs<IGeArc>(copy)->GetArc().GetCenter(), (XYZ{1, 2, 3}));
  Shaped<CZDMCircle, IGeCircle> circle;
  circle.geometry->SetCircle({9, 9, 9}, {0, 0, 1}, 1);
  circle.object->CopyFrom(arc.object, zdm::kCopyMode);
  EXPECT_EQ(circle.geometry->GetCircle().GetCenter(), (XYZ{9, 9, 9}));
}

TEST(Shapes, AreStoredAsTheirNumbersAndComeBackByteForByte) {
  TestDatabase db;
  Shaped<CZDMLnSeg, IGeLnSeg> line;
  Shaped<CZDMCircle, IGeCircle> circle;
  Shaped<CZDMArc, IGeArc> arc;
  line.geometry->SetPoints({1, 2, 3}, {4, 5, 6});
  circle.geometry->SetCircle({1, 2, 3}, {1, 2, 3}, 4);
  arc.geometry->SetArc(GeArc({1, 2, 3}, {3, 1, 2}, {1, 1, 7}, 4, 0.1, 0.7));
  const struct {
    IZDMObject* object;
    ZRefPtr<IZDMObject> loaded;
    std::size_t numbers;
  } rows[] = {{line.object, zdm::MakeObject<IZDMObject, CZDMLnSeg>(), 6},
              {circle.object, zdm::MakeObject<IZDMObject, CZDMCircle>(), 10},
              {arc.object, zdm::MakeObject<IZDMObject, CZDMArc>(), 12}};
  constexpr std::size_t kOwnData = 41 + 4 + 3;
  for (const auto& row : rows) {
    row.object->SetDisplayValue(0x01020304);
    row.object->SetObjectValid(true);
    auto bytes = zdm::test::BytesOf(*row.object, &db);
    ASSERT_EQ(bytes.size(), kOwnData + 8 * row.numbers + 4);
    double second = 0;
    std::memcpy(&second, &bytes[kOwnData + 8], sizeof(second));
    EXPECT_EQ(second, 2.0);
    EXPECT_EQ(zdm::test::NumberAt(bytes, bytes.size() - 4), 0x01020304);

    row.loaded->SetObjectValid(true);
    for (const int round : {1, 2}) {
      zdm::test::LoadBytes(*row.loaded, bytes, &db);
      EXPECT_EQ(zdm::test::BytesOf(*row.loaded, &db), bytes) << round;
      // Numbers that are none: kept too, and the box does not see them.
      std::memset(&bytes[kOwnData], 0xFF, 8 * row.numbers);
    }
    EXPECT_TRUE(BoxOf(row.loaded).IsEmpty());
    bytes.pop_back();
    EXPECT_THROW(zdm::test::LoadBytes(*row.loaded, bytes, &db), CAtlException);
  }
}

TEST(OptPath, GoesFromTheOutermostObjectToTheBottom) {
  TestDatabase db;
  auto a = db.MakeObject();
  auto b = db.MakeObject();
  auto path = zdm::MakeObject<IZOptPath, CZOptPath>();
  EXPECT_EQ(path->GetHeadPosition(), 0);
  EXPECT_EQ(path->GetBottomObject(), nullptr);
  path->Append(nullptr);
  path->Append(a);
  path->Append(a);
  path->Append(b);
  EXPECT_EQ(path->GetCount(), 3);
  EXPECT_EQ(path->GetBottomObject(), b.Get());
  PID* pooled = db.pids.QueryPID(path);
  EXPECT_EQ(db.pids.FindPID(std::vector<OID*>{a->GetOID(), a->GetOID(), b->GetOID()}), pooled);

  const auto copy = zdm::CloneAs<IZOptPath>(path);
  path = nullptr;
  LONGLONG pos = copy->GetHeadPosition();
  EXPECT_EQ(copy->GetNext(pos), a.Get());
  EXPECT_EQ(copy->GetNext(pos), a.Get());
  EXPECT_EQ(copy->GetNext(pos), b.Get());
  EXPECT_EQ(pos, 0);
  for (const LONGLONG bad : {0, -1, 4}) {
    pos = bad;
    EXPECT_THROW(copy->GetNext(pos), CAtlException) << bad;
  }
}

TEST(PlainObject, IsTheSameInAnotherDocumentByClassAndID) {
  TestDatabase here;
  TestDatabase there;
  auto object = here.MakeObject(OLESTR("wall"), 5);
  auto twin = here.MakeObject(OLESTR("wall"), 6);
  twin->SetID(5);
  auto counterpart = there.MakeObject(OLESTR("other name"), 5);
  auto stranger = there.MakeObject(OLESTR("wall"), 7);
  auto loose = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  loose->SetID(5);
  const struct {
    const char* name;
    IZDMObject* other;
    bool same;
  } rows[] = {{"itself", object, true},
              {"same ID, same document", twin, false},
              {"same ID elsewhere", counterpart, true},
              {"other ID elsewhere", stranger, false},
              {"without document", loose, false},
              {"the other root", &there, false}};
  for (const auto& row : rows) EXPECT_EQ(object->JudgeSame(row.other), row.same) << row.name;
  EXPECT_FALSE(loose->JudgeSame(object.Get()));
}

}  // namespace
