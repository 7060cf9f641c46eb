// Rewrites references through an ID map, and is the tool that a merge is driven through; see
// IZReltnMapID and IZMergeMapTool. It may live on the stack. A copy has the same document, map and
// meter.
#pragma once

#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/identity/IDMap.h"
#include "zdm/identity/IZMergeMapTool.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorMapID : public ZReltnVisitor<IZMergeMapTool> {
  ZDM_OBJECT(ZReltnVisitorMapID)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  /// Looks into the relation, unless it has the status kPassedOver.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  /// `*oid` becomes the document's record of the mapped ID; see put_UseOriginIfMapFailed for one
  /// that is not listed. False.
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  /// `*pid` becomes the pooled path of the mapped records' objects; null when one of them is not
  /// there, and where the host has no class of paths. False.
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

  void Initialize(IZDatabase* db) override;
  void ClearMap() override;
  LONG MapID(LONG id) override;
  LONG MapID(IZDMObject* object) override;
  LONG MapID(OID* oid) override;
  void get_UseOriginIfMapFailed(bool* out) override;
  void put_UseOriginIfMapFailed(bool use) override;
  LONG AddMapIDPair(LONG from, LONG to) override;
  LONG AddMapIDPair(IZDMObject* from, IZDMObject* to) override;
  LONG AddMapIDPair(OID* from, OID* to) override;

  void AddItem(IZDMObject* object, IZDMObjColl* added) override;
  BYTE GetMergeOption(IZDMObject* source, IZDMObject* target) override;
  void MergeCurrentNode(IZDMObjMgr* source, IZDMObjMgr* target, IZDMObjColl* added,
                        IZDMObjColl* replaced) override;
  void MeterProgress() override;
  void SetMeterProgress(IZProgressMeter* meter) override;
  IZProgressMeter* GetMeterProgress() override;

  /// Relations with this status are not looked into; the host says what they are.
  static constexpr LONG kPassedOver = 0x8000;

 private:
  ZRefPtr<IZDatabase> database_;
  COIDManager* ids_ = nullptr;    // of the document
  CPIDManager* paths_ = nullptr;  // of the document
  ZRefPtr<IZProgressMeter> meter_;
  zdm::IDMap map_;
  bool usesOrigin_ = false;
};
