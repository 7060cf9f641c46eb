#include "document/CZDocument.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDMMaterial.h"
#include "document/CZDMMaterialMgr.h"
#include "document/CZDispAttrib.h"
#include "document/DocumentError.h"
#include "document/DocumentReader.h"
#include "document/DocumentWriter.h"
#include "document/MergeStrategy.h"
#include "document/PathText.h"
#include "document/ReferenceIndex.h"
#include "zdm/categories/CZDMCategoryMgr.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/module/DllRegisterZModule.h"

#include <algorithm>
#include <memory>
#include <new>

ZDM_OBJECT_BODY(CZDocument)

CZDocument::CZDocument() {
  zdm::RegisterDocumentClasses();
  DllRegisterZModule();
  oids_.Init();
  oid_->ID = zdm::kRootID;
  oid_->SetStatus(ZOS_ATTACHED, 0);
  oid_->SetStatus(ZOS_VALID, 0);
  oids_.SetRootOID(oid_);
  SetOwnerOID(oid_);
}

// Objects go before the tables. One that somebody still holds has no owner any more, since its
// owner's record goes.
CZDocument::~CZDocument() {
  referenceIndex_.reset();
  isClosing_ = true;
  oids_.SetProgressMeter(nullptr);
  strays_.clear();
  RemoveAll();
  EmptyManagers();
  for (const OID* oid : oids_.GetOIDs()) {
    if (oid->Object != nullptr) oid->Object->SetOwnerOID(nullptr);
  }
  SetOwnerOID(nullptr);
}

/// Those that hold themselves or each other would never end.
void CZDocument::EmptyManagers() {
  for (std::size_t i = 0; i < oids_.GetOIDs().size(); ++i) {
    const ZRefPtr<IZDMObjMgr> manager = zdm::ViewAs<IZDMObjMgr>(oids_.GetOIDs()[i]->Object);
    if (manager != nullptr) manager->RemoveAll();
  }
}

void CZDocument::MakeDefaults() {
  const auto add = [this](IZDMObjMgr* manager) {
    AttachTail(manager);
    oids_.AssignItemID(manager, true, true);
    isModified_ = true;
  };
  if (GetMaterialMgr() == nullptr) {
    const auto materials = zdm::MakeObject<IZDMObjMgr, CZDMMaterialMgr>();
    const auto material = zdm::MakeObject<IZDMObject, CZDMMaterial>();
    material->SetName(zdm::kDefaultMaterialName);
    materials->AttachTail(material);
    add(materials);
  }
  if (GetCategoryMgr() == nullptr) add(zdm::MakeObject<IZDMObjMgr, CZDMCategoryMgr>());
  if (defaultDispAttrib_ == nullptr) {
    defaultDispAttrib_ = zdm::MakeObject<IZDispAttrib, CZDispAttrib>();
    isModified_ = true;
  }
}

IZCategoryMgr* CZDocument::GetCategoryMgr() {
  for (LONGLONG pos = GetValidHeadPosition(); pos != 0;) {
    if (auto* manager = zdm::ViewAs<IZCategoryMgr>(GetValidNext(pos))) return manager;
  }
  return nullptr;
}

IZDMObjMgr* CZDocument::GetMaterialMgr() {
  const auto managerOf = [this](const OID* oid) -> IZDMObjMgr* {
    IZDMObject* object = oid != nullptr ? oid->Object : nullptr;
    const bool isOne = object != nullptr && object->GetOwnerOID() == oid_ &&
                       object->IsObjectValid() && object->GetZRID() == CZDMMaterialMgr::kClassID;
    return isOne ? zdm::ViewAs<IZDMObjMgr>(object) : nullptr;
  };
  if (IZDMObjMgr* manager = managerOf(materialMgr_)) return manager;
  materialMgr_ = nullptr;
  for (LONGLONG pos = GetValidHeadPosition(); pos != 0;) {
    OID* oid = GetValidNext(pos)->GetOID();
    if (managerOf(oid) == nullptr) continue;
    materialMgr_ = oid;
    break;
  }
  return managerOf(materialMgr_);
}

void CZDocument::ReadHeader(IZStream* stream) {
  zdm::ObjectHeader header;
  stream->Read(&header, sizeof(header));
  SetOptionAllowed(header.options);
  oid_->AuxWord1 = header.auxWord1;
  oid_->AuxWord2 = header.auxWord2;
}

