// What managers and collections of objects answer alike, over the list that both are. Null elements
// are passed over. An interface id of 0 lets every object through. A status bit outside 0 to 63
// throws std::out_of_range as soon as an object is asked for it.
#pragma once

#include "platform/ole/ole.h"
#include "zdm/framework/CZList.h"
#include "zdm/model/IZDMObject.h"

class OID;
struct IZDMObjColl;
struct IZDMObjMgr;

namespace zdm {

using ObjectList = CZList<IZDMObject>;

/// `object` is not null and has the status bit.
inline bool HasStatus(IZDMObject* object, LONG bit) {
  return object != nullptr && object->JudgeStatus(bit);
}

/// `object` is not null and answers to the interface.
inline bool Answers(IZDMObject* object, unsigned short interfaceId) {
  return object != nullptr && (interfaceId == 0 || object->IsA(interfaceId));
}

// Walks by status: the first position from the head (tail) whose object has the bit; and the object
// at `pos`, which moves on to the next (previous) such position. 0 when there is none.

ZDM_API LONGLONG GetHeadStatusPosition(ObjectList& objects, LONG bit);
ZDM_API LONGLONG GetTailStatusPosition(ObjectList& objects, LONG bit);
ZDM_API IZDMObject* GetStatusNext(ObjectList& objects, LONG bit, LONGLONG& pos);
ZDM_API IZDMObject* GetStatusPrev(ObjectList& objects, LONG bit, LONGLONG& pos);
ZDM_API ULONG GetStatusCount(ObjectList& objects, LONG bit);

/// `object` changes places with the nearest one with the bit towards the head (tail). E_FAIL when
/// it is the first (last) of them or none of them.
ZDM_API LONG MovePrevStatus(ObjectList& objects, IZDMObject* object, LONG bit);
ZDM_API LONG MoveNextStatus(ObjectList& objects, IZDMObject* object, LONG bit);

/// The first object of that name (borrowed), or null; with a bit, among those that have it.
ZDM_API IZDMObject* FindByName(ObjectList& objects, const OLECHAR* name);
ZDM_API IZDMObject* FindByNameStatus(ObjectList& objects, const OLECHAR* name, LONG bit);

/// See IZDMObjMgr::GetUniqueName.
ZDM_API void GetUniqueName(ObjectList& objects, const OLECHAR* prefix, BSTR* out);

/// Appends to `coll` the objects with the bit that answer to the interface.
ZDM_API void CollectStatus(ObjectList& objects, IZDMObjColl* coll, LONG bit,
                           unsigned short interfaceId);

/// A new collection of the objects that answer to the interface.
/// @param all   false: each object once. Those collected are marked for it meanwhile.
/// @param mark  the status bit for that. No object collected has it afterwards, whatever happens.
/// @param key   other than 0: the bit's status lock is taken with it meanwhile.
ZDM_API void Collect(ObjectList& objects, unsigned short interfaceId, bool all, LONG mark,
                     ULONGLONG key, IZDMObjColl** out);

// Walks down the managers that `manager` lists: each is entered once, where it stands, and there is
// no recursion. See IZDMObjMgr.

ZDM_API void RemoveStatusObjects(IZDMObjMgr& manager, LONG bit);
ZDM_API void ClearStatusTree(IZDMObjMgr& manager, LONG filterBit, LONG bit);

/// Empties the list of a manager that ends. Objects that live on lose `owner`, the record that ends
/// with the manager. Managers in managers to any depth end without a deep stack.
ZDM_API void ReleaseOwned(ObjectList& objects, const OID* owner);

}  // namespace zdm
