// What the audit finds in a document, and what repairing makes of it.
#include "document/Audit.h"

#include "document/Document.h"
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace zdm::test;
using zdm::Document;

namespace {

std::string TextOf(const std::vector<zdm::Finding>& findings) {
  std::string text;
  for (const zdm::Finding& finding : findings) {
    text += std::string(zdm::NameOf(finding.code)) + ' ' + std::to_string(finding.object);
    text += (finding.place.empty() ? "" : " (" + finding.place + ')') + "; ";
  }
  return text;
}

class AuditTest : public testing::Test {
 protected:
  std::string Findings() { return TextOf(zdm::Audit(*document.Get())); }
  /// Repairs twice; the second time there is nothing to do.
  void Repair() {
    zdm::Repair(*document.Get());
    EXPECT_EQ(TextOf(zdm::Repair(*document.Get())), "");
  }

  Document document = Document::Create();
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));  // 1
  IZDMObjMgr* doors = document.AddManager(OLESTR("Doors"));  // 2
  IZDMObject* wall = document.Add(OLESTR("Wall"), walls);    // 3
  IZDMObject* door = document.Add(OLESTR("Door"), doors);    // 4
  IZSingleReltn* relation = document.Relate(door, wall, ZR_ALL);
};

TEST_F(AuditTest, OfASoundDocumentFindsNothingAndRepairsNothing) {
  EXPECT_EQ(Findings(), "");
  document->SetModified(false);
  EXPECT_TRUE(zdm::Repair(*document.Get()).empty());
  EXPECT_FALSE(document->IsModified());
}

TEST_F(AuditTest, TablesAreSortedAndEveryIDIsOfOneObject) {
  wall->SetID(2);
  EXPECT_EQ(Findings(), "id-doubled 2; ");
  Repair();
  EXPECT_EQ(Findings(), "");
  EXPECT_EQ(doors->GetID(), 2u);
  EXPECT_GT(wall->GetID(), 4u);
  wall->SetID(200);
  EXPECT_EQ(Findings(), "counter-behind 0; ");
  Repair();
  EXPECT_EQ(document.Add(OLESTR("New"))->GetID(), 201u);
  doors->SetID(1000);
  EXPECT_EQ(Findings(), "ids-unsorted 0; counter-behind 0; ");
  Repair();
  EXPECT_EQ(Findings(), "");
}

TEST_F(AuditTest, ListsAndOwnersAreMadeToAgree) {
  doors->AttachTail(wall);
  EXPECT_EQ(Findings(), "many-managers 3; ");
  Repair();
  EXPECT_EQ(walls->GetCount(), 0);
  EXPECT_EQ(doors->GetTail(), wall) << "the owner's list counts";
  wall->SetOwner(walls);
  EXPECT_EQ(Findings(), "owner-disagrees 3 (listed in 2); ");
  Repair();
  EXPECT_EQ(wall->GetOwner(), static_cast<IZDMObject*>(doors));
  const ZRefPtr<IZDMObject> lost = wall;
  doors->RemoveItem(wall);
  EXPECT_EQ(Findings(), "no-manager 3; ");
  Repair();
  IZDMObject* recovered = document->GetTail();
  EXPECT_EQ(wall->GetOwner(), recovered);
  EXPECT_EQ(Findings(), "");
}

TEST_F(AuditTest, RingsOfOwnersAreOpened) {
  IZDMObjMgr* inner = document.AddManager(OLESTR("Inner"), doors);  // 5
  inner->AttachTail(doors);
  document->RemoveItem(doors);
  EXPECT_EQ(Findings(), "owner-cycle 2; owner-cycle 5; ");
  Repair();
  EXPECT_EQ(Findings(), "");
  EXPECT_EQ(doors->GetDatabase(), static_cast<IZDatabase*>(document.Get()));
  EXPECT_EQ(inner->GetOwner(), static_cast<IZDMObject*>(doors));
}

TEST_F(AuditTest, ReferencesThatLeadNowhereAreNamedAndLeftAlone) {
  wall->SetObjectValid(false);
  EXPECT_EQ(Findings(), "reference-to-invalid 4 (relation to 3); ");
  wall->SetStatus(ZOS_DELETED);
  EXPECT_EQ(Findings(), "reference-to-deleted 4 (relation to 3); ");
  wall->ClearStatus(ZOS_DELETED);
  document->GetPIDManager()->QueryPID(wall);
  walls->RemoveAll();
  EXPECT_EQ(Findings(), "reference-to-nothing 4 (relation to 3); ");
  Repair();
  EXPECT_EQ(relation->GetReltnOID()->ID, 3);
  door->GetReltnColl()->RemoveAll();
  EXPECT_EQ(Findings(), "no-object 3; ");
}

/// Whatever owners and lists random hands make of a document, one repair is enough.
TEST(AuditOfChaos, OneRepairIsEnough) {
  std::mt19937 random(11);
  for (int round = 0; round < 200; ++round) {
    auto document = Document::Create();
    std::vector<ZRefPtr<IZDMObject>> objects;
    std::vector<IZDMObjMgr*> managers;
    for (int i = 0; i < 5; ++i) managers.push_back(document.AddManager(OLESTR("m")));
    for (int i = 0; i < 5; ++i) document.Add(OLESTR("o"), managers[random() % 5]);
    for (LONG id = 1; id <= 10; ++id) objects.emplace_back(document.Find(id));
    for (int i = 0; i < 8; ++i) {
      IZDMObject* object = objects[random() % 10];
      switch (random() % 3) {
        case 0:
          managers[random() % 5]->AttachTail(object);
          break;
        case 1:
          object->SetOwner(objects[random() % 10]);
          break;
        default:
          managers[random() % 5]->RemoveItem(object);
          document->RemoveItem(object);
      }
    }
    zdm::Repair(*document.Get());
    ASSERT_EQ(TextOf(zdm::Audit(*document.Get())), "");
    for (IZDMObject* object : objects) {
      ASSERT_EQ(object->GetDatabase(), static_cast<IZDatabase*>(document.Get()));
    }
    for (IZDMObjMgr* manager : managers) manager->RemoveAll();
  }
}

}  // namespace
