// The index of references against walks over the document, while the document changes in every way
// that changes who refers to whom.
#include "document/ReferenceIndex.h"

#include "document/CZDMPlainObject.h"
#include "document/Document.h"
#include "tests/support/TempFile.h"
#include "tests/support/TestDatabase.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>
#include <tuple>

using namespace zdm::test;
using zdm::Document;
using zdm::Reference;

namespace {

constexpr GUID kKeys[] = {zdm::ParseGuid("D0000000-0000-4000-8000-000000000001"),
                          zdm::ParseGuid("D0000001-0000-4000-8000-000000000001")};

/// Replaces one target by another wherever it is offered. Lives on the stack.
class Replacer : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;
  Replacer(OID* from, OID* to) : from_(from), to_(to) {}
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override {
    if (*oid == from_) *oid = to_;
    return false;
  }

 private:
  OID* from_;
  OID* to_;
};

class ReferenceIndexTest : public testing::TestWithParam<int> {
 protected:
  using Change = std::function<void()>;

  ReferenceIndexTest() : random_(static_cast<unsigned>(GetParam())) {
    managers_ = {document_.Get(), document_.AddManager(OLESTR("Walls"))};
    document_.Add(definitions_, nullptr);
    for (const GUID& key : kKeys) {
      const auto property = zdm::MakeObject<IZProperty, CZProperty>();
      property->SetGUID(key);
      const auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
      definition->SetProperty(property, true);
      definitions_->AddDefinition(definition);
    }
    for (int i = 0; i < 12; ++i) AddObject();
    document_.Add(zdm::ViewAs<IZDMObject>(own_.Get()), nullptr);
    for (int i = 0; i < 20; ++i) document_.Relate(Any(), Any());
  }

  std::size_t Below(std::size_t bound) { return random_() % bound; }
  bool Coin() { return Below(2) == 0; }
  IZDMObject* Any() { return objects_[Below(objects_.size())]; }
  IZDMObject* AnyOrNone() { return Below(4) == 0 ? nullptr : Any(); }
  OID* AnyRecord() { return Any()->GetOID(); }
  IZCategory* AnyCategory() { return categories_[Below(categories_.size())]; }

  void AddObject() {
    IZDMObject* added = nullptr;
    if (Below(3) == 0) {
      const auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
      category->SetNumber(static_cast<ULONG>(objects_.size()));
      document_.Add(category, managers_[Below(2)]);
      categories_.push_back(category);
      added = category;
    } else {
      added = document_.Add(OLESTR("object"), managers_[Below(2)]);
    }
    objects_.push_back(added);
  }

  /// A single-target relation of some object; null when it has none.
  ZRefPtr<IZSingleReltn> AnyRelation() {
    IZReltnColl* relations = Any()->GetReltnColl();
    if (relations == nullptr || relations->IsEmpty()) return nullptr;
    const auto index = Below(static_cast<std::size_t>(relations->GetCount()));
    IZRelation* relation = relations->GetAt(relations->FindIndex(index));
    return zdm::ViewAs<IZSingleReltn>(relation);
  }

