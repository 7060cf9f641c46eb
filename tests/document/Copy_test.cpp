// Copies inside a document and into another one: what they refer to, and what the report says.
#include "document/Copy.h"

#include "document/Audit.h"
#include "document/CZDMMaterial.h"
#include "document/CZPlainSingleReltn.h"
#include "document/Meaning.h"
#include "tests/document/DocumentSupport.h"
#include "tests/document/RandomDocument.h"
#include "tests/support/TestDatabase.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/relations/CZReltnColl.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

using namespace zdm::test;
using zdm::Copies;
using zdm::CopyObstacle;
using zdm::Document;
using zdm::ReferenceFate;
using zdm::Refusal;

namespace {

std::string TextOf(const std::vector<zdm::LeadingOut>& references) {
  std::string text;
  for (const auto& [from, to, via, fate] : references) {
    text += LinkOf(from, to, via) + "=~-"[static_cast<int>(fate)] + ' ';
  }
  return text;
}

std::string TextOf(const std::vector<zdm::CopiedObject>& objects) {
  std::string text;
  for (const auto& [original, copy] : objects) {
    text += std::to_string(IDOf(original)) + '>' + std::to_string(IDOf(copy)) + ' ';
  }
  return text;
}

/// What the audit finds, without the IDs.
std::multiset<zdm::FindingCode> CodesOf(const Document& document) {
  std::multiset<zdm::FindingCode> codes;
  for (const zdm::Finding& finding : zdm::Audit(*document.Get())) codes.insert(finding.code);
  return codes;
}

bool IsThere(const OID* record) {
  return record->Object != nullptr && record->JudgeStatus(ZOS_VALID);
}

std::map<const OID*, LONG> NewIDsOf(const Copies& copies) {
  std::map<const OID*, LONG> ids;
  for (const auto& [original, copy] : copies.objects) ids[original->GetOID()] = IDOf(copy);
  return ids;
}

/// The references that the report has to name: those out of the set that a walk meets.
std::string ExpectedOut(const Copies& copies, const std::map<const OID*, LONG>& newIDs) {
  std::string text;
  for (const auto& [original, copy] : copies.objects) {
    for (const zdm::Reference& reference : zdm::ReferencesOf(original)) {
      if (newIDs.contains(reference.to)) continue;
      text += std::to_string(IDOf(original)) + '>' + std::to_string(reference.to->ID) + ' ';
    }
  }
  return text;
}

std::string NamedOut(const Copies& copies, const std::map<const OID*, LONG>& newIDs) {
  std::string text;
  for (const zdm::LeadingOut& reference : copies.leadingOut) {
    if (newIDs.contains(reference.to)) {
      EXPECT_EQ(reference.fate, ReferenceFate::kCut) << "lost together with one that leads out";
      continue;
    }
    text += std::to_string(IDOf(reference.from)) + '>' + std::to_string(reference.to->ID) + ' ';
  }
  return text;
}

TEST(Copy, OfAnySetIsSoundAndLikeTheOriginals) {
  for (unsigned seed = 0; seed < kTrials; ++seed) {
    RandomDocument made(seed);
    auto& document = made.document;
    const std::string before = ShapesOf(*document.Get());
    const auto codes = CodesOf(document);
    const Copies copies = document.Copy(made.SomeOf());
    const auto newIDs = NewIDsOf(copies);
    EXPECT_TRUE(copies.leftOut.empty());
    const auto expected = [&newIDs](const OID* record) {
      const auto found = newIDs.find(record);
      return found != newIDs.end() ? found->second : IsThere(record) ? record->ID : 0;
    };
    for (const auto& [original, copy] : copies.objects) {
      EXPECT_EQ(ShapeOf(copy), ShapeOf(original, expected));
      const LONG owner = expected(original->GetOwnerOID());
      EXPECT_EQ(IDOf(copy->GetOwner()), owner);
    }
    EXPECT_EQ(NamedOut(copies, newIDs), ExpectedOut(copies, newIDs));
    EXPECT_EQ(CodesOf(document), codes) << "an audit has no new finding";
    EXPECT_EQ(ShapesOf(*document.Get()).substr(0, before.size()), before) << "originals stay";
    ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
  }
}

TEST(CopyTo, AnotherDocumentLeavesNoReferenceToTheFirst) {
  for (unsigned seed = 0; seed < kTrials; ++seed) {
    RandomDocument target(seed + 1, 2);
    const auto codes = CodesOf(target.document);
    {
      RandomDocument source(seed);
      const std::string before = ShapesOf(*source.document.Get());
      const Copies copies = source.document.CopyTo(target.document, source.SomeOf());
      const auto newIDs = NewIDsOf(copies);
      const auto expected = [&](const OID* record) {
        const auto found = newIDs.find(record);
        if (found != newIDs.end()) return found->second;
        if (record->ID == -1) return LONG{-1};
        const auto meaning = IsThere(record) ? zdm::MeaningOf(*record->Object) : std::string();
        const auto same = std::ranges::find_if(target.all, [&meaning](IZDMObject* object) {
          return !meaning.empty() && zdm::MeaningOf(*object) == meaning;
        });
        return same != target.all.end() ? IDOf(*same) : 0;
      };
      for (const auto& [original, copy] : copies.objects) {
        EXPECT_EQ(copy->GetDatabase(), static_cast<IZDatabase*>(target.document.Get()));
        EXPECT_EQ(ShapeOf(copy), ShapeOf(original, expected));
      }
      EXPECT_EQ(ShapesOf(*source.document.Get()), before);
    }
    EXPECT_EQ(CodesOf(target.document), codes);
    ShapesOf(*target.document.Get());  // looks at every record that is left
    ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
  }
}

/// Two managers; in the first a and b, where a refers to b, c and the second manager.
class CopyReport : public testing::Test {
 protected:
  CopyReport() {
    for (IZDMObject* to : {b, c, static_cast<IZDMObject*>(second)}) document.Relate(a, to);
    first->SetCurrent(c);
  }

