// Records outlive their objects while the table lives, in whatever order things end. What would
// dangle or leak is found by the address sanitizer.
#include "platform/geometry/GeMatrix.h"
#include "tests/identity/Records.h"
#include "zdm/identity/COuterPIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

using namespace zdm::test;

ZRefPtr<IZDMObject> NewObject() { return zdm::MakeObject<IZDMObject, CZDMPlainObject>(); }

TEST(Lifetime, ARecordStaysWithoutItsObjectListedOrNot) {
  for (const bool isListed : {true, false}) {
    COIDManager table;
    table.Init();
    auto object = NewObject();
    table.AssignItemID(object, false, false);
    OID* record = object->GetOID();
    const UID uid(nullptr, nullptr, nullptr, object, nullptr);
    if (!isListed) table.Remove(record);
    object = nullptr;
    EXPECT_EQ(record->ID, 1);
    EXPECT_EQ(record->Object, nullptr);
    EXPECT_FALSE(record->JudgeStatus(ZOS_VALID) || record->JudgeStatus(ZOS_ATTACHED));
    EXPECT_EQ(table.GetOIDByID(1), isListed ? record : nullptr);
    EXPECT_FALSE(uid.IsValid());
    EXPECT_EQ(uid.GetValidObject(true), nullptr);
  }
}

TEST(Lifetime, ARecordOfTwoObjectsEndsWithTheLast) {
  auto first = NewObject();
  const auto second = NewObject();
  {
    COIDManager table;
    ListRecord(table, 5);
    table.RegisterSelf(5, second);
    table.RegisterSelf(5, first);
  }
  EXPECT_EQ(second->GetOID()->Object, first.Get());
  first = nullptr;
  EXPECT_EQ(second->GetID(), 5U);
  EXPECT_EQ(second->GetOID()->Object, nullptr);
}

TEST(Lifetime, AnObjectMovesFromTableToTable) {
  auto first = std::make_unique<COIDManager>();
  COIDManager second;
  first->Init();
  second.Init();
  auto object = NewObject();
  first->AssignItemID(object, false, false);
  object->ClearStatus(ZOS_ATTACHED);
  second.AssignItemID(object, false, false);
  EXPECT_TRUE(first->GetOIDs().empty());
  first.reset();
  OID* record = object->GetOID();
  object = nullptr;
  EXPECT_EQ(second.GetOIDByID(1), record);
}

class CountedRecord : public OID {
 public:
  explicit CountedRecord(LONG id) : OID(0, 0, id, nullptr) { ++alive; }
  ~CountedRecord() override { --alive; }
  inline static int alive = 0;
};

TEST(Lifetime, ATableOfForeignIDsDeletesItsRecordsAndLeavesObjectsUsable) {
  const auto object = NewObject();
  object->SetStatus(20);
  {
    COuterPIDManager table;
    table.AddOID(new CountedRecord(5));
    table.AddOID(new CountedRecord(6));
    table.RegisterSelf(5, object);
    const COuterPIDManager copy(table);
  }
  EXPECT_EQ(CountedRecord::alive, 0);
  EXPECT_EQ(object->GetID(), 5U);
  EXPECT_EQ(object->GetOID()->Object, object.Get());
  EXPECT_TRUE(object->JudgeStatus(20));
}

TEST(Lifetime, APlainTableLeavesTheRecordToItsObject) {
  auto object = NewObject();
  {
    COIDManager table;
    table.AddOID(new CountedRecord(5));
    table.RegisterSelf(5, object);
    {
      COIDManager copy(table);
      copy.Remove(object->GetOID());
      const COIDManager another(table);  // NOLINT(performance-unnecessary-copy-initialization)
    }
    EXPECT_EQ(table.GetOIDByID(5), object->GetOID()) << "a copy keeps nothing";
  }
  EXPECT_EQ(object->GetID(), 5U);
  EXPECT_EQ(CountedRecord::alive, 1);
  object = nullptr;
  EXPECT_EQ(CountedRecord::alive, 0);
}

/// Objects, relations, references and paths of one document, which end in random order.
class Churn {
 public:
  explicit Churn(unsigned seed) : random_(seed) {}

