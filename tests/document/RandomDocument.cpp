#include "tests/document/RandomDocument.h"

#include "document/CZPlainSingleReltn.h"
#include "platform/ole/Bstr.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/relations/CZReltnColl.h"

#include <algorithm>

namespace zdm::test {

RandomDocument::RandomDocument(unsigned seed, int objects)
    : document(Document::Create(OLESTR("Random"))), random(seed) {
  UIDReltn::zInit();
  AddObjects(objects);
  AddReferences();
}

void RandomDocument::AddObjects(int objects) {
  managers_ = {document.Get()};
  for (unsigned i = 0; i < 2; ++i) {
    managers_.push_back(document.AddManager(OLESTR("Manager"), AnyManager()));
    managers_.back()->SetName(i == 0 ? OLESTR("First") : OLESTR("Second"));
    all.push_back(managers_.back());
  }
  for (unsigned i = 0; i < 2; ++i) {
    const auto category = MakeObject<IZCategory, CZDMCategory>();
    category->SetNumber(i);
    document.Add(category, AnyManager());
    all.push_back(category);
  }
  AddDefinitions();
  for (int i = 0; i < objects; ++i) {
    const OLECHAR name[] = {static_cast<OLECHAR>('a' + i % 26), 0};
    all.push_back(document.Add(name, AnyManager()));
  }
}

/// Two definitions, and a parameter of the document.
void RandomDocument::AddDefinitions() {
  const auto manager = MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  definitions_ = manager;
  document.Add(manager.Get(), nullptr);
  all.push_back(manager);
  for (const GUID& key : kDefinitionKeys) {
    const auto property = NewOf<IZProperty, CZProperty>();
    property->SetGUID(key);
    property->SetType(9);
    const auto definition = MakeObject<IZDefinition, CZDefinition>();
    definition->SetProperty(property, true);
    definitions_->AddDefinition(definition);
    all.push_back(ViewAs<IZDMObject>(definition.Get()));
  }
  const auto parameter = MakeObject<IZDMParameter, CZDMParameter>();
  parameter->SetDouble(static_cast<double>(Below(10)));
  parameter->SetDefinition(all.back());
  parameter_ = ViewAs<IZDMObject>(parameter.Get());
  document.Add(parameter_, AnyManager());
  all.push_back(parameter_);
}

void RandomDocument::AddParameters(IZDMObject* object) {
  ZRefPtr<IZParameterArray> array;
  object->GetParameterArray(array.Out());
  array->BeginAdd();
  for (const GUID& key : kDefinitionKeys) {
    array->AddRelationParameter(definitions_, &key, 1, Any(), OneIn(2), 0);
  }
  array->EndAdd();
  if (OneIn(2)) array->GetAt(0)->SetLinkedObject(parameter_);
}

PID* RandomDocument::NewPath() {
  if (OneIn(3)) return nullptr;
  std::vector<OID*> records(1 + Below(2));
  std::ranges::generate(records, [this] { return Any()->GetOID(); });
  return document->GetPIDManager()->QueryPID(records);
}

ZRefPtr<IZRelation> RandomDocument::NewRelation() {
  ZRefPtr<IZRelation> relation;
  const std::size_t kind = Below(8);
  if (kind == 0) {
    auto tree = MakeObject<IZCategoryReltn, CZCategoryReltn>();
    tree->SetReltnObj(Any());
    const auto below = MakeObject<IZCategoryReltn, CZCategoryReltn>();
    below->SetReltnObj(Any());
    if (OneIn(2)) below->ClearReltnStatus(ZRS_VALID);
    tree->AddSubReltn(below);
    relation = tree.Get();
    relation->SetReltnDiffusible(OneIn(4));
  } else if (kind < 3) {
    relation = MakeObject<IZRelation, UIDReltn>();
    const CID reference(NewPath(), NewPath(), OneIn(4) ? nullptr : Any()->GetOID());
    static_cast<UIDReltn*>(relation.Get())->uid.SetCID(&reference);
  } else if (kind == 3) {
    const auto nested = MakeObject<IZReltnColl, CZReltnColl>();
    nested->AddTail(NewRelation());
    relation = nested.Get();
  } else {
    const auto single = MakeObject<IZSingleReltn, CZPlainSingleReltn>();
    single->SetReltnObj(OneIn(12) ? static_cast<IZDMObject*>(document.Get()) : Any());
    single->SetReltnDiffusible(OneIn(4));
    relation = single.Get();
  }
  relation->SetReltnTag(static_cast<LONG>(Below(100)));
  if (OneIn(8)) relation->ClearReltnStatus(ZRS_VALID);
  return relation;
}

void RandomDocument::AddReferences() {
  for (IZDMObject* object : all) {
    if (OneIn(2)) AddParameters(object);
    for (std::size_t count = Below(4); count > 0; --count) object->AddRelation(NewRelation());
    if (auto* manager = ViewAs<IZDMObjMgr>(object); manager != nullptr && OneIn(3)) {
      manager->SetCurrent(Any());
    }
    if (auto* category = ViewAs<IZCategory>(object)) {
      category->SetReference(Any());
      category->AddMember(Any());
    }
  }
  // One more object, that goes again and leaves references to nothing.
  if (!OneIn(3)) return;
  IZDMObject* gone = document.Add(OLESTR("gone"));
  for (IZDMObject* object : all) {
    if (OneIn(3)) document.Relate(object, gone);
  }
  document.Delete({gone});
}

std::vector<IZDMObject*> RandomDocument::SomeOf() {
  std::vector<IZDMObject*> some;
  std::ranges::copy_if(all, std::back_inserter(some), [this](IZDMObject*) { return OneIn(2); });
  std::ranges::shuffle(some, random);
  return some;
}

LONG Itself(const OID* record) { return record->ID; }

namespace {

/// The records of paths and targets in a relation and below it, valid or not.
class Writer {
 public:
  Writer(const Mapping& map, std::string& out) : map_(map), out_(out) {}

