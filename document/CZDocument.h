// One document: the root of its objects, their ID table and path table, and the file they are kept
// in. The root is a manager, has ID -1 and owns itself; what it owns is the document's content.
// Objects, relations and collections taken from a document must be released before it: its records
// go with it. New documents are made with zdm::MakeObject or through the factory.
#pragma once

#include "document/ClassTable.h"
#include "zdm/host/IZDMModel.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/host/IZMergeStrategy.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/host/IZPersistStrategy.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/model/IZDMObjMgrImpl.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace zdm {
constexpr LONG kRootID = -1;
class ReferenceIndex;
}  // namespace zdm

class CZDocument : public IZDMObjMgrImpl<IZDMObjMgr>,
                   public IZObjectImpl<IZDatabase>,
                   public IZObjectImpl<IZDMModel> {
  ZDM_OBJECT(CZDocument)
 public:
  using IZDMObjMgrImpl::AddRef;
  using IZDMObjMgrImpl::CopyFrom;
  using IZDMObjMgrImpl::JudgeSame;
  using IZDMObjMgrImpl::Release;
  using IZDMObjMgrImpl::Save;

  /// Empty, with nothing in its tables and no file.
  CZDocument();
  ~CZDocument() override;

  /// Gives the document what displaying its objects takes, as far as it is not there: the manager
  /// of materials with the default material, the manager of categories, all under hard IDs, and the
  /// default display attribute.
  void MakeDefaults();

  /// The first valid manager of categories in the document itself (borrowed); null for none.
  IZCategoryMgr* GetCategoryMgr();

  // File. What fails throws zdm::DocumentError.

  /// Opens the document at `path`, which stays closed afterwards: a document lives in memory.
  /// kDamaged when a byte of it is not as it was saved; zdm::Salvage gets out what there is.
  /// @param meter  told the number of records and stepped by each; may be null.
  static ZRefPtr<CZDocument> Open(const std::filesystem::path& path,
                                  IZProgressMeter* meter = nullptr);
  /// Saves where it was opened or saved last. At every moment the old or the new file is there,
  /// whole. Saving what was opened and not changed gives the same bytes.
  /// @param meter  told the number of records and stepped by each; may be null.
  void Save(IZProgressMeter* meter = nullptr);
  /// Saves at `path`, in place of any file there; that is the document's file from then on.
  void SaveAs(const std::filesystem::path& path, IZProgressMeter* meter = nullptr);
  /// Of the last opening or saving; empty for a new document.
  const std::filesystem::path& GetPath() const { return path_; }
  /// Something was added since, or SetModified was called.
  bool IsModified() const { return isModified_; }
  void SetModified(bool modified) { isModified_ = modified; }
  /// Its destructor is running: what asks now is one of its objects.
  bool IsClosing() const { return isClosing_; }

  // What the host may put in; null takes it away. One reference is kept.

  void SetPersistStrategy(IZPersistStrategy* strategy) { persistStrategy_ = strategy; }
  void SetMergeStrategy(IZMergeStrategy* strategy) { mergeStrategy_ = strategy; }
  /// For objects that have a counterpart here: an eZMergeOption, ZMO_SAME at first.
  void SetMergeOption(BYTE option) { mergeOption_ = option; }
  void SetOptPath(IZOptPath* path) { optPath_ = path; }

  // IZDatabase.
  COIDManager* GetOIDManager() override { return &oids_; }
  CPIDManager* GetPIDManager() override { return &pids_; }
  /// While objects are read also a new record for an ID that is not listed: the ID referred to is
  /// kept although its object is lost.
  OID* GetOIDByID(LONG id) override { return oids_.GetReferredOID(id); }
  void OnStateChanged(LONG) override { isModified_ = true; }
  /// A CZDMAbsentObject, for every type.
  void CreateByType(BYTE type, IZDMObject** out) override;
  IZPersistStrategy* GetPersistStrategy() override { return persistStrategy_; }
  void GetMergeStrategy(IZDMObjMgr* target, IZDMObjColl* added, IZMergeStrategy** out) override;
  /// Managers are merged, down to their objects; for those the option that was set.
  BYTE GetMergeOption(IZDMObject* source, IZDMObject* target) override;
  IZOptPath* GetOptPath() override { return optPath_; }

  // IZDMModel.
  /// The first CZDMMaterialMgr among the document's objects.
  IZDMObjMgr* GetMaterialMgr() override;
  /// Kept with the document; null until MakeDefaults.
  IZDispAttrib* GetDefaultDispAttrib() override { return defaultDispAttrib_; }

  /// The document itself: same content does not make two documents one.
  bool JudgeSame(IZDMObject* other) override;

  /// The carried words too: no ID table has them.
  void ReadHeader(IZStream* stream) override;
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

  /// Who refers to whom, kept from the first call on.
  zdm::ReferenceIndex& GetReferenceIndex();

  // For readers of files.

  /// From here on IDs that are referred to and not listed get records.
  void BeginLoading() { oids_.KeepReferred(); }
  /// Lists those records, attaches every object to its manager, and has the managers check
  /// themselves. Objects whose owner is no manager stay valid in the document without one.
  void EndLoading();
  /// In place of EndLoading, when reading failed: gives up the objects that no manager has.
  void AbandonLoading();
  /// Objects that are valid and in no manager's list; the document holds them.
  const std::vector<ZRefPtr<IZDMObject>>& GetStrays() const { return strays_; }
  /// They have managers now.
  void ForgetStrays() { strays_.clear(); }

 private:
  void EmptyManagers();
  void KeepStrays();
  void ValidateManagers();

  COIDManager oids_;
  CPIDManager pids_;
  std::filesystem::path path_;
  bool isModified_ = false;
  bool isClosing_ = false;
  BYTE mergeOption_ = ZMO_SAME;
  std::vector<ZRefPtr<IZDMObject>> strays_;
  OID* materialMgr_ = nullptr;  // the manager of materials found last
  ZRefPtr<IZDispAttrib> defaultDispAttrib_;
  ZRefPtr<IZPersistStrategy> persistStrategy_;
  ZRefPtr<IZMergeStrategy> mergeStrategy_;  // null: zdm::MergeStrategy
  ZRefPtr<IZOptPath> optPath_;
  std::unique_ptr<zdm::ReferenceIndex> referenceIndex_;
};