  void Step() {
    using Deed = void (Churn::*)();
    constexpr Deed kDeeds[] = {&Churn::Add,           &Churn::Add,       &Churn::Add,
                               &Churn::Refer,         &Churn::Remove,    &Churn::Rebind,
                               &Churn::RemoveDeleted, &Churn::Register,  &Churn::StartAgain,
                               &Churn::EndRelation,   &Churn::EndObject, &Churn::EndObject};
    const auto deed = static_cast<std::size_t>(Below(std::size(kDeeds)));
    (this->*(objects_.empty() ? &Churn::Add : kDeeds[deed]))();
  }

  /// Goes along everything that refers to an object.
  void Touch() {
    std::size_t valid = 0;
    for (const auto& relation : relations_) {
      if (relation->GetValidReltnObject() != nullptr) ++valid;
    }
    for (const UID& uid : uids_) {
      ASSERT_TRUE(!uid.IsValid() || uid.GetReltnOID()->ID != 0);
      GeMatrix placement = uid.GetRefToRootMatrix();
      static_cast<void>(placement);
    }
    for (const PID* path : db_->pids.GetPIDs()) valid += path->IsValid() ? 1 : 0;
    for (const OID* record : db_->oids.GetOIDs()) {
      const OID* found = db_->oids.GetOIDByID(record->ID);
      ASSERT_NE(found, nullptr);
      if (record->Object != nullptr) {
        ASSERT_EQ(record->Object->GetOID(), record);
      } else {
        ASSERT_FALSE(record->JudgeStatus(ZOS_VALID));
      }
    }
    ASSERT_LE(valid, relations_.size() + db_->pids.GetPIDs().size());
  }

 private:
  LONG Below(std::size_t limit) { return static_cast<LONG>(random_() % limit); }
  ZRefPtr<IZDMObject> Any() { return objects_[static_cast<std::size_t>(Below(objects_.size()))]; }

  void Add() {
    auto object = NewObject();
    object->SetOwner(db_);
    if (Below(8) != 0) db_->oids.AssignItemID(object, Below(3) == 0, false);
    objects_.push_back(object);
  }

  /// References to objects that were listed; others end with the object at once.
  void Refer() {
    const auto target = Any();
    const auto through = Any();
    if (!target->IsObjectAttached() || !through->IsObjectAttached()) return;
    relations_.push_back(RelationTo(target));
    if (uids_.size() < 300) uids_.emplace_back(db_, through->GetIZObject(), target, nullptr);
  }

  void RemoveDeleted() {
    Any()->SetStatus(ZOS_DELETED);
    const std::vector<OID*> records = db_->oids.GetOIDs();
    for (OID* record : records) {
      if (record->JudgeStatus(ZOS_DELETED)) db_->oids.Remove(record);
    }
  }

  /// Gives an object another record, of its own or listed as unbound.
  void Rebind() {
    const auto object = Any();
    object->SetOID(new OID(0, 0, 0, nullptr), false);
    object->ClearStatus(ZOS_ATTACHED);
    if (Below(2) != 0) db_->oids.AssignItemID(object, Below(2) == 0, false);
  }

  void Register() {
    const auto object = Any();
    object->ClearStatus(ZOS_ATTACHED);
    db_->oids.AssignItemID(object, Below(2) == 0, false);
  }

  void Remove() { db_->oids.Remove(Any()->GetOID()); }
  void StartAgain() {
    if (Below(200) == 0) db_->oids.Init();
  }
  void EndRelation() {
    if (!relations_.empty()) relations_.erase(relations_.begin() + Below(relations_.size()));
  }
  void EndObject() { objects_.erase(objects_.begin() + Below(objects_.size())); }

  std::mt19937 random_;
  Document db_;
  std::vector<ZRefPtr<IZDMObject>> objects_;
  std::vector<ZRefPtr<IZSingleReltn>> relations_;
  std::vector<UID> uids_;
};

TEST(Lifetime, NothingDanglesInAnyOrderOfEnding) {
  for (const unsigned seed : {1U, 2U, 3U, 4U}) {
    Churn churn(seed);
    for (int step = 0; step < 25000; ++step) {
      churn.Step();
      if (step % 500 == 0) churn.Touch();
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

}  // namespace