  void Retarget() {
    const auto relation = AnyRelation();
    if (relation == nullptr) return;
    if (Coin()) {
      relation->SetReltnObj(AnyOrNone());
    } else {
      relation->SetReltnOID(AnyRecord());
    }
  }
  void ToggleRelation() {
    const auto relation = AnyRelation();
    if (relation == nullptr) return;
    if (relation->IsValid()) {
      relation->ClearReltnStatus(ZRS_VALID);
    } else {
      relation->SetReltnStatus(ZRS_VALID);
    }
  }
  /// The relation lives on in the test's hands, and among those of another object.
  void MoveRelation() {
    kept_ = AnyRelation();
    if (kept_ == nullptr) return;
    for (IZDMObject* object : objects_) {
      IZReltnColl* relations = object->GetReltnColl();
      if (relations != nullptr && Coin()) relations->RemoveItem(kept_);
    }
    if (Coin()) Any()->AddRelation(kept_);
  }
  void RelateToCategory() {
    const auto relation = zdm::MakeObject<IZCategoryReltn, CZCategoryReltn>();
    relation->SetReltnObj(AnyCategory());
    Any()->AddRelation(relation);
    const auto below = zdm::MakeObject<IZCategoryReltn, CZCategoryReltn>();
    if (Coin()) Check();
    relation->AddSubReltn(below);
    if (Coin()) Check();
    below->SetReltnObj(AnyCategory());
  }
  void ChangeCategory() {
    IZCategory* category = AnyCategory();
    switch (Below(4)) {
      case 0:
        return category->SetParentCategory(AnyOrNone());
      case 1:
        return category->SetReference(AnyOrNone());
      case 2:
        return category->AddMember(Any());
      default:
        return category->SetMemberColl(nullptr);
    }
  }
  /// One of two parameters: added, given a value, or taken away, perhaps into the test's hands.
  void ChangeParameter() {
    IZDMObject* object = Any();
    const GUID& key = kKeys[Below(2)];
    ZRefPtr<IZParameterArray> array;
    object->GetParameterArray(array.Out());
    IZParameter* parameter = array->GetParameter(key);
    if (parameter == nullptr) {
      array->BeginAdd();
      array->AddRelationParameter(definitions_, &key, 0, AnyOrNone(), Coin(), 0);
      array->EndAdd();
      return;
    }
    switch (Below(6)) {
      case 0:
        return parameter->SetLong(7);
      case 1:
        return parameter->SetRelation(AnyOrNone(), Coin());
      case 2:
        return parameter->SetLinkedObject(AnyOrNone());
      case 3:
        return object->ClearParameters();
      case 4:
        return object->SetParameterArray(Any()->PeekParameterArray(), Coin());
      default:
        keptParameter_ = parameter;
    }
    array->RemoveByGUID(key);
  }
  /// The parameter that is an object itself.
  void ChangeOwnParameter() {
    switch (Below(5)) {
      case 0:
        return own_->SetDefinition(AnyOrNone());
      case 1:
        return own_->SetLinkedObject(AnyOrNone());
      case 2:
        return own_->SetRelation(AnyOrNone(), Coin());
      case 3:
        return own_->SetValue(nullptr);
      default:
        return own_->SetElement(Any());
    }
  }
  void Remap() {
    Replacer replacer(AnyRecord(), AnyRecord());
    for (IZDMObject* object : objects_) object->VisitReferences(object, &replacer);
  }
  void AddHard() {
    const auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
    object->AddRelation(RelationTo(Any()));
    document_->AttachTail(object);
    document_->GetOIDManager()->AssignItemID(object, true, true);
  }
  /// Something, when nothing is in the way.
  void Delete() {
    IZDMObject* object = Any();
    auto* category = zdm::ViewAs<IZCategory>(object);
    if (!document_.Delete({object}).obstacles.empty()) return;
    std::erase(objects_, object);
    std::erase(categories_, category);
    do AddObject();
    while (categories_.empty());
  }
  void ToggleObject() {
    OID* record = AnyRecord();
    if (record->JudgeStatus(ZOS_VALID)) {
      record->ClearStatus(ZOS_VALID, 0);
    } else {
      record->Object->SetObjectValid(true);
    }
  }

  /// The walk's answer to every question.
  void Check() {
    zdm::ReferenceIndex& index = document_->GetReferenceIndex();
    const auto text = [](const std::vector<Reference>& references) {
      std::vector<std::tuple<IZDMObject*, OID*, zdm::ReferenceVia, IZRelation*>> entries;
      for (const Reference& each : references) {
        entries.emplace_back(each.from, each.to, each.via, each.relation);
      }
      return entries;
    };
    std::vector<OID*> records = document_->GetOIDManager()->GetOIDs();
    records.push_back(document_->GetOID());
    for (const OID* record : records) {
      ASSERT_EQ(text(index.ReferencesTo(record)), text(zdm::ReferencesTo(*document_.Get(), record)))
          << record->ID;
    }
    const LONG start = AnyRecord()->ID;
    EXPECT_EQ(index.DependentsOf({&start, 1}), Walked(start, false));
    EXPECT_EQ(index.ClosureOf({&start, 1}), Walked(start, true));
  }

