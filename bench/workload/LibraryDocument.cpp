#include "bench/workload/LibraryDocument.h"

#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/properties/PropertyType.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <stdexcept>

namespace workload {

namespace {

constexpr GUID kExtData = zdm::ParseGuid("E0000000-0000-4000-8000-000000000001");

GUID KeyOf(std::size_t definition) {
  GUID key = zdm::ParseGuid("D0000000-0000-4000-8000-000000000001");
  key.Data1 |= static_cast<ULONG>(definition);
  return key;
}

ULONG TypeOf(std::uint32_t definition) {
  constexpr ULONG kReference = 4;  // a type code of our own
  if (definition < kLongs) return zdm::kPropertyDouble;
  if (definition < kStrings) return zdm::kPropertyLong;
  if (definition < kBools) return zdm::kPropertyString;
  return definition < kReferences ? zdm::kPropertyYesNo : kReference;
}

/// The keys of all definitions.
const std::vector<GUID>& Keys() {
  static const std::vector<GUID> keys = [] {
    std::vector<GUID> made;
    for (std::size_t i = 0; i < kDefinitions; ++i) made.push_back(KeyOf(i));
    return made;
  }();
  return keys;
}

/// Looks inside every relation. Lives on the stack.
class Looker : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
};

class Adder : public Looker {
 public:
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override {
    const auto id = static_cast<std::uint32_t>((*oid)->ID);
    const bool isDefinition = id - kFirstDefinition < kDefinitions;
    sum += isDefinition ? 0 : id;
    return false;
  }
  std::uint64_t sum = 0;
};

/// Ends the walk at a reference to one object.
class Seeker : public Looker {
 public:
  explicit Seeker(const OID* target) : target_(target) {}
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override { return *oid == target_; }

 private:
  const OID* target_;
};

void AddParameters(IZDMObject& object, const ObjectPlan& plan, IZDefinitionMgr* definitions,
                   IZDMObject* referred) {
  constexpr USHORT kNoKey = 0xFFFF;
  constexpr USHORT kFlags = 0;
  const std::vector<GUID>& keys = Keys();
  ZRefPtr<IZParameterArray> array;
  object.GetParameterArray(array.Out());
  array->BeginAdd();
  for (std::size_t k = 0; k < 2; ++k) {
    array->AddDoubleParameter(definitions, &keys[plan.doubleDefinitions[k]], kNoKey,
                              plan.doubles[k], kFlags);
  }
  for (std::size_t k = 0; k < 2; ++k) {
    array->AddLongParameter(definitions, &keys[plan.longDefinitions[k]], kNoKey, plan.longs[k],
                            kFlags);
  }
  for (std::size_t k = 0; k < 2; ++k) {
    array->AddStringParameter(definitions, &keys[plan.stringDefinitions[k]],
                              WideText(plan.strings[k]).c_str(), kFlags);
  }
  array->AddBoolParameter(definitions, &keys[plan.boolDefinition], plan.flag, kFlags);
  array->AddRelationParameter(definitions, &keys[plan.referenceDefinition], kNoKey, referred, false,
                              kFlags);
  array->EndAdd();
}

}  // namespace

