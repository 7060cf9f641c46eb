// What every manager is built on: a data-model object with an ordered list of others, a name and a
// current object. T is IZDMObjMgr or an interface derived from it.
// Answers all operations of IZDMObjMgr and IZDMObjIterator as described there, and those of
// IZDMObject like IZDMObjectImpl unless said otherwise here.
// Objects: one reference each. When the manager ends, those that live on lose it as their owner.
// Current object: the manager holds its record, so it may end before the manager does.
// What walks down nested managers does so through IZDMObjMgr and without recursion, and enters each
// manager once, so that managers listed in each other do no harm. Stream form: above SaveOwnData in
// IZDMObjMgrImpl.inl.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/framework/IZListOperations.h"
#include "zdm/model/IZDMObjIterator.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/model/IZDMObjectImpl.h"

struct IZMergeMapTool;

namespace zdm {

/// The two interface parts of a manager; what both have is answered once, above them.
template <class T>
class ManagerBases : public IZDMObjectImpl<T>, public IZObjectImpl<IZDMObjIterator> {};

}  // namespace zdm

template <class T>
class IZDMObjMgrImpl : public IZListOperations<zdm::ManagerBases<T>, IZDMObject> {
 public:
  using IZDMObjectImpl<T>::AddRef;
  using IZDMObjectImpl<T>::Release;
  using IZDMObjectImpl<T>::CopyFrom;
  using IZDMObjectImpl<T>::JudgeSame;

  ~IZDMObjMgrImpl() override;

  /// A copy with count 0 and without the objects; null when the factory cannot make one.
  IZObject* Clone() override { return IZDMObjectImpl<T>::Clone(); }

  // IZDMObject.
  /// A copy of the name, empty when it was never set.
  void GetName(BSTR* name) override;
  void SetName(const OLECHAR* name) override { name_ = zdm::Bstr(name); }
  /// From a manager also its name and its current object, not its objects; from anything else
  /// nothing.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// True for any manager of the same name, code unit by code unit. Throws CAtlException(E_FAIL)
  /// for a manager that answers no name at all.
  bool JudgeSame(IZDMObject* other) override;
  BYTE GetDMType() override { return 4; }

  // IZDMObjMgr, beside the operations of the list.
  void AddHead(IZObject* object) override;
  void AddTail(IZObject* object) override;
  LONG MovePrevStatus(IZDMObject* object, LONG bit) override;
  LONG MoveNextStatus(IZDMObject* object, LONG bit) override;
  LONGLONG GetHeadStatusPosition(LONG bit) override;
  LONGLONG GetTailStatusPosition(LONG bit) override;
  IZDMObject* GetStatusNext(LONG bit, LONGLONG& pos) override;
  IZDMObject* GetStatusPrev(LONG bit, LONGLONG& pos) override;
  void AttachTail(IZObject* object) override { Attach(object, false); }
  void AttachHead(IZObject* object) override { Attach(object, true); }
  IZDMObject* GetCurrent() override;
  void SetCurrent(IZObject* object) override;
  IZDMObject* FindObject(IZObject* object) override;
  void Reserved170() override {}
  ULONG GetStatusCount(LONG bit) override;
  void Reserved172() override {}
  bool Reserved173() override { return false; }
  void RemoveStatusObjects(LONG bit) override;
  void ClearStatusTree(LONG filterBit, LONG bit) override;
  LONGLONG GetValidHeadPosition() override { return this->GetHeadStatusPosition(ZOS_VALID); }
  IZDMObject* GetValidNext(LONGLONG& pos) override { return this->GetStatusNext(ZOS_VALID, pos); }
  void CollectStatusInterface(IZDMObjColl* coll, LONG bit, unsigned short interfaceId) override;
  void Collect(unsigned short interfaceId, bool all, IZDMObjColl** out) override;
  IZDMObject* FindByName(const OLECHAR* name) override;
  IZDMObject* FindByNameStatus(const OLECHAR* name, LONG bit) override;
  IZDMObject* FindByInterface(unsigned short interfaceId) override;
  void GetUniqueName(const OLECHAR* prefix, BSTR* out) override;

  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

  // Operations of the template itself; they follow those of IZDMObjectImpl in this order.

  /// Merges a manager of another document into this one: 0, or 1 when nothing was changed, as for
  /// a manager of another class, this one itself, and outside of a document. A class that answers
  /// to IZProgressMeter is told the progress.
  /// @param added       receives the objects that are new here.
  /// @param existing    receives what replaced objects of this manager were before.
  /// @param mapTool     made ready for this manager's document; decides by COIDManager::MergeMgr.
  /// @param sourceNode  an object of `source` whose counterpart is known: `targetNode`.
  virtual LONG MergeFrom(IZDMObjMgr* source, IZDMObjColl* added, IZDMObjColl* existing,
                         IZMergeMapTool* mapTool, IZDMObject* sourceNode, IZDMObject* targetNode);
  /// The first valid manager here of the same class and the same name; null if none.
  virtual IZDMObjMgr* FindSameManager(IZDMObjMgr* other);

 private:
  using List = CZList<IZDMObject>;

  void Attach(IZObject* object, bool atHead);
  void Register(IZObject* object, bool atHead);
  void HoldCurrent(OID* oid);

  zdm::Bstr name_;  // null counts as empty
  OID* currentOid_ = nullptr;
};

#include "zdm/model/IZDMObjMgrImpl.inl"

// One instantiation for everybody; see IZDMObjectImpl.h.
#if !defined(_WIN32)
extern template class ZDM_API IZDMObjectImpl<IZDMObjMgr>;
extern template class ZDM_API IZDMObjMgrImpl<IZDMObjMgr>;
#endif