  /// All that lead to `start` or, forwards, that it leads to, by walks.
  std::vector<LONG> Walked(LONG start, bool forwards) {
    std::set<LONG> found = {start};
    std::vector<LONG> open = {start};
    while (!open.empty()) {
      const OID* record = document_->GetOIDByID(open.back());
      open.pop_back();
      std::vector<Reference> references;
      if (!forwards) {
        references = zdm::ReferencesTo(*document_.Get(), record);
      } else if (record->JudgeStatus(ZOS_VALID)) {
        references = zdm::ReferencesOf(record->Object);
      }
      for (const Reference& reference : references) {
        const OID* next = forwards ? reference.to : reference.from->GetOID();
        const bool counts = next->Object != nullptr && next->JudgeStatus(ZOS_VALID);
        if (counts && found.insert(next->ID).second) open.push_back(next->ID);
      }
    }
    found.erase(start);
    return {found.begin(), found.end()};
  }

  std::minstd_rand random_;
  Document document_ = Document::Create();
  std::vector<IZDMObjMgr*> managers_;
  std::vector<IZDMObject*> objects_;
  std::vector<IZCategory*> categories_;
  ZRefPtr<IZDefinitionMgr> definitions_ = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  ZRefPtr<IZSingleReltn> kept_;
  ZRefPtr<IZParameter> keptParameter_;
  ZRefPtr<IZDMParameter> own_ = zdm::MakeObject<IZDMParameter, CZDMParameter>();
};

TEST_P(ReferenceIndexTest, AnswersLikeAWalkAfterEveryChange) {
  const std::pair<const char*, Change> changes[] = {
      {"add", [&] { AddObject(); }},
      {"relate", [&] { document_.Relate(Any(), Any()); }},
      {"relate to none", [&] { Any()->AddRelation(RelationTo(nullptr)); }},
      {"retarget", [&] { Retarget(); }},
      {"toggle relation", [&] { ToggleRelation(); }},
      {"move relation", [&] { MoveRelation(); }},
      {"relate to category", [&] { RelateToCategory(); }},
      {"change category", [&] { ChangeCategory(); }},
      {"parameter", [&] { ChangeParameter(); }},
      {"parameter again", [&] { ChangeParameter(); }},
      {"parameter of the document", [&] { ChangeOwnParameter(); }},
      {"remap", [&] { Remap(); }},
      {"current", [&] { managers_[Below(2)]->SetCurrent(AnyOrNone()); }},
      {"copy", [&] { Any()->CopyFrom(Any(), 0); }},
      {"add with a hard ID", [&] { AddHard(); }},
      {"delete", [&] { Delete(); }},
      {"toggle object", [&] { ToggleObject(); }},
      {"new ID",
       [&] {
         Any()->SetID(static_cast<ULONG>(document_->GetOIDManager()->QuerySoftID()));
         document_->GetOIDManager()->ReSort();
       }},
  };
  while (categories_.empty()) AddObject();
  Check();
  for (int i = 0; i < 100 && !HasFatalFailure(); ++i) {
    const auto& [name, change] = changes[Below(std::size(changes))];
    SCOPED_TRACE(name);
    change();
    if (Below(3) != 0) Check();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ReferenceIndexTest, testing::Range(1, 7));

TEST(ReferenceIndex, IsThereForAnOpenedDocument) {
  auto document = Document::Create();
  IZDMObject* a = document.Add(OLESTR("a"));
  IZDMObject* b = document.Add(OLESTR("b"));
  IZDMObject* c = document.Add(OLESTR("c"));
  document.Relate(b, a);
  document.Relate(c, b);
  document.Relate(a, c);
  document.Save(TempFile("index.zdm"));
  auto opened = Document::Open(document->GetPath());
  const LONG ids[] = {1};
  EXPECT_TRUE(std::ranges::equal(opened.ReferrersOf(1), std::vector<LONG>{2}));
  EXPECT_EQ(opened.DependentsOf(ids), (std::vector<LONG>{2, 3})) << "round the ring once";
  EXPECT_EQ(opened.ClosureOf(ids), (std::vector<LONG>{2, 3}));
  EXPECT_TRUE(opened.ReferrersOf(77).empty());
}

}  // namespace
