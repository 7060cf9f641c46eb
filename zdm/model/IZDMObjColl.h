// A passing, ordered collection of data-model objects: what bulk operations take and hand out.
// One reference each; neither owner nor ID of an object changes. The same object may be held twice.
// "Status" is a bit of the object's status, 0 to 63; positions and list operations: IZList.h.
#pragma once

#include "zdm/framework/IZList.h"

#include <list>
#include <vector>

class GeArc;
class GeBox;
class GeMatrix;
class GiContext;
class OID;
struct IGeArc;
struct IZDMObjIterator;
struct IZDMObject;
struct IZGiDevice;
struct XYZ;

struct ZDM_INTERFACE IZDMObjColl : IZList<IZObject, IZDMObjColl, IZDMObject> {
  /// First (last) object with the bit, or 0.
  virtual LONGLONG GetHeadStatusPosition(LONG bit) = 0;  // 34
  virtual LONGLONG GetTailStatusPosition(LONG bit) = 0;  // 35
  /// Object at `pos`; moves `pos` to the next (previous) one with the bit, or 0. Throws
  /// CAtlException(E_FAIL) if `pos` is 0.
  virtual IZDMObject* GetStatusNext(LONG bit, LONGLONG& pos) = 0;  // 36
  virtual IZDMObject* GetStatusPrev(LONG bit, LONGLONG& pos) = 0;  // 37
  /// Sets or clears ZRS_ISOLATED on the objects' valid relations.
  /// @param selector  which of them (eZRelation).
  virtual void Isolate(LONG selector, bool isolated) = 0;  // 38
  /// Makes the relations invalid that lead out of the collection, of the objects whose option mask
  /// has bit 53.
  virtual void SelfContained() = 0;                                       // 39
  virtual ULONG GetStatusCount(LONG bit) = 0;                             // 40
  virtual void DrawStatus(LONG bit, IZGiDevice* device) = 0;              // 41
  virtual void DrawAll(IZGiDevice* device, GiContext* context) = 0;       // 42
  virtual void DrawOptionAllowed(LONGLONG mask, IZGiDevice* device) = 0;  // 43
  virtual void DrawAllEx(IZGiDevice* device, GiContext* context) = 0;     // 44
  /// A new collection of the same objects in the order of COIDManager::Sort.
  virtual void GetSortedCopy(IZDMObjColl** out) = 0;      // 45
  virtual LONGLONG GetValidHeadPosition() = 0;            // 46
  virtual IZDMObject* GetValidNext(LONGLONG& pos) = 0;    // 47
  virtual void ClearStatusAll(LONG bit) = 0;              // 48
  virtual void SetStatusAll(LONG bit) = 0;                // 49
  virtual void TransformAll(const GeMatrix& matrix) = 0;  // 50
  /// Adds every object's box to `box`.
  /// @param refresh  true: each object is brought up to date first.
  virtual void UnionBoxes(GeBox* box, GiContext* context, bool refresh) = 0;  // 51
  /// A new collection of copies; an object that cannot be copied leaves a null element.
  virtual void CloneAll(IZDMObjColl** out) = 0;  // 52
  /// True when all objects are of one class, also for an empty collection.
  virtual bool IsSameClass() = 0;  // 53
  /// Appends to `coll` the objects with the bit that answer to the interface (0: any).
  virtual void CollectInterface(IZDMObjColl* coll, LONG bit, unsigned short interfaceId) = 0;  // 54
  /// A new collection of the objects that answer to the interface (0: all of them).
  /// @param all  false: an object held twice is collected once.
  virtual void Collect(unsigned short interfaceId, bool all, IZDMObjColl** out) = 0;  // 55
  virtual ULONG GetInterfaceCount(unsigned short interfaceId) = 0;                    // 56
  /// First object of that name (borrowed), or null. Names compare by the user's locale.
  virtual IZDMObject* FindByName(const OLECHAR* name) = 0;                  // 57
  virtual IZDMObject* FindByNameStatus(const OLECHAR* name, LONG bit) = 0;  // 58
  /// A new collection of the objects that answer to the interface; null when there are none.
  virtual void SelectInterface(unsigned short interfaceId, IZDMObjColl** out) = 0;  // 59
  /// Whether an object has that name, code unit by code unit. An address below 65536 is the number
  /// of a text of the library.
  virtual bool HasName(const OLECHAR* name) = 0;  // 60
  /// Appends the object of every record.
  virtual void AddOwners(const std::list<OID*>& records) = 0;          // 61
  virtual void AddOwnersVector(const std::vector<OID*>& records) = 0;  // 62
  virtual void AddObject(IZObject* object) = 0;                        // 63
  /// Appends the objects of `other` that are not in the collection, each once.
  virtual void AddTailUnique(IZDMObjIterator* other) = 0;  // 64
  /// The first object with the ID of `key`.
  /// @param out  one reference for the caller; null if none.
  virtual void FindByID(IZDMObject* key, IZDMObject** out) = 0;  // 65
  virtual void SetOwnerOIDAll(OID* oid) = 0;                     // 66
  /// Appends every object (borrowed) to `objects`.
  virtual void GetObjects(std::vector<IZDMObject*>& objects) = 0;  // 67
  /// As IZDMObjMgr::GetUniqueName.
  virtual void GetUniqueName(const OLECHAR* prefix, BSTR* out) = 0;  // 68
  /// Append objects for display only, made by the host's classes; without them nothing changes.
  virtual void AddLine(const XYZ& start, const XYZ& end) = 0;                       // 69
  virtual void AddCircle(const XYZ& center, const XYZ& normal, double radius) = 0;  // 70
  virtual void AddArc(const GeArc& arc, ULONG displayValue) = 0;                    // 71
  virtual void AddArcFrom(IGeArc* arc) = 0;                                         // 72
  virtual void SetValidAll(bool valid) = 0;                                         // 73
};