  void Write(IZReltnColl* coll) {
    if (coll == nullptr) return;
    out_ += '[';
    for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) Write(coll->GetNext(pos));
    out_ += ']';
  }

  void Write(IZRelation* relation) {
    if (relation == nullptr) return;
    if (auto* nested = ViewAs<IZReltnColl>(relation)) return Write(nested);
    out_ += ' ' + std::to_string(relation->GetReltnStatus()) + '/' +
            std::to_string(relation->GetReltnTag()) + ':';
    if (auto* single = ViewAs<IZSingleReltn>(relation)) Write(single->GetReltnOID());
    if (auto* category = ViewAs<IZCategoryReltn>(relation)) Write(category->GetSubReltns());
    auto* compound = dynamic_cast<UIDReltn*>(relation);
    if (compound != nullptr && compound->uid.CID != nullptr) Write(*compound->uid.CID);
  }

  void Write(IZParameter* parameter) {
    IZDefinition* definition = parameter->GetDefinition();
    IZDMObject* link = parameter->GetLinkedObject();
    for (IZDMObject* object : {ViewAs<IZDMObject>(definition), link, parameter->GetRelation()}) {
      out_ += ',';
      Write(object != nullptr ? object->GetOID() : nullptr);
    }
  }

  void Write(const OID* record) { out_ += std::to_string(record != nullptr ? map_(record) : 0); }

 private:
  bool IsCut(const OID* record) const { return record != nullptr && map_(record) == 0; }
  bool IsCut(const PID* path) const {
    return path != nullptr &&
           std::ranges::any_of(path->OIDs, [this](OID* record) { return IsCut(record); });
  }

  void Write(const CID& reference) {
    if (IsCut(reference.ReltnOID) || IsCut(reference.RefPID) || IsCut(reference.SelfPID)) {
      out_ += "0--";
      return;
    }
    Write(reference.ReltnOID);
    for (const PID* path : {reference.RefPID, reference.SelfPID}) {
      out_ += '-';
      if (path == nullptr) continue;
      for (const OID* record : path->OIDs) {
        Write(record);
        out_ += '.';
      }
    }
  }

  const Mapping& map_;
  std::string& out_;
};

}  // namespace

std::string ShapeOf(IZDMObject* object, const Mapping& map) {
  Bstr name;
  object->GetName(name.Out());
  std::string out(name.View().begin(), name.View().end());
  out += ' ' + std::to_string(object->GetZRID().Data1) + ' ' +
         std::to_string(object->GetOptionAllowed());
  Writer writer(map, out);
  writer.Write(object->GetReltnColl());
  if (auto* parameter = ViewAs<IZParameter>(object)) writer.Write(parameter);
  if (IZParameterArray* parameters = object->PeekParameterArray()) {
    for (LONG i = 0; i < parameters->GetCount(); ++i) writer.Write(parameters->GetAt(i));
  }
  if (auto* category = ViewAs<IZCategory>(object)) {
    writer.Write(category->GetMemberColl());
    IZDMObject* reference = category->GetReference();
    out += " reference ";
    writer.Write(reference != nullptr ? reference->GetOID() : nullptr);
  }
  if (auto* manager = ViewAs<IZDMObjMgr>(object)) {
    out += " current ";
    IZDMObject* current = manager->GetCurrent();
    writer.Write(current != nullptr ? current->GetOID() : nullptr);
  }
  return out;
}

std::string ShapesOf(CZDocument& document) {
  std::string out = ShapeOf(&document) + '\n';
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr) continue;
    out += std::to_string(oid->ID) + " in " +
           std::to_string(static_cast<LONG>(oid->Object->GetOwnerID())) + ": " +
           ShapeOf(oid->Object) + '\n';
  }
  return out;
}

}  // namespace zdm::test
