// The index of references against walks over the document, while the document changes in every way
// that changes who refers to whom.
#include "document/ReferenceIndex.h"

#include "tests/document/RandomDocument.h"
#include "tests/support/TempFile.h"
#include "tests/support/TestDatabase.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <tuple>

using namespace zdm::test;
using zdm::Document;
using zdm::Reference;

namespace {

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
  /// What changes inside a class of the tests' own, nobody reports.
  bool MapUID(IZDMObject*, IZDMObject*, IZRelation*, UID*) override { return false; }

 private:
  OID* from_;
  OID* to_;
};

class ReferenceIndexTest : public testing::TestWithParam<unsigned> {
 protected:
  ReferenceIndexTest() {
    for (IZDMObject* object : made_.all) {
      auto* parameter = zdm::ViewAs<IZDMParameter>(object);
      auto* definitions = zdm::ViewAs<IZDefinitionMgr>(object);
      auto* category = zdm::ViewAs<IZCategory>(object);
      if (parameter != nullptr) own_ = parameter;
      if (definitions != nullptr) definitions_ = definitions;
      if (category != nullptr) categories_.push_back(category);
      const bool isPlain = zdm::ViewAs<IZDefinition>(object) == nullptr && parameter == nullptr &&
                           zdm::ViewAs<IZDMObjMgr>(object) == nullptr;
      if (isPlain) objects_.push_back(object);
    }
  }

  std::size_t Below(std::size_t bound) { return made_.Below(bound); }
  bool Coin() { return made_.OneIn(2); }
  IZDMObject* Any() { return objects_[Below(objects_.size())]; }
  IZDMObject* AnyOrNone() { return Below(4) == 0 ? nullptr : Any(); }
  OID* AnyRecord() { return Any()->GetOID(); }
  IZCategory* AnyCategory() { return categories_[Below(categories_.size())]; }
  IZDMObjMgr* AnyManager() {
    return Coin() ? document_.Get() : zdm::ViewAs<IZDMObjMgr>(made_.all[0]);
  }