  Document document = Document::Create();
  IZDMObjMgr* first = document.AddManager(OLESTR("First"));    // 1
  IZDMObjMgr* second = document.AddManager(OLESTR("Second"));  // 2
  IZDMObject* a = document.Add(OLESTR("a"), first);            // 3
  IZDMObject* b = document.Add(OLESTR("b"), first);            // 4
  IZDMObject* c = document.Add(OLESTR("c"));                   // 5
};

TEST_F(CopyReport, NamesCopiesAndWhatLeadsOut) {
  const Copies copies = document.Copy({b, first, b});
  EXPECT_EQ(TextOf(copies.objects), "1>6 3>7 4>8 ");
  EXPECT_EQ(TextOf(copies.leadingOut), "1>5c= 3>5r= 3>2r= ");
  EXPECT_EQ(zdm::ViewAs<IZDMObjMgr>(document.Find(6))->GetCurrent(), c);
  EXPECT_EQ(document->GetTail(), document.Find(6));
  EXPECT_TRUE(document->IsModified());
}

TEST_F(CopyReport, NamesWhatIsLostOnTheWayToAnotherDocument) {
  auto other = Document::Create();
  IZDMObjMgr* there = other.AddManager(OLESTR("There"));
  document.Relate(b, document.Get());
  const Copies copies = document.CopyTo(other, {a, b}, there);
  EXPECT_EQ(TextOf(copies.objects), "3>2 4>3 ");
  EXPECT_EQ(TextOf(copies.leadingOut), "3>5r- 3>2r- 4>-1r~ ");
  EXPECT_EQ(there->GetCount(), 2);
  EXPECT_TRUE(other.ReferencesOf(other.Find(2)).size() == 1);
}

TEST_F(CopyReport, LeadsToWhatMeansTheSameInTheOtherDocument) {
  auto other = Document::Create();
  other.Add(OLESTR("x"));
  for (const Document* each : {&document, &other}) {
    const auto material = zdm::MakeObject<IZDMObject, CZDMMaterial>();
    material->SetName(OLESTR("Steel"));
    const auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
    category->SetNumber(7);
    each->Get()->AddTail(material);
    each->Get()->AddTail(static_cast<IZDMObject*>(category));
  }
  document.Relate(b, document.Find(6));
  document.Relate(b, document.Find(7));
  EXPECT_EQ(TextOf(document.CopyTo(other, {b}).leadingOut), "4>6r~ 4>7r~ ");
  EXPECT_EQ(other.ReferencesTo(other.Find(2)).size(), 1u);
  EXPECT_EQ(other.ReferencesTo(other.Find(3)).size(), 1u);
}

TEST_F(CopyReport, BringsDefinitionsThatAreMissingThere) {
  const GUID key = zdm::ParseGuid("D0000000-0000-4000-8000-000000000007");
  const auto definitions = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  document.Add(definitions.Get(), nullptr);  // 6
  definitions->RegisterName(3, OLESTR("Sizes"));
  const auto property = zdm::NewOf<IZProperty, CZProperty>();
  property->SetGUID(key);
  const auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
  definition->SetProperty(property, true);
  definition->SetIndex(3);
  definitions->AddDefinition(definition);  // 7
  ZRefPtr<IZParameterArray> array;
  b->GetParameterArray(array.Out());
  array->BeginAdd();
  array->AddDoubleParameter(definitions, &key, 1, 2.5, 0);
  array->EndAdd();
  for (const bool hasManager : {false, true}) {
    auto other = Document::Create();
    if (hasManager) other.Add(zdm::MakeObject<IZDMObject, CZDefinitionMgr>(), nullptr);
    const Copies copies = document.CopyTo(other, {b});
    EXPECT_EQ(TextOf(copies.objects), hasManager ? "4>2 7>3 " : "4>1 6>2 7>3 ");
    EXPECT_EQ(TextOf(copies.leadingOut), "");
    IZParameter* parameter = copies.objects[0].copy->GetParameter(key);
    ASSERT_NE(parameter, nullptr);
    EXPECT_EQ(zdm::ViewAs<IZDMObject>(parameter->GetDefinition()), other.Find(3));
    auto* there = zdm::ViewAs<IZDefinitionMgr>(other.Find(3)->GetOwner());
    EXPECT_EQ(IDOf(there), hasManager ? 1 : 2);
    zdm::Bstr name;
    there->GetNameByKey(3, name.Out());
    EXPECT_EQ(name.View(), OLESTR("Sizes"));
    const Copies again = document.CopyTo(other, {b});
    EXPECT_EQ(TextOf(again.objects), "4>4 ");
    EXPECT_EQ(TextOf(again.leadingOut), "4>7p~ ");
  }
}

TEST_F(CopyReport, ExtendedDataComesAlongAndIsTheCopysOwn) {
  const GUID key = zdm::ParseGuid("E0000000-0000-4000-8000-000000000001");
  const auto item = zdm::MakeObject<IZExtDataAccess, CZExtDataObj>();
  item->SetName(OLESTR("area"));
  a->SetExtData(key, item);
  document.Copy({a});
  IZDMObject* copy = document.Find(6);
  ASSERT_NE(copy->GetExtData(key, OLESTR("area")), nullptr);
  EXPECT_NE(copy->GetExtData(key, OLESTR("area")), a->GetExtData(key, OLESTR("area")));
}

TEST_F(CopyReport, WhatCannotBeCopiedIsNamedAndTheRestIsCopied) {
  const auto loose = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto other = Document::Create();
  IZDMObject* foreign = other.Add(OLESTR("x"));
  c->SetObjectValid(false);
  const ZRefPtr<IZDMObjMgr> held = second;
  document->RemoveItem(second);  // and nobody owns it
  second->SetOwnerOID(nullptr);
  const Copies copies = document.Copy({nullptr, loose, foreign, document.Get(), c, second, b});
  std::string left;
  for (const auto& [object, why] : copies.leftOut) left += std::to_string(static_cast<int>(why));
  EXPECT_EQ(left, "00123");
  EXPECT_EQ(TextOf(copies.objects), "4>6 ");
}

TEST_F(CopyReport, RefusesDocumentsThatItCannotCopyBetween) {
  auto other = Document::Create();
  auto third = Document::Create();
  IZDMObjMgr* elsewhere = third.AddManager(OLESTR("m"));
  const LONG before = other->GetCount();
  EXPECT_EQ(document.CopyTo(document, {a}).refusal, Refusal::kSameDocument);
  EXPECT_EQ(document.CopyTo(other, {a}, elsewhere).refusal, Refusal::kNotInTarget);
  EXPECT_EQ(other->GetCount(), before);
}

/// Asks for a copy while its document is being closed.
class AskingAtTheEnd : public CZDMPlainObject {
 public:
  AskingAtTheEnd(CZDocument& document, Refusal& refusal) : document_(document), refusal_(refusal) {}
  ~AskingAtTheEnd() override { refusal_ = zdm::Copy(document_, {this}).refusal; }

