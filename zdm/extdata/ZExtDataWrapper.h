// Typed access to extended data in one call: a named value in the group `key` of one object. The
// first item of the name counts. `object` is any view of a data-model object; another object, or
// none, has no extended data and takes none. A mark is an item of which only the presence counts.
#pragma once

#include "platform/ole/tagZVARIANT.h"

struct IZDMObjColl;
struct IZDMObject;
struct IZDMObjMgr;
struct IZObject;

class ZDM_API ZExtDataWrapper {
 public:
  ZExtDataWrapper() = default;
  ZExtDataWrapper(const ZExtDataWrapper&) = default;
  ZExtDataWrapper& operator=(const ZExtDataWrapper&) = default;
  virtual ~ZExtDataWrapper();

  /// Stores a value. A string is copied; of a variant with another type than VT_I2, VT_I4, VT_R4
  /// and VT_UI4 only the item is made.
  /// @param updateExisting  true: the item of that name takes the value and its type, if there is
  ///     one; false: another item is appended, behind the one that counts.
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name, const LONG& value,
                         bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name, const bool& value,
                         bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name, const SHORT& value,
                         bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                         const tagZVARIANT& value, bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                         const double& value, bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name, const float& value,
                         bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name, const BYTE& value,
                         bool updateExisting);
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                         const OLECHAR* value, bool updateExisting);
  /// Any other pointer would be stored as true.
  static void AddExtData(IZObject* object, const GUID& key, const OLECHAR* name, const void* value,
                         bool updateExisting) = delete;

  /// False, `*value` untouched, when there is no item or it holds another type. A string is a copy
  /// (SysFreeString by the caller).
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, LONG* value);
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, bool* value);
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, SHORT* value);
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, double* value);
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, float* value);
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, BYTE* value);
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name, OLECHAR** value);
  /// `value.vt` says what to read; true for every item with a value, 0 for one of another type.
  static bool GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                         tagZVARIANT& value);

  /// Both true for an item of any kind.
  static bool IsExistExtData(IZObject* object, const GUID& key, const OLECHAR* name);
  static bool GetMark(IZObject* object, const GUID& key, const OLECHAR* name);
  /// @param onlyIfAbsent  false: another mark is appended also where one is.
  static void SetMark(IZObject* object, const GUID& key, const OLECHAR* name, bool onlyIfAbsent);
  /// Removes one item of the name.
  static void ClearMark(IZObject* object, const GUID& key, const OLECHAR* name);
  /// Removes the item only if `key` is the application's identifier (CZGlobalData::GetZAppID);
  /// for the group of another key use ClearMark.
  static void RemoveExtData(IZObject* object, const GUID& key, const OLECHAR* name);
  /// True for an item that holds the byte `value`; one of another type counts as 0.
  static bool JudgeExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                           const BYTE& value);

  /// How many valid objects of the manager JudgeExtData is true for.
  static LONG GetValidObjectCount(IZDMObjMgr* manager, const GUID& key, const OLECHAR* name,
                                  BYTE value);
  /// The first object with an item of the name, from the head.
  /// @param out        that object (borrowed); null when none has it.
  /// @param validOnly  true: only valid objects are looked at.
  static bool FindFirstFrontObject(IZDMObjMgr* manager, const GUID& key, const OLECHAR* name,
                                   IZDMObject** out, bool validOnly);
  static bool FindFirstFrontObject(IZDMObjColl* collection, const GUID& key, const OLECHAR* name,
                                   IZDMObject** out, bool validOnly);
};