  void AddObject() {
    if (Below(3) == 0) {
      const auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
      category->SetNumber(static_cast<ULONG>(objects_.size()));
      document_.Add(category, AnyManager());
      categories_.push_back(category);
      objects_.push_back(category);
    } else {
      objects_.push_back(document_.Add(OLESTR("object"), AnyManager()));
    }
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
  /// One of two parameters: added, or changed, or taken away.
  void ChangeParameter(const std::function<void(IZParameter*)>& change) {
    const GUID& key = kDefinitionKeys[Below(2)];
    ZRefPtr<IZParameterArray> array;
    Any()->GetParameterArray(array.Out());
    if (IZParameter* parameter = array->GetParameter(key)) {
      if (change) return change(parameter);
      keptParameter_ = parameter;
      array->RemoveByGUID(key);
      return;
    }
    array->BeginAdd();
    array->AddRelationParameter(definitions_, &key, 0, AnyOrNone(), Coin(), 0);
    array->EndAdd();
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
  void Renumber() {
    Any()->SetID(static_cast<ULONG>(document_->GetOIDManager()->QuerySoftID()));
    document_->GetOIDManager()->ReSort();
  }
  void RenumberOwner() {
    IZDMObject* const object = Any();
    if (object->GetOwnerOID() == document_->GetOID()) return;
    const auto former = static_cast<LONG>(object->GetOwnerID());
    object->SetOwnerID(static_cast<ULONG>(document_->GetOIDManager()->QuerySoftID()));
    EXPECT_TRUE(document_.GetReferrers().Of(former).empty());
    document_->GetOIDManager()->ReSort();
  }

  /// The walk's answer to every question.
  void Check() {
    zdm::ReferenceIndex& index = document_->GetReferenceIndex();
    const auto text = [](const std::vector<Reference>& references) {
      std::vector<std::tuple<IZDMObject*, OID*, zdm::ReferenceVia, IZRelation*>> entries;
      entries.reserve(references.size());
      for (const Reference& each : references) {
        entries.emplace_back(each.from, each.to, each.via, each.relation);
      }
      return entries;
    };
    std::vector<OID*> records = document_->GetOIDManager()->GetOIDs();
    records.push_back(document_->GetOID());
    for (const OID* record : records) {
      const std::vector<Reference> references = zdm::ReferencesTo(*document_.Get(), record);
      ASSERT_EQ(text(index.ReferencesTo(record)), text(references)) << record->ID;
      if (document_->GetOIDByID(record->ID) != record) continue;
      std::set<LONG> from;
      for (const Reference& each : references) from.insert(static_cast<LONG>(each.from->GetID()));
      const std::vector<LONG> referrers(from.begin(), from.end());
      ASSERT_TRUE(std::ranges::equal(index.ReferrersOf(record->ID), referrers)) << record->ID;
      const zdm::Referrers::IDs found = index.GetReferrers().Of(record->ID);
      ASSERT_TRUE(std::is_permutation(found.begin(), found.end(), from.begin(), from.end()))
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

  RandomDocument made_{GetParam(), 10};
  Document& document_ = made_.document;
  std::vector<IZDMObject*> objects_;
  std::vector<IZCategory*> categories_;
  IZDefinitionMgr* definitions_ = nullptr;
  IZDMParameter* own_ = nullptr;  // the parameter that is an object itself
  ZRefPtr<IZSingleReltn> kept_;
  ZRefPtr<IZParameter> keptParameter_;
};

TEST_P(ReferenceIndexTest, AnswersLikeAWalkAfterEveryChange) {
  const auto parameter = [&](auto change) { return [this, change] { ChangeParameter(change); }; };
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"add", [&] { AddObject(); }},
      {"relate", [&] { document_.Relate(Any(), Any()); }},
      {"relate to none", [&] { Any()->AddRelation(RelationTo(nullptr)); }},
      {"retarget", [&] { Retarget(); }},
      {"toggle relation", [&] { ToggleRelation(); }},
      {"move relation", [&] { MoveRelation(); }},
      {"relate to category", [&] { RelateToCategory(); }},
      {"parent of a category", [&] { AnyCategory()->SetParentCategory(AnyOrNone()); }},
      {"its reference", [&] { AnyCategory()->SetReference(AnyOrNone()); }},
      {"its members", [&] { AnyCategory()->AddMember(Any()); }},
      {"no members", [&] { AnyCategory()->SetMemberColl(nullptr); }},
      {"parameter", [&] { ChangeParameter(nullptr); }},
      {"its value", parameter([](IZParameter* p) { p->SetLong(7); })},
      {"its target", parameter([&](IZParameter* p) { p->SetRelation(AnyOrNone(), Coin()); })},
      {"its link", parameter([&](IZParameter* p) { p->SetLinkedObject(AnyOrNone()); })},
      {"no parameters", [&] { Any()->ClearParameters(); }},
      {"all", [&] { Any()->SetParameterArray(Any()->PeekParameterArray(), Coin()); }},
      {"definition of the document's parameter", [&] { own_->SetDefinition(AnyOrNone()); }},
      {"its own link", [&] { own_->SetLinkedObject(AnyOrNone()); }},
      {"its own target", [&] { own_->SetRelation(AnyOrNone(), Coin()); }},
      {"no value", [&] { own_->SetValue(nullptr); }},
      {"its element", [&] { own_->SetElement(Any()); }},
      {"remap", [&] { Remap(); }},
      {"current", [&] { AnyManager()->SetCurrent(AnyOrNone()); }},
      {"copy", [&] { Any()->CopyFrom(Any(), 0); }},
      {"add with a hard ID", [&] { AddHard(); }},
      {"delete", [&] { Delete(); }},
      {"toggle object", [&] { ToggleObject(); }},
      {"new ID", [&] { Renumber(); }},
      {"new ID of the owner", [&] { RenumberOwner(); }}};
  Check();
  for (int i = 0; i < 150 && !HasFatalFailure(); ++i) {
    const auto& [name, change] = changes[Below(std::size(changes))];
    SCOPED_TRACE(name);
    change();
    if (Below(3) != 0) Check();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ReferenceIndexTest, testing::Range(1u, 7u));

TEST(ReferenceIndex, IsThereForAnOpenedDocument) {
  auto document = Document::Create();
  IZDMObject* const a = document.Add(OLESTR("a"));
  IZDMObject* const b = document.Add(OLESTR("b"));
  IZDMObject* const c = document.Add(OLESTR("c"));
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
