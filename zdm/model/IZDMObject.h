// Every persistent object of a document. An object has an identity (its OID record, and a link to
// the record of its owner), attachments (extended data, relations, parameters, tree data), a stored
// form (header, body, tail), and one function that offers every reference it holds.
// It is a relation itself; what it refers to hangs off it in its relation collection and its
// parameters, and VisitReferences offers all of that and nothing else.
// Implemented by IZDMObjectImpl, whose answers are described here; managers, embedded objects and
// proxies say in their own headers what they answer differently.
#pragma once

#include "zdm/relations/IZRelation.h"

class OID;
struct IZCategory;
struct IZDMObject;
struct IZDatabase;
struct IZExtData;
struct IZExtDataMgr;
struct IZGiMaterial;
struct IZParameter;
struct IZParameterArray;
struct IZProperty;
struct IZPropertyGroupColl;
struct IZReltnColl;
struct IZReltnVisitor;
struct IZTreeData;
struct ZDfValue;

namespace zdm {
constexpr LONG kCopyMode = 2;  // the one copy mode the library uses
}

struct ZDM_INTERFACE IZDMObject : IZRelation {
  using IZRelation::CopyFrom;
  using IZRelation::JudgeSame;

  // Status: bits 0 to 63 (eZObjStatus); another number throws std::out_of_range.

  /// Only valid objects (ZOS_VALID) are saved, counted and followed.
  virtual bool IsObjectValid() = 0;  // 61
  /// True once the object was added to a manager and got its ID (ZOS_ATTACHED).
  virtual bool IsObjectAttached() = 0;     // 62
  virtual void SetStatus(LONG bit) = 0;    // 63
  virtual void ClearStatus(LONG bit) = 0;  // 64
  /// A copy, see CopyFrom; it carries the same ID value and owner, and a record of its own.
  /// @param out  one reference for the caller; null when the class cannot be created.
  virtual void CloneObject(IZDMObject** out) = 0;  // 65
  /// Takes over what `source` holds: ZOS_VALID where it is set, option mask, extended data if any,
  /// clones of all relations and parameters in place of the present ones. ID, owner, the other
  /// status bits and tree data stay. Null, and the object itself, change nothing.
  virtual void CopyFrom(IZDMObject* source, LONG mode) = 0;  // 66
  /// True for the object itself; null is never the same.
  virtual bool JudgeSame(IZDMObject* other) = 0;  // 67

  // Identity.

