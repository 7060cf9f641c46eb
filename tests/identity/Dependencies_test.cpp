// Who refers to an object, by what, and whether the object may be deleted.
#include "tests/identity/Records.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/relations/CZReltnColl.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace zdm::test;

/// A document with one manager and, in it, objects named by the order in which they were made.
struct Managed {
  Managed() {
    db->oids.Init();
    db->Add(manager);
    for (auto& object : objects) {
      object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
      manager->AddTail(object);
    }
  }
  Managed(const Managed&) = delete;
  Managed& operator=(const Managed&) = delete;
  ~Managed() { manager->RemoveAll(); }

  ZRefPtr<IZSingleReltn> Refer(int from, int to, bool diffusible = true) {
    auto reltn = RelationTo(objects[to]);
    reltn->SetReltnDiffusible(diffusible);
    objects[from]->AddRelation(reltn);
    return reltn;
  }
  std::string ReltnObjs(eZRelation kind, int target) {
    const auto found = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
    EXPECT_EQ(db->oids.GetReltnObjs(kind, objects[target], found), 0);
    std::string names;
    for (LONGLONG pos = found->GetHeadPosition(); pos != 0;) {
      IZDMObject* object = found->GetNext(pos);
      for (int i = 0; i < 4; ++i) names += objects[i] == object ? std::to_string(i) : "";
    }
    return names;
  }

  Document db;
  const ZRefPtr<IZDMObjMgr> manager = zdm::MakeObject<IZDMObjMgr, CZDMObjMgr>();
  ZRefPtr<IZDMObject> objects[4];
};

class Dependencies : public testing::Test, protected Managed {};

TEST_F(Dependencies, NameTheValidObjectsThatReferInTableOrder) {
  Refer(3, 0, false);
  Refer(2, 0);
  Refer(0, 0);
  Refer(1, 2);
  EXPECT_EQ(ReltnObjs(ZR_ALL, 0), "023") << "itself counts";
  EXPECT_EQ(ReltnObjs(ZR_DIFFUSIBLE, 0), "02");
  EXPECT_EQ(ReltnObjs(ZR_NONDIFFUSIBLE, 0), "3");
  EXPECT_EQ(ReltnObjs(ZR_ALL, 1), "") << "owning the object is no reference";
  objects[2]->SetObjectValid(false);
  EXPECT_EQ(ReltnObjs(ZR_ALL, 0), "03");
}

TEST_F(Dependencies, CountForOtherValidObjectsByDiffusibleRelations) {
  Refer(0, 0);
  Refer(1, 0, false);
  EXPECT_EQ(db->oids.IsDependByOtherObjs(objects[0]), 0);
  Refer(2, 0);
  EXPECT_EQ(db->oids.IsDependByOtherObjs(objects[0]), 1);
  objects[2]->ClearOptionAllowed(zdm::kReferencesCount);
  EXPECT_EQ(db->oids.IsDependByOtherObjs(objects[0]), 1) << "the option mask is not asked";
  objects[2]->SetObjectValid(false);
  EXPECT_EQ(db->oids.IsDependByOtherObjs(objects[0]), 0);
}

TEST_F(Dependencies, RecordRelationsOfValidAndOtherObjects) {
  const auto first = Refer(3, 0);
  const auto second = Refer(1, 0);
  Refer(1, 2);
  Refer(2, 0, false);
  objects[3]->SetObjectValid(false);
  const auto relations = zdm::MakeObject<IZReltnColl, CZReltnColl>();
  const auto out = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
  EXPECT_EQ(db->oids.GetRelations(ZR_DIFFUSIBLE, objects[0], relations, out), 0);
  ASSERT_EQ(relations->GetCount(), 2);
  EXPECT_EQ(relations->GetHead(), second);
  EXPECT_EQ(relations->GetTail(), first);
  EXPECT_TRUE(out->IsEmpty()) << "the recorder ends no walk";
  EXPECT_EQ(db->oids.GetRelations(ZR_ALL, objects[0], objects[1]->GetReltnColl(), out), 0);
  EXPECT_EQ(objects[1]->GetReltnColl()->GetCount(), 5) << "also into what is walked";
}

TEST_F(Dependencies, DecideWhetherAnObjectMayBeDeleted) {
  const struct {
    const char* what;
    void (*change)(Managed&);
    int answer;
  } rows[] = {
      {"referred to", [](Managed&) {}, 0},
      {"hard ID",
       [](Managed& t) {
         t.objects[0]->SetID(static_cast<ULONG>(-5));
         t.objects[0]->SetOwner(nullptr);
       },
       0},
      {"no owner", [](Managed& t) { t.objects[0]->SetOwner(nullptr); }, 1},
      {"the owner is no manager", [](Managed& t) { t.objects[0]->SetOwner(t.objects[3]); }, 1},
      {"not kept while referenced",
       [](Managed& t) { t.objects[0]->ClearOptionAllowed(0x0010000000000000); }, 1},
      {"current, though not kept",
       [](Managed& t) {
         t.objects[0]->ClearOptionAllowed(0x0010000000000000);
         t.manager->SetCurrent(t.objects[0]);
       },
       0},
      {"another is current",
       [](Managed& t) {
         t.objects[1]->GetReltnColl()->RemoveAll();
         t.manager->SetCurrent(t.objects[3]);
       },
       1},
      {"the reference does not count",
       [](Managed& t) { t.objects[1]->ClearOptionAllowed(0x0020000000000000); }, 1},
      {"by an invalid object", [](Managed& t) { t.objects[1]->SetObjectValid(false); }, 1},
      {"by an object that is gone from the table",
       [](Managed& t) { t.db->oids.Remove(t.objects[1]->GetOID()); }, 1},
      {"through a relation that is not diffusible",
       [](Managed& t) { t.objects[1]->GetReltnColl()->GetHead()->SetReltnDiffusible(false); }, 1},
      {"by itself",
       [](Managed& t) {
         t.objects[1]->GetReltnColl()->RemoveAll();
         t.Refer(0, 0);
       },
       1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Managed fresh;
    fresh.Refer(1, 0);
    fresh.Refer(0, 2);
    row.change(fresh);
    EXPECT_EQ(fresh.db->oids.JudgeDelete(fresh.objects[0]), row.answer);
  }
}

}  // namespace
