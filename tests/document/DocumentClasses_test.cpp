// The document's own classes: registration, paths, and which objects count as the same.
#include "document/CZOptPath.h"
#include "platform/core/ZCore.h"
#include "platform/ole/CAtlException.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"

#include <gtest/gtest.h>

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

TEST(OptPath, GoesFromTheOutermostObjectToTheBottom) {
  TestDatabase db;
  auto a = db.MakeObject();
  auto b = db.MakeObject();
  auto path = zdm::MakeObject<IZOptPath, CZOptPath>();
  EXPECT_EQ(path->GetHeadPosition(), 0);
  EXPECT_EQ(path->GetBottomObject(), nullptr);
  path->Append(nullptr);
  path->Append(a);
  path->Append(b);
  path->Append(a);
  EXPECT_EQ(path->GetCount(), 3);
  EXPECT_EQ(path->GetBottomObject(), a.Get());

  const auto copy = zdm::CloneAs<IZOptPath>(path);
  path = nullptr;
  LONGLONG pos = copy->GetHeadPosition();
  EXPECT_EQ(copy->GetNext(pos), a.Get());
  EXPECT_EQ(copy->GetNext(pos), b.Get());
  EXPECT_EQ(copy->GetNext(pos), a.Get());
  EXPECT_EQ(pos, 0);
  for (const LONGLONG bad : {0, -1, 4}) {
    pos = bad;
    EXPECT_THROW(copy->GetNext(pos), CAtlException) << bad;
  }
}

TEST(OptPath, IsPooledAsTheRecordsOfItsObjects) {
  TestDatabase db;
  auto a = db.MakeObject();
  auto b = db.MakeObject();
  auto path = zdm::MakeObject<IZOptPath, CZOptPath>();
  path->Append(a);
  path->Append(b);
  PID* pooled = db.pids.QueryPID(path);
  EXPECT_EQ(db.pids.FindPID(std::vector<OID*>{a->GetOID(), b->GetOID()}), pooled);
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

TEST(PlainSingleReltn, FindsItsTargetInTheDocumentThatLoadsIt) {
  TestDatabase db;
  auto target = db.MakeObject(nullptr, 9);
  auto relation = zdm::test::RelationTo(target);
  relation->SetReltnTag(3);
  const std::vector<BYTE> bytes = zdm::test::BytesOf(*relation);
  auto loaded = zdm::test::RelationTo(nullptr);
  EXPECT_EQ(zdm::test::LoadBytes(*loaded, bytes, &db), 16u);
  EXPECT_EQ(loaded->GetReltnObject(), target.Get());
  EXPECT_EQ(loaded->GetReltnTag(), 3);
  EXPECT_EQ(zdm::test::LoadBytes(*loaded, bytes), 16u);
  EXPECT_EQ(loaded->GetReltnObject(), nullptr);
}

}  // namespace