  /// The type byte of the stored header: 1.
  virtual BYTE GetTypeByte() = 0;  // 68
  /// Exchanges the object's record.
  /// @param raw  true: only the pointer is stored, and the old record is the caller's. False: the
  ///             old record is given up (deleted unless an ID table keeps it), and the new one
  ///             takes over the object's 64 status bits. Null is stored as with true.
  virtual void SetOID(OID* oid, bool raw) = 0;  // 69
  virtual void SetID(ULONG id) = 0;             // 70
  /// The object's own record (borrowed).
  virtual OID* GetOID() = 0;  // 71
  virtual ULONG GetID() = 0;  // 72
  /// The owner's record is borrowed; it must live as long as it is set.
  virtual void SetOwnerOID(OID* oid) = 0;  // 73
  /// Changes the ID in the owner's record; without an owner nothing.
  virtual void SetOwnerID(ULONG id) = 0;  // 74
  /// Null without an owner.
  virtual OID* GetOwnerOID() = 0;  // 75
  /// 0 without an owner.
  virtual ULONG GetOwnerID() = 0;                // 76
  virtual void SetOwner(IZDMObject* owner) = 0;  // 77
  /// Borrowed; null without an owner.
  virtual IZDMObject* GetOwner() = 0;  // 78
  /// The document (borrowed): the IZDatabase view of the last object that climbing the owners
  /// reaches. Null without an owner, for owners in a ring, and when that object is no document.
  virtual IZDatabase* GetDatabase() = 0;  // 79
  /// Offers every reference the object holds: the owner's record (also null), then the parameters,
  /// then the valid relations. Stops with true at the first true.
  /// @param root  the object from which the walk started, or null; handed on unchanged.
  virtual bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) = 0;  // 80
  virtual void SetObjectValid(bool valid) = 0;                                  // 81
  /// 1 for a plain object, 4 for a manager.
  virtual BYTE GetDMType() = 0;  // 82

  // Option mask: what may be done with the object (64 bits).

  virtual void AddOptionAllowed(LONGLONG mask) = 0;    // 83
  virtual void ClearOptionAllowed(LONGLONG mask) = 0;  // 84
  /// True when every bit of `mask` is set.
  virtual bool JudgeOptionAllowed(LONGLONG mask) = 0;  // 85
  virtual void SetOptionAllowed(LONGLONG mask) = 0;    // 86
  virtual LONGLONG GetOptionAllowed() = 0;             // 87

  // Property sheets; a plain object shows nothing.

  virtual void BuildPropertyGroups(LONG context, IZPropertyGroupColl* groups) = 0;       // 88
  virtual bool FillProperties(LONG context, IZProperty* property) = 0;                   // 89
  virtual bool ApplyProperties(LONG context, IZProperty* property, ULONG reserved) = 0;  // 90
  /// Sets `*out` to null.
  virtual void Reserved91(LONG first, LONG second, IZObject** out) = 0;  // 91
  /// True.
  virtual bool Reserved92() = 0;  // 92
  /// The name to show (SysFreeString by the caller): that of GetName.
  virtual void GetDisplayName(BSTR* out) = 0;  // 93
  /// A category answers its number; 0 elsewhere.
  virtual ULONG GetNumber() = 0;  // 94
  /// The category of the object (borrowed); null here, where a host's class may know it. What the
  /// relations of the object say: IZCategoryReltn.
  virtual IZCategory* GetCategory() = 0;  // 95
  virtual void Reserved96() = 0;          // 96
  /// The material of the object's category (borrowed); null without either.
  virtual IZGiMaterial* GetCategoryMaterial() = 0;  // 97

  // Extended data: items of other modules, in groups under a key.

  /// Borrowed; null until the first item is set.
  virtual IZExtDataMgr* GetExtDataMgr() = 0;  // 98
  /// The first item named `name` under `key` (borrowed); null if none and for a null name.
  virtual IZExtData* GetExtData(GUID key, const OLECHAR* name) = 0;  // 99
  /// Appends an item under `key`; the same item twice is held twice. Null changes nothing.
  virtual void SetExtData(GUID key, IZObject* item) = 0;  // 100
  /// Removes that very item from `key`'s group, once.
  virtual void RemoveExtData(GUID key, IZObject* item) = 0;  // 101
  virtual void ClearExtData() = 0;                           // 102

  // Relations.

  /// Appends to the object's relation collection, made when absent; the object itself is left out.
  virtual void AddRelation(IZObject* relation) = 0;  // 103
  /// Borrowed; null until the first relation is added or loaded.
  virtual IZReltnColl* GetReltnColl() = 0;  // 104

  // Parameters. An array reports changes to the object that it belongs to.

  /// The array, created when absent; one reference for the caller.
  virtual void GetParameterArray(IZParameterArray** out) = 0;  // 105
  /// Borrowed; null until first used.
  virtual IZParameterArray* PeekParameterArray() = 0;  // 106
  /// Replaces the array. The present array: nothing changes.
  /// @param clone  true: by a clone of `array`; false: by `array` itself.
  virtual void SetParameterArray(IZParameterArray* array, bool clone) = 0;  // 107
  /// Borrowed; null when there is none for the definition.
  virtual IZParameter* GetParameter(const GUID& definitionGUID) = 0;  // 108
  virtual void Reserved109() = 0;                                     // 109
  /// Adds to the array, which is created when absent; kept only while a bulk add is open.
  virtual void AddParameter(IZParameter* parameter) = 0;  // 110
  virtual void ClearParameters() = 0;                     // 111
  /// Called by the array when one of its parameters has changed.
  virtual void OnParametersChanged() = 0;  // 112

  // By definition GUID, forwarded to the array, whose header says more. False without an array;
  // out-pointers for strings, values and objects are null then.

  virtual bool GetParamDouble(const GUID* definitionGUID, double* out) = 0;          // 113
  virtual bool SetParamDouble(const GUID* definitionGUID, double value) = 0;         // 114
  virtual bool GetParamLong(const GUID* definitionGUID, LONG* out) = 0;              // 115
  virtual bool SetParamLong(const GUID* definitionGUID, LONG value) = 0;             // 116
  virtual bool GetParamString(const GUID* definitionGUID, BSTR* out) = 0;            // 117
  virtual bool SetParamString(const GUID* definitionGUID, const OLECHAR* text) = 0;  // 118
  /// The value itself: no copy, no reference.
  virtual bool GetParamValue(const GUID* definitionGUID, ZDfValue** out) = 0;         // 119
  virtual bool SetParamValue(const GUID* definitionGUID, const ZDfValue* value) = 0;  // 120
  /// The object referred to, with one reference for the caller.
  virtual bool GetParamRelation(const GUID* definitionGUID, IZDMObject** out) = 0;  // 121
  virtual bool SetParamRelation(const GUID* definitionGUID, IZDMObject* object,
                                bool diffusible) = 0;                     // 122
  virtual bool GetParamBool(const GUID* definitionGUID, bool* out) = 0;   // 123
  virtual bool SetParamBool(const GUID* definitionGUID, bool value) = 0;  // 124
  /// The material that the relation parameter `key` refers to, or the category's in its place when
  /// that material says so. True, also when there is none.
  /// @param out  one reference for the caller, or null.
  virtual bool GetMaterial(const GUID* key, IZGiMaterial** out) = 0;  // 125
  virtual void Reserved126() = 0;                                     // 126
  virtual void Reserved127() = 0;                                     // 127

  /// Holds the argument's IZTreeData view (one reference) in place of the former.
  virtual void SetTreeData(IZObject* data) = 0;  // 128
  /// Borrowed; may be null.
  virtual IZTreeData* GetTreeData() = 0;  // 129
};
