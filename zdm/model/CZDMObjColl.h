// The collection of objects; see IZDMObjColl. It has no stored form.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjIterator.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDMObjColl : public IZListImpl<IZDMObjColl, IZDMObject>,
                            public IZObjectImpl<IZDMObjIterator> {
  ZDM_OBJECT(CZDMObjColl)
 public:
  CZDMObjColl() = default;
  ~CZDMObjColl() override;
  using IZListImpl::AddRef;
  using IZListImpl::Release;
  /// Null: collections are copied with CloneAll or AddTailColl.
  IZObject* Clone() override { return nullptr; }

  // Of both interfaces.
  LONGLONG GetHeadPosition() override { return IZListImpl::GetHeadPosition(); }
  LONGLONG GetTailPosition() override { return IZListImpl::GetTailPosition(); }
  IZDMObject* GetNext(LONGLONG& pos) override { return IZListImpl::GetNext(pos); }
  IZDMObject* GetPrev(LONGLONG& pos) override { return IZListImpl::GetPrev(pos); }
  bool IsEmpty() override { return IZListImpl::IsEmpty(); }
  LONGLONG GetHeadStatusPosition(LONG bit) override;
  LONGLONG GetTailStatusPosition(LONG bit) override;
  IZDMObject* GetStatusNext(LONG bit, LONGLONG& pos) override;
  IZDMObject* GetStatusPrev(LONG bit, LONGLONG& pos) override;
  ULONG GetStatusCount(LONG bit) override;
  LONGLONG GetValidHeadPosition() override;
  IZDMObject* GetValidNext(LONGLONG& pos) override;

  void Isolate(LONG selector, bool isolated) override;
  void SelfContained() override;
  void DrawStatus(LONG bit, IZGiDevice* device) override;
  void DrawAll(IZGiDevice* device, GiContext* context) override;
  void DrawOptionAllowed(LONGLONG mask, IZGiDevice* device) override;
  void DrawAllEx(IZGiDevice* device, GiContext* context) override;
  void GetSortedCopy(IZDMObjColl** out) override;
  void ClearStatusAll(LONG bit) override;
  void SetStatusAll(LONG bit) override;
  void TransformAll(const GeMatrix& matrix) override;
  void UnionBoxes(GeBox* box, GiContext* context, bool refresh) override;
  void CloneAll(IZDMObjColl** out) override;
  bool IsSameClass() override;
  void CollectInterface(IZDMObjColl* coll, LONG bit, unsigned short interfaceId) override;
  void Collect(unsigned short interfaceId, bool all, IZDMObjColl** out) override;
  ULONG GetInterfaceCount(unsigned short interfaceId) override;
  IZDMObject* FindByName(const OLECHAR* name) override;
  IZDMObject* FindByNameStatus(const OLECHAR* name, LONG bit) override;
  void SelectInterface(unsigned short interfaceId, IZDMObjColl** out) override;
  bool HasName(const OLECHAR* name) override;
  void AddOwners(const std::list<OID*>& records) override;
  void AddOwnersVector(const std::vector<OID*>& records) override;
  void AddObject(IZObject* object) override;
  void AddTailUnique(IZDMObjIterator* other) override;
  void FindByID(IZDMObject* key, IZDMObject** out) override;
  void SetOwnerOIDAll(OID* oid) override;
  void GetObjects(std::vector<IZDMObject*>& objects) override;
  void GetUniqueName(const OLECHAR* prefix, BSTR* out) override;
  void AddLine(const XYZ& start, const XYZ& end) override;
  void AddCircle(const XYZ& center, const XYZ& normal, double radius) override;
  void AddArc(const GeArc& arc, ULONG displayValue) override;
  void AddArcFrom(IGeArc* arc) override;
  void SetValidAll(bool valid) override;
};
