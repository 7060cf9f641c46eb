// A data-model object that owns an ordered list of others, one reference each. List operations
// whose contract is not repeated here are those of IZList.h with IZDMObject elements.
// The registering adds and the attaching adds make the manager the object's owner; SetAt,
// InsertAfter and InsertBefore leave the owner alone. Results are borrowed.
#pragma once

#include "zdm/model/IZDMObject.h"

struct IZDMObjColl;

struct ZDM_INTERFACE IZDMObjMgr : IZDMObject {
  virtual IZDMObject* GetHead() = 0;                // 130
  virtual IZDMObject* GetTail() = 0;                // 131
  virtual LONG RemoveHead(IZDMObject** out) = 0;    // 132
  virtual LONG RemoveTail(IZDMObject** out) = 0;    // 133
  virtual LONG RemoveItem(IZDMObject* object) = 0;  // 134
  /// Registering adds: an object that is attached already is left alone; another is attached at
  /// that end and, where the manager belongs to a document, gets a soft ID and becomes valid.
  virtual void AddHead(IZObject* object) = 0;                          // 135
  virtual void AddTail(IZObject* object) = 0;                          // 136
  virtual IZDMObject* GetNext(LONGLONG& pos) = 0;                      // 137
  virtual IZDMObject* GetPrev(LONGLONG& pos) = 0;                      // 138
  virtual IZDMObject* GetAt(LONGLONG pos) = 0;                         // 139
  virtual LONG SetAt(LONGLONG pos, IZDMObject* object) = 0;            // 140
  virtual LONG InsertAfter(IZDMObject* object, LONGLONG* pos) = 0;     // 141
  virtual LONG InsertBefore(IZDMObject* object, LONGLONG* pos) = 0;    // 142
  virtual LONGLONG Find(IZDMObject* object, LONGLONG startAfter) = 0;  // 143
  virtual bool Has(IZDMObject* object) = 0;                            // 144
  virtual LONG GetCount() = 0;                                         // 145
  virtual bool IsEmpty() = 0;                                          // 146
  virtual LONG RemoveHeadNoReturn() = 0;                               // 147
  virtual LONG RemoveTailNoReturn() = 0;                               // 148
  virtual LONG RemoveAll() = 0;                                        // 149
  virtual LONGLONG GetHeadPosition() = 0;                              // 150
  virtual LONGLONG GetTailPosition() = 0;                              // 151
  virtual LONG RemoveAt(LONGLONG pos) = 0;                             // 152
  virtual LONG MoveToHead(LONGLONG pos) = 0;                           // 153
  virtual LONG MoveToTail(LONGLONG pos) = 0;                           // 154
  virtual LONG SwapElements(LONGLONG first, LONGLONG second) = 0;      // 155
  virtual LONGLONG FindIndex(ULONGLONG index) = 0;                     // 156
  virtual LONG MovePrev(IZDMObject* object) = 0;                       // 157
  virtual LONG MoveNext(IZDMObject* object) = 0;                       // 158
  /// As MovePrev and MoveNext among the objects with the status bit.
  virtual LONG MovePrevStatus(IZDMObject* object, LONG bit) = 0;  // 159
  virtual LONG MoveNextStatus(IZDMObject* object, LONG bit) = 0;  // 160
  /// First (last) object with the status bit, or 0.
  virtual LONGLONG GetHeadStatusPosition(LONG bit) = 0;  // 161
  virtual LONGLONG GetTailStatusPosition(LONG bit) = 0;  // 162
  /// Object at `pos`; moves `pos` to the next (previous) one with the bit, or 0.
  virtual IZDMObject* GetStatusNext(LONG bit, LONGLONG& pos) = 0;  // 163
  virtual IZDMObject* GetStatusPrev(LONG bit, LONGLONG& pos) = 0;  // 164
  /// Attaching adds: owner set, reference taken, no ID. An object in the list already is held
  /// a second time.
  virtual void AttachTail(IZObject* object) = 0;  // 165
  virtual void AttachHead(IZObject* object) = 0;  // 166
  /// The current object, or null. The manager holds its record, not the object.
  virtual IZDMObject* GetCurrent() = 0;           // 167
  virtual void SetCurrent(IZObject* object) = 0;  // 168
  /// The first valid object that is the same as `object`; for a manager, the first valid manager
  /// of its class that is the same. Null if none.
  virtual IZDMObject* FindObject(IZObject* object) = 0;  // 169
  virtual void Reserved170() = 0;                        // 170
  virtual ULONG GetStatusCount(LONG bit) = 0;            // 171
  virtual void Reserved172() = 0;                        // 172
  /// False.
  virtual bool Reserved173() = 0;  // 173
  /// Removes the objects with the bit, also inside nested managers, which stay themselves.
  virtual void RemoveStatusObjects(LONG bit) = 0;  // 174
  /// Clears `bit` on every object, down into nested managers; with a `filterBit` other than 0 only
  /// on and below those that have it.
  virtual void ClearStatusTree(LONG filterBit, LONG bit) = 0;  // 175
  /// First valid object, or 0; and the object at `pos`, which moves to the next valid one.
  virtual LONGLONG GetValidHeadPosition() = 0;          // 176
  virtual IZDMObject* GetValidNext(LONGLONG& pos) = 0;  // 177
  /// Appends to `coll` every object with the bit that answers to the interface, in list order.
  virtual void CollectStatusInterface(IZDMObjColl* coll, LONG bit,
                                      unsigned short interfaceId) = 0;  // 178
  /// A new collection of the objects that answer to the interface (0: all of them).
  /// @param all  false: an object held twice is collected once.
  virtual void Collect(unsigned short interfaceId, bool all, IZDMObjColl** out) = 0;  // 179
  /// First object of that name, or null. Names compare by the user's locale, case counts.
  virtual IZDMObject* FindByName(const OLECHAR* name) = 0;                  // 180
  virtual IZDMObject* FindByNameStatus(const OLECHAR* name, LONG bit) = 0;  // 181
  /// First object that answers to the interface, or null.
  virtual IZDMObject* FindByInterface(unsigned short interfaceId) = 0;  // 182
  /// `prefix`, a blank and a number that no object of that prefix has (SysFreeString by the
  /// caller).
  virtual void GetUniqueName(const OLECHAR* prefix, BSTR* out) = 0;  // 183
};
