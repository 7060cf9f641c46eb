#pragma once

#include "zdm/identity/CID.h"
#include "zdm/identity/UID.h"
#include "zdm/relations/IZReltnColl.h"

template <class T>
bool IZReltnVisitorImpl<T>::Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) {
  return coll != nullptr && coll->Accept(root, owner, this);
}

template <class T>
bool IZReltnVisitorImpl<T>::MapUID(IZDMObject* root, IZDMObject* owner, IZRelation*, UID* uid) {
  if (uid == nullptr || uid->CID == nullptr) return false;
  return this->MapCID(root, owner, nullptr, uid->CID);
}

template <class T>
bool IZReltnVisitorImpl<T>::MapCID(IZDMObject* root, IZDMObject* owner, IZRelation*, CID* cid) {
  if (cid == nullptr) return false;
  if (cid->ReltnOID != nullptr && this->MapOID(root, owner, nullptr, &cid->ReltnOID)) return true;
  if (cid->RefPID != nullptr && this->MapPID(root, owner, nullptr, &cid->RefPID)) return true;
  return cid->SelfPID != nullptr && this->MapPID(root, owner, nullptr, &cid->SelfPID);
}