void LibraryDocument::Build(const std::vector<ObjectPlan>& plans) {
  zdm::Document& document = document_.emplace(zdm::Document::Create(u"W"));
  IZCategoryMgr* categories = document->GetCategoryMgr();
  const auto definitions = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  document->AttachTail(definitions);
  document->GetOIDManager()->AssignItemID(definitions, true, true);

  std::vector<IZDMObject*> heads;
  for (std::uint32_t c = 0; c < kCategories; ++c) {
    const auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
    category->SetName(NameOf("Category-%02u", c).c_str());
    category->SetNumber(c + 1);
    categories->AddCategory(category);
    heads.push_back(category);
  }
  for (std::uint32_t d = 0; d < kDefinitions; ++d) {
    const auto property = zdm::MakeObject<IZProperty, CZProperty>();
    property->SetName(NameOf("Definition-%02u", d).c_str());
    property->SetGUID(Keys()[d]);
    property->SetType(TypeOf(d));
    const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
    definition->SetProperty(property, true);
    definitions->AddDefinition(static_cast<IZDefinition*>(definition));
    heads.push_back(definition);
  }
  std::vector<IZDMObjMgr*> containers;
  for (std::uint32_t c = 0; c < kContainers; ++c) {
    containers.push_back(document.AddManager(NameOf("Container-%02u", c).c_str()));
    heads.push_back(containers.back());
  }

  objects_.clear();
  const auto find = [&](std::uint32_t id) {
    return id < kFirstObject ? heads[id - 1] : objects_[id - kFirstObject];
  };
  std::uint32_t i = 0;
  for (const ObjectPlan& plan : plans) {
    IZDMObject* object =
        document.Add(NameOf("Object-%08u", i).c_str(), containers[i % kContainers]);
    for (std::size_t k = 0; k < plan.references.size(); ++k) {
      document.Relate(object, find(plan.references[k]), k == 0 ? ZR_DIFFUSIBLE : ZR_NONDIFFUSIBLE);
    }
    const ZRefPtr<IZCategoryReltn> relation =
        zdm::ViewAs<IZCategory>(find(plan.category))->CreateCategoryReltn();
    object->AddRelation(relation);
    AddParameters(*object, plan, definitions, find(plan.referred));
    ZExtDataWrapper::AddExtData(object, kExtData, OLESTR("area"), plan.area, true);
    ZExtDataWrapper::AddExtData(object, kExtData, OLESTR("note"), WideText(plan.note).c_str(),
                                true);
    objects_.push_back(object);
    ++i;
  }
  if (i > 0 && objects_.back()->GetID() != kFirstObject + i - 1) {
    throw std::runtime_error("other IDs than those of W(n)");
  }
}

void LibraryDocument::Close() {
  objects_ = {};
  document_.reset();
}

void LibraryDocument::FetchHandles(std::uint32_t n) {
  objects_.clear();
  for (std::uint32_t i = 0; i < n; ++i) {
    objects_.push_back(document_->Find(static_cast<LONG>(kFirstObject + i)));
  }
}

std::uint64_t LibraryDocument::Lookup(const std::vector<std::uint32_t>& ids) const {
  std::uint64_t sum = 0;
  for (const std::uint32_t id : ids) {
    const OID* found = (*document_)->GetOIDByID(static_cast<LONG>(id));
    if (found != nullptr && found->Object != nullptr) sum += static_cast<std::uint32_t>(found->ID);
  }
  return sum;
}

double LibraryDocument::Params(const std::vector<ParamPick>& picks) const {
  const std::vector<GUID>& keys = Keys();
  double sum = 0;
  for (const ParamPick& pick : picks) {
    double value = 0;
    objects_[pick.object]->GetParamDouble(&keys[pick.definition], &value);
    sum += value;
  }
  return sum;
}

std::uint64_t LibraryDocument::Walk() const {
  Adder adder;
  for (IZDMObject* object : objects_) object->VisitReferences(object, &adder);
  return adder.sum;
}

std::uint64_t LibraryDocument::ReverseScan(std::uint32_t target) const {
  std::uint64_t sum = 0;
  Seeker seeker((*document_)->GetOIDByID(static_cast<LONG>(target)));
  for (IZDMObject* object : objects_) {
    if (object->VisitReferences(object, &seeker)) sum += object->GetID();
  }
  return sum;
}

std::uint64_t LibraryDocument::Reverse(const std::vector<std::uint32_t>& targets) const {
  const zdm::Referrers referrers = document_->GetReferrers();
  std::uint64_t sum = 0;
  for (const std::uint32_t target : targets) {
    for (const LONG id : referrers.Of(static_cast<LONG>(target))) {
      sum += static_cast<std::uint32_t>(id);
    }
  }
  return sum;
}

namespace {

/// Of objects alone, without what stands before them.
std::uint64_t SumOf(const std::vector<LONG>& ids) {
  std::uint64_t sum = 0;
  for (const LONG id : ids) {
    if (id >= static_cast<LONG>(kFirstObject)) sum += static_cast<std::uint32_t>(id);
  }
  return sum;
}

}  // namespace

std::uint64_t LibraryDocument::Dependents(std::uint32_t changed) const {
  const LONG ids[] = {static_cast<LONG>(changed)};
  return SumOf(document_->DependentsOf(ids));
}

std::uint64_t LibraryDocument::Closure(std::uint32_t start) const {
  const LONG ids[] = {static_cast<LONG>(start)};
  return SumOf(document_->ClosureOf(ids));
}

void LibraryDocument::Copy() {
  const zdm::Copies copies = document_->Copy(objects_);
  objects_.reserve(objects_.size() + copies.objects.size());
  for (const zdm::CopiedObject& each : copies.objects) objects_.push_back(each.copy);
}

}  // namespace workload
