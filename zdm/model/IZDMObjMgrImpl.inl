#pragma once

#include "platform/core/IZStream.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/model/ManagerMerge.h"
#include "zdm/model/ObjectList.h"

#include <utility>

template <class T>
IZDMObjMgrImpl<T>::~IZDMObjMgrImpl() {
  HoldCurrent(nullptr);
  zdm::ReleaseOwned(*this, this->oid_);
}

// Name and identity.

template <class T>
void IZDMObjMgrImpl<T>::GetName(BSTR* name) {
  *name = zdm::Bstr(name_.View()).Detach();
}

template <class T>
void IZDMObjMgrImpl<T>::CopyFrom(IZDMObject* source, LONG mode) {
  auto* manager = zdm::ViewAs<IZDMObjMgr>(source);
  if (manager == nullptr || static_cast<CZObject*>(source) == static_cast<CZObject*>(this)) return;
  zdm::Bstr name;
  manager->GetName(name.Out());
  IZDMObjectImpl<T>::CopyFrom(source, mode);
  name_ = std::move(name);
  this->SetCurrent(manager->GetCurrent());
}

template <class T>
bool IZDMObjMgrImpl<T>::JudgeSame(IZDMObject* other) {
  auto* manager = zdm::ViewAs<IZDMObjMgr>(other);
  if (manager == nullptr) return false;
  zdm::Bstr name;
  manager->GetName(name.Out());
  if (name.IsNull()) throw CAtlException(E_FAIL);
  return name.View() == name_.View();
}

// Adding.

template <class T>
void IZDMObjMgrImpl<T>::AddHead(IZObject* object) {
  Register(object, true);
}

template <class T>
void IZDMObjMgrImpl<T>::AddTail(IZObject* object) {
  Register(object, false);
}

template <class T>
void IZDMObjMgrImpl<T>::Register(IZObject* object, bool atHead) {
  const ZRefPtr<IZDMObject> added = object;
  if (added == nullptr || added->JudgeStatus(ZOS_ATTACHED)) return;
  Attach(object, atHead);
  IZDatabase* database = this->GetDatabase();
  COIDManager* ids = database != nullptr ? database->GetOIDManager() : nullptr;
  if (ids == nullptr) return;
  ids->AssignItemID(added, false, true);
  database->OnStateChanged(1);
}

template <class T>
void IZDMObjMgrImpl<T>::Attach(IZObject* object, bool atHead) {
  const ZRefPtr<IZDMObject> added = object;
  if (added == nullptr) return;
  if (atHead) {
    List::AddHead(added);
  } else {
    List::AddTail(added);
  }
  added->SetOwner(this);
}

// Walks by status.

template <class T>
LONG IZDMObjMgrImpl<T>::MovePrevStatus(IZDMObject* object, LONG bit) {
  return zdm::MovePrevStatus(*this, object, bit);
}

template <class T>
LONG IZDMObjMgrImpl<T>::MoveNextStatus(IZDMObject* object, LONG bit) {
  return zdm::MoveNextStatus(*this, object, bit);
}

template <class T>
LONGLONG IZDMObjMgrImpl<T>::GetHeadStatusPosition(LONG bit) {
  return zdm::GetHeadStatusPosition(*this, bit);
}

template <class T>
LONGLONG IZDMObjMgrImpl<T>::GetTailStatusPosition(LONG bit) {
  return zdm::GetTailStatusPosition(*this, bit);
}

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::GetStatusNext(LONG bit, LONGLONG& pos) {
  return zdm::GetStatusNext(*this, bit, pos);
}

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::GetStatusPrev(LONG bit, LONGLONG& pos) {
  return zdm::GetStatusPrev(*this, bit, pos);
}

template <class T>
ULONG IZDMObjMgrImpl<T>::GetStatusCount(LONG bit) {
  return zdm::GetStatusCount(*this, bit);
}

template <class T>
void IZDMObjMgrImpl<T>::RemoveStatusObjects(LONG bit) {
  zdm::RemoveStatusObjects(*this, bit);
}

template <class T>
void IZDMObjMgrImpl<T>::ClearStatusTree(LONG filterBit, LONG bit) {
  zdm::ClearStatusTree(*this, filterBit, bit);
}

template <class T>
void IZDMObjMgrImpl<T>::CollectStatusInterface(IZDMObjColl* coll, LONG bit,
                                               unsigned short interfaceId) {
  zdm::CollectStatus(*this, coll, bit, interfaceId);
}

