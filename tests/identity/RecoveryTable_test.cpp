// Cleaning and validation of the ID table; objects read back from all streams of a compound file.
#include "tests/identity/RecoverySupport.h"
#include "tests/platform/ole/StorageSupport.h"

ZDM_TEST_CLASS(Watched, IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// Notes its ID when it is asked to check itself, and does what it was told.
class Watched : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Watched)
 public:
  void AssertValid(IZDatabase* database) override {
    asked.push_back(static_cast<LONG>(GetID()));
    if (lists == 0 || database == nullptr) return;
    for (const bool hard : {false, true}) {
      made.push_back(zdm::MakeObject<IZDMObject, CZDMPlainObject>());
      database->GetOIDManager()->AssignItemID(made.back(), hard, false);
    }
  }

  inline static std::vector<LONG> asked;
  int lists = 0;
  std::vector<ZRefPtr<IZDMObject>> made;
};

ZDM_OBJECT_BODY(Watched)

}  // namespace zdm::test

namespace {

using namespace zdm::test;
using IDs = std::vector<LONG>;

TEST(Clean, TakesDeletedRecordsAndTheirObjectsAway) {
  Target target;
  COIDManager& table = target.database->oids;
  const auto inner = NewManager();
  target.database->Add(inner, 13);
  target.manager->AttachTail(inner->GetIZObject());
  for (const LONG id : {20, 21, 22, 23}) {
    auto object = target.database->MakeObject(nullptr, id);
    (id < 22 ? target.manager : inner)->AttachTail(object->GetIZObject());
  }
  for (const LONG id : {11, 20, 23}) table.GetOIDByID(id)->SetStatus(ZOS_DELETED, 0);
  OID* deleted = table.GetOIDByID(20);
  table.SetRootOID(target.manager->GetOID());
  EXPECT_EQ(table.Clean(), 0);
  EXPECT_EQ(IDsOf(table.GetOIDs()), (IDs{5, 10, 12, 13, 21, 22}));
  EXPECT_EQ(target.Attached(), (IDs{13, 21}));
  EXPECT_EQ(inner->GetCount(), 1) << "nested managers too";
  EXPECT_EQ(deleted->Object, nullptr) << "the record lives on, without object";
  EXPECT_EQ(table.GetOIDByID(20), nullptr);
}

TEST(Clean, WithoutDeletedRecordsStillAsksTheRoot) {
  Target target;
  COIDManager& table = target.database->oids;
  auto stray = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  target.manager->AttachTail(stray->GetIZObject());
  stray->SetStatus(ZOS_DELETED);  // not listed
  const std::vector<OID*> before = table.GetOIDs();
  table.SetRootOID(target.manager->GetOID());
  table.Clean();
  EXPECT_EQ(table.GetOIDs(), before);
  EXPECT_TRUE(target.manager->IsEmpty());
  COIDManager().Clean();  // no root
}

class AssertValid : public testing::Test {
 protected:
  AssertValid() { Watched::asked.clear(); }

  ZRefPtr<Watched> Add(LONG id) {
    auto object = zdm::Attached(new Watched);
    db.Add(object.Get(), id);
    return object;
  }

  TestDatabase db;
};

TEST_F(AssertValid, KeepsRecordsWithObjectAndAsksTheValidOnes) {
  const auto first = Add(7);
  const auto second = Add(3);
  second->SetObjectValid(false);
  ListRecord(db.oids, 9);
  db.oids.AssertValid();
  EXPECT_EQ(Watched::asked, (IDs{7}));
  EXPECT_EQ(IDsOf(db.oids.GetOIDs()), (IDs{3, 7}));
}

TEST_F(AssertValid, WithoutAnyObjectChangesNothing) {
  ListRecord(db.oids, 4);
  ListRecord(db.oids, 9);
  db.oids.AssertValid();
  EXPECT_EQ(IDsOf(db.oids.GetOIDs()), (IDs{4, 9}));
  COIDManager().AssertValid();
}

TEST_F(AssertValid, KeepsWhatObjectsListMeanwhileAndTheOrder) {
  const auto first = Add(-3);
  const auto second = Add(4);
  first->lists = second->lists = 1;
  ListRecord(db.oids, 9);
  db.oids.SetIDRange();
  db.oids.AssertValid();
  EXPECT_EQ(Watched::asked, (IDs{-3, 4})) << "the new ones are not asked";
  EXPECT_EQ(IDsOf(db.oids.GetOIDs()), (IDs{-5, -4, -3, 4, 10, 11}));
  EXPECT_EQ(db.oids.GetOIDByID(-5)->Object, second->made[1].Get());
}

constexpr LONG kOwner = Target::kManager;

TEST(ReadStorage, ReadsEveryStreamOfTheTree) {
  const Storage root = CreateAt(FreshPath("tree"));
  AddStream(root.Get(), OLESTR("a"), Plain(10, kOwner));
  {
    const Storage inner = AddStorage(root.Get(), OLESTR("b"));
    AddStream(inner.Get(), OLESTR("x"), Bytes(100));  // nothing but zeros
    AddStream(inner.Get(), OLESTR("y"), Plain(11, kOwner));
  }
  AddStream(root.Get(), OLESTR("c"), Plain(12, kOwner) + Plain(13, kOwner));
  Target target({10, 11, 12, 13});
  EXPECT_EQ(target.database->oids.ReadStorage(root.Get()), 1);
  EXPECT_EQ(target.Attached(), (IDs{10, 11, 12, 13}));
}

TEST(ReadStorage, AnswersOneForAnEmptyTree) {
  Target target;
  EXPECT_EQ(target.database->oids.ReadStorage(CreateAt(FreshPath("empty")).Get()), 1);
}

TEST(ReadStorage, LeavesOutWhatIsInUse) {
  const Storage root = CreateAt(FreshPath("busy"));
  AddStream(root.Get(), OLESTR("a"), Plain(10, kOwner));
  AddStream(root.Get(), OLESTR("b"), Plain(11, kOwner));
  const Stream open = OpenStream(root.Get(), OLESTR("a"));
  Target target;
  EXPECT_EQ(target.database->oids.ReadStorage(root.Get()), 1);
  EXPECT_EQ(target.Attached(), (IDs{11}));
}

TEST(ReadStorage, DepthIsBounded) {
  const Storage root = CreateAt(FreshPath("deep"));
  std::vector<Storage> levels = {root};
  for (int depth = 1; depth < 300; ++depth) {
    levels.push_back(AddStorage(levels.back().Get(), OLESTR("s")));
    if (depth == 255) AddStream(levels.back().Get(), OLESTR("t"), Plain(10, kOwner));
    if (depth == 256) AddStream(levels.back().Get(), OLESTR("t"), Plain(11, kOwner));
  }
  while (levels.size() > 1) levels.pop_back();
  Target target;
  EXPECT_EQ(target.database->oids.ReadStorage(root.Get()), 1);
  EXPECT_EQ(target.Attached(), (IDs{10}));
}

}  // namespace