 private:
  CZDocument& document_;
  Refusal& refusal_;
};

TEST(Copy, IsRefusedWhileTheDocumentIsBeingClosed) {
  Refusal refusal = Refusal::kNone;
  {
    auto document = Document::Create();
    document.Add(zdm::Attached<IZDMObject>(new AskingAtTheEnd(*document.Get(), refusal)), nullptr);
  }
  EXPECT_EQ(refusal, Refusal::kClosing);
}

/// A thousand collections in each other, the last one with the first, and as many relations.
TEST(Copy, WhatIsNestedTooDeepIsCutOff) {
  auto document = Document::Create();
  IZDMObject* object = document.Add(OLESTR("x"));
  const auto outermost = zdm::MakeObject<IZReltnColl, CZReltnColl>();
  IZReltnColl* innermost = outermost;
  ZRefPtr<IZCategoryReltn> tree;
  for (int i = 0; i < 1000; ++i) {
    const auto inner = zdm::MakeObject<IZReltnColl, CZReltnColl>();
    innermost->AddTail(inner);
    const auto relation = zdm::MakeObject<IZSingleReltn, CZPlainSingleReltn>();
    relation->SetReltnObj(object);
    innermost->AddTail(relation);
    innermost = inner;
    const auto above = zdm::MakeObject<IZCategoryReltn, CZCategoryReltn>();
    above->SetReltnObj(object);
    if (tree != nullptr) above->AddSubReltn(tree);
    tree = above;
  }
  innermost->AddTail(outermost);
  object->AddRelation(outermost);
  object->AddRelation(tree.Get());
  const Copies copies = document.Copy({object});
  IZDMObject* copy = copies.objects[0].copy;
  for (IZDMObject* each : {object, copy}) {
    const auto references = document.ReferencesOf(each);
    EXPECT_EQ(references.size(), 256u);
    for (const zdm::Reference& reference : references) EXPECT_EQ(reference.to, each->GetOID());
  }
  int depth = 0;
  for (auto* at = copy->GetReltnColl(); at != nullptr; ++depth) {
    EXPECT_EQ(zdm::ViewAs<IZSingleReltn>(at->GetTail())->GetReltnOID(), copy->GetOID());
    at = zdm::ViewAs<IZReltnColl>(at->GetHead());
  }
  EXPECT_EQ(depth, 255);
  innermost->RemoveAll();
}

TEST(Copy, ManagersBelowEachOtherAreCopiedOnce) {
  auto document = Document::Create();
  IZDMObjMgr* one = document.AddManager(OLESTR("one"));
  IZDMObjMgr* two = document.AddManager(OLESTR("two"), one);
  LONGLONG pos = 0;
  two->InsertAfter(one, &pos);
  EXPECT_EQ(TextOf(document.Copy({two, one}).objects), "2>3 1>4 ");
  two->RemoveAll();
}

}  // namespace
