// An item that holds one value of one type. A setter changes the type along with the value. A
// getter answers E_INVALIDARG for null and E_FAIL when the value has another type, `*out`
// untouched; otherwise S_OK.
#pragma once

#include "platform/ole/tagZVARIANT.h"
#include "zdm/extdata/IZExtData.h"

struct IZDMObject;
struct IZExtDataCollection;

struct ZDM_INTERFACE IZExtDataAccess : IZExtData {
  virtual LONG GetByte(BYTE* out) = 0;       // 9
  virtual LONG SetByte(BYTE value) = 0;      // 10
  virtual LONG SetShort(SHORT value) = 0;    // 11
  virtual LONG GetShort(SHORT* out) = 0;     // 12
  virtual LONG SetLong(LONG value) = 0;      // 13
  virtual LONG GetLong(LONG* out) = 0;       // 14
  virtual LONG SetULong(ULONG value) = 0;    // 15
  virtual LONG GetULong(ULONG* out) = 0;     // 16
  virtual LONG SetDouble(double value) = 0;  // 17
  virtual LONG GetDouble(double* out) = 0;   // 18
  /// Takes a copy; hands out a copy (SysFreeString by the caller).
  virtual LONG SetString(const OLECHAR* text) = 0;  // 19
  virtual LONG GetString(BSTR* out) = 0;            // 20
  virtual LONG SetBool(bool value) = 0;             // 21
  virtual LONG GetBool(bool* out) = 0;              // 22
  /// E_INVALIDARG for null; the item holds one reference.
  virtual LONG SetCollection(IZExtDataCollection* value) = 0;  // 23
  /// `*out` carries no reference.
  virtual LONG GetCollection(IZExtDataCollection** out) = 0;  // 24
  /// As for collections. An object is not stored.
  virtual LONG SetObject(IZDMObject* value) = 0;  // 25
  virtual LONG GetObject(IZDMObject** out) = 0;   // 26
  /// VT_I2, VT_I4, VT_R4 and VT_UI4 by the setter (getter) of that type; any other type changes
  /// nothing. S_OK in each case; a value of another type is read as 0.
  virtual LONG SetVariant(const tagZVARIANT* value) = 0;  // 27
  virtual LONG GetVariant(tagZVARIANT* out) = 0;          // 28
  virtual LONG SetFloat(float value) = 0;                 // 29
  virtual LONG GetFloat(float* out) = 0;                  // 30
  /// The type code, 0 for a new item. E_INVALIDARG for null.
  virtual LONG GetType(BYTE* out) = 0;  // 31
};