// Own data.
//   size      field
//   variable  name and current object (IZDMObjMgrImpl)
//   variable  default display attribute; nothing stands here without one
void CZDocument::SaveOwnData(IZStream* stream, IZDatabase* database) {
  IZDMObjMgrImpl::SaveOwnData(stream, database);
  if (defaultDispAttrib_ != nullptr) defaultDispAttrib_->Save(stream, database);
}

void CZDocument::LoadOwnData(IZStream* stream, IZDatabase* database) {
  IZDMObjMgrImpl::LoadOwnData(stream, database);
  ZRefPtr<IZDispAttrib> attribute;
  if (stream->GetBytesLeft() != 0) {
    attribute = zdm::MakeObject<IZDispAttrib, CZDispAttrib>();
    attribute->Load(stream, database);
  }
  defaultDispAttrib_ = attribute;
}

ZRefPtr<CZDocument> CZDocument::Open(const std::filesystem::path& path,
                                     IZProgressMeter* meter) try {
  auto document = zdm::MakeObject<CZDocument, CZDocument>();
  try {
    zdm::DocumentReader(path).Read(*document, meter);
  } catch (...) {
    document->AbandonLoading();
    throw;
  }
  document->path_ = path;
  document->isModified_ = false;
  return document;
} catch (const std::bad_alloc&) {
  throw zdm::ErrorOf(E_OUTOFMEMORY, zdm::ToUtf8(zdm::WideName(path)));
}

void CZDocument::Save(IZProgressMeter* meter) {
  if (path_.empty()) {
    throw zdm::DocumentError(zdm::DocumentFault::kNotFound, E_INVALIDARG, "no file to save to");
  }
  SaveAs(path_, meter);
}

void CZDocument::SaveAs(const std::filesystem::path& path, IZProgressMeter* meter) {
  std::filesystem::path kept = path;  // so that nothing fails once the file is there
  zdm::DocumentWriter(*this, meter).Write(path);
  path_.swap(kept);
  isModified_ = false;
}

void CZDocument::CreateByType(BYTE, IZDMObject** out) {
  *out = zdm::MakeObject<IZDMObject, CZDMAbsentObject>().Detach();
}

void CZDocument::GetMergeStrategy(IZDMObjMgr*, IZDMObjColl*, IZMergeStrategy** out) {
  *out = mergeStrategy_ != nullptr ? ZRefPtr<IZMergeStrategy>(mergeStrategy_).Detach()
                                   : new zdm::MergeStrategy;
}

BYTE CZDocument::GetMergeOption(IZDMObject* source, IZDMObject* target) {
  const bool areManagers =
      zdm::ViewAs<IZDMObjMgr>(source) != nullptr && zdm::ViewAs<IZDMObjMgr>(target) != nullptr;
  return areManagers ? static_cast<BYTE>(ZMO_MERGE) : mergeOption_;
}

bool CZDocument::JudgeSame(IZDMObject* other) { return other == static_cast<IZDMObject*>(this); }

zdm::ReferenceIndex& CZDocument::GetReferenceIndex() {
  if (referenceIndex_ == nullptr) referenceIndex_ = std::make_unique<zdm::ReferenceIndex>(*this);
  return *referenceIndex_;
}

void CZDocument::EndLoading() {
  oids_.ListReferred();
  oids_.SetupOwner();
  KeepStrays();
  ValidateManagers();
}

void CZDocument::AbandonLoading() {
  for (auto& stray : strays_) static_cast<void>(stray.Detach());  // their creation references again
  strays_.clear();
  for (const OID* oid : oids_.GetOIDs()) {
    if (oid->Object != nullptr && !oid->JudgeStatus(ZOS_ATTACHED)) oid->Object->Release();
  }
}

/// What SetupOwner attached to nothing: the creation reference is taken over.
void CZDocument::KeepStrays() {
  for (OID* oid : oids_.GetOIDs()) {
    if (oid->Object == nullptr || oid->JudgeStatus(ZOS_VALID)) continue;
    strays_.push_back(zdm::Attached(oid->Object));
    oid->SetStatus(ZOS_VALID, 0);
  }
}

/// Over a copy of the table, since a manager may add objects as it checks itself.
void CZDocument::ValidateManagers() {
  const std::vector<OID*> oids = oids_.GetOIDs();
  for (const OID* oid : oids) {
    if (oid->Object == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    if (auto* manager = zdm::ViewAs<IZDMObjMgr>(oid->Object)) manager->AssertValid(this);
  }
}
