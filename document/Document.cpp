#include "document/Document.h"

#include "document/CZDMPlainObject.h"
#include "document/CZPlainSingleReltn.h"
#include "document/Categorize.h"
#include "document/ReferenceIndex.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjMgr.h"

namespace zdm {

Document Document::Create(WideView name) {
  auto document = MakeObject<CZDocument, CZDocument>();
  document->SetName(WideString(name).c_str());
  document->MakeDefaults();
  document->SetModified(false);
  return Document(std::move(document));
}

Document Document::Open(const std::filesystem::path& path, IZProgressMeter* meter) {
  return Document(CZDocument::Open(path, meter));
}

void Document::Add(IZDMObject* object, IZDMObjMgr* manager) {
  if (manager == nullptr) manager = document_;
  manager->AddTail(object);
}

IZDMObject* Document::Add(WideView name, IZDMObjMgr* manager) {
  const auto object = MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetName(WideString(name).c_str());
  Add(object.Get(), manager);
  return object;
}

IZDMObjMgr* Document::AddManager(WideView name, IZDMObjMgr* manager) {
  const auto made = MakeObject<IZDMObjMgr, CZDMObjMgr>();
  made->SetName(WideString(name).c_str());
  Add(static_cast<IZDMObject*>(made.Get()), manager);
  return made;
}

IZSingleReltn* Document::Relate(IZDMObject* from, IZDMObject* to, eZRelation kind) {
  const auto relation = MakeObject<IZSingleReltn, CZPlainSingleReltn>();
  relation->SetReltnDiffusible(kind == ZR_DIFFUSIBLE);
  relation->SetReltnObj(to);
  from->AddRelation(relation);
  document_->SetModified(true);
  return relation;
}

IZCategory* Document::CategoryOf(IZDMObject* object) const {
  IZCategoryReltn* relation = GetCategoryReltn(*object);
  return relation != nullptr ? relation->GetCategory() : nullptr;
}

IZCategory* Document::SetCategory(IZDMObject* object, LONG number, WideView name) {
  return zdm::SetCategory(*document_, *object, number, name);
}

IZDMObject* Document::Find(LONG id) const {
  const OID* oid = document_->GetOIDByID(id);
  return oid != nullptr && oid->JudgeStatus(ZOS_VALID) ? oid->Object : nullptr;
}

std::vector<Reference> Document::ReferencesOf(IZDMObject* object) const {
  return zdm::ReferencesOf(object);
}

std::vector<Reference> Document::ReferencesTo(IZDMObject* object) const {
  return document_->GetReferenceIndex().ReferencesTo(object->GetOID());
}

std::span<const LONG> Document::ReferrersOf(LONG id) const {
  return document_->GetReferenceIndex().ReferrersOf(id);
}

Referrers Document::GetReferrers() const { return document_->GetReferenceIndex().GetReferrers(); }

std::vector<LONG> Document::DependentsOf(std::span<const LONG> ids) const {
  return document_->GetReferenceIndex().DependentsOf(ids);
}

std::vector<LONG> Document::ClosureOf(std::span<const LONG> ids) const {
  return document_->GetReferenceIndex().ClosureOf(ids);
}

Copies Document::Copy(const std::vector<IZDMObject*>& objects) {
  return zdm::Copy(*document_, objects);
}

Copies Document::CopyTo(Document& other, const std::vector<IZDMObject*>& objects,
                        IZDMObjMgr* manager) {
  return zdm::CopyTo(*document_, objects, *other.document_, manager);
}

MergeReport Document::Merge(const Document& other, const MergeOptions& options) {
  return zdm::Merge(*document_, *other.document_, options);
}

Deletion Document::Delete(const std::vector<IZDMObject*>& objects) {
  Deletion plan = PlanDeletion(*document_, objects);
  CarryOut(*document_, plan);
  return plan;
}

}  // namespace zdm