template <class T>
void IZDMObjMgrImpl<T>::Collect(unsigned short interfaceId, bool all, IZDMObjColl** out) {
  zdm::Collect(*this, interfaceId, all, ZOS_VISITMARK, reinterpret_cast<ULONGLONG>(this), out);
}

// The current object.

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::GetCurrent() {
  return currentOid_ != nullptr ? currentOid_->Object : nullptr;
}

template <class T>
void IZDMObjMgrImpl<T>::SetCurrent(IZObject* object) {
  auto* current = zdm::ViewAs<IZDMObject>(object);
  HoldCurrent(current != nullptr ? current->GetOID() : nullptr);
}

/// Held like an object holds its own record, which therefore outlives an object that was never
/// listed in an ID table.
template <class T>
void IZDMObjMgrImpl<T>::HoldCurrent(OID* oid) {
  OID::GiveUp(std::exchange(currentOid_, OID::Take(oid)), nullptr);
  zdm::ChangeWatch::Changed(*this);
}

// Finding.

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::FindObject(IZObject* object) {
  if (auto* manager = zdm::ViewAs<IZDMObjMgr>(object)) return this->FindSameManager(manager);
  auto* wanted = zdm::ViewAs<IZDMObject>(object);
  if (wanted == nullptr) return nullptr;
  for (LONGLONG pos = this->GetValidHeadPosition(); pos != 0;) {
    IZDMObject* candidate = this->GetValidNext(pos);
    if (candidate->JudgeSame(wanted)) return candidate;
  }
  return nullptr;
}

template <class T>
IZDMObjMgr* IZDMObjMgrImpl<T>::FindSameManager(IZDMObjMgr* other) {
  if (other == nullptr) return nullptr;
  GUID classId = GUID_NULL;
  other->GetClassID(&classId);
  for (LONGLONG pos = this->GetValidHeadPosition(); pos != 0;) {
    IZDMObject* candidate = this->GetValidNext(pos);
    GUID found = GUID_NULL;
    candidate->GetClassID(&found);
    if (found == classId && candidate->JudgeSame(static_cast<IZDMObject*>(other))) {
      return zdm::ViewAs<IZDMObjMgr>(candidate);
    }
  }
  return nullptr;
}

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::FindByName(const OLECHAR* name) {
  return zdm::FindByName(*this, name);
}

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::FindByNameStatus(const OLECHAR* name, LONG bit) {
  return zdm::FindByNameStatus(*this, name, bit);
}

template <class T>
IZDMObject* IZDMObjMgrImpl<T>::FindByInterface(unsigned short interfaceId) {
  for (LONGLONG pos = this->GetHeadPosition(); pos != 0;) {
    IZDMObject* object = this->GetNext(pos);
    if (zdm::Answers(object, interfaceId)) return object;
  }
  return nullptr;
}

template <class T>
void IZDMObjMgrImpl<T>::GetUniqueName(const OLECHAR* prefix, BSTR* out) {
  zdm::GetUniqueName(*this, prefix, out);
}

template <class T>
LONG IZDMObjMgrImpl<T>::MergeFrom(IZDMObjMgr* source, IZDMObjColl* added, IZDMObjColl* existing,
                                  IZMergeMapTool* mapTool, IZDMObject* sourceNode,
                                  IZDMObject* targetNode) {
  return zdm::MergeManagers(*this, source, added, existing, mapTool, sourceNode, targetNode);
}

// Own data, behind the parameters. The objects are records of their own, with the manager's ID as
// that of their owner.
//   size      field
//   variable  name, as IZStream::WriteBSTR writes it; empty, never null
//      4      ID of the current object, 0 without one
template <class T>
void IZDMObjMgrImpl<T>::SaveOwnData(IZStream* stream, IZDatabase*) {
  stream->WriteBSTR(zdm::Bstr(name_.View()).Get());
  const LONG current = currentOid_ != nullptr ? currentOid_->ID : 0;
  stream->Write(&current, sizeof(current));
}

/// A stored 0 leaves the current object as it is.
template <class T>
void IZDMObjMgrImpl<T>::LoadOwnData(IZStream* stream, IZDatabase* database) {
  zdm::Bstr name;
  stream->ReadBSTR(name.Out());
  LONG current;
  stream->Read(&current, sizeof(current));
  name_ = std::move(name);
  if (current != 0) HoldCurrent(database != nullptr ? database->GetOIDByID(current) : nullptr);
}
