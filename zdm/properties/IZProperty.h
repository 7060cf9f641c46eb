// One entry of a property sheet: a named, typed value with display attributes and a range. Its GUID
// says which definition or parameter it presents, and its type code which editor shows it; the
// codes that the library itself sets are in PropertyType.h.
// Texts handed out are copies for the caller (SysFreeString); names are never null.
#pragma once

#include "platform/core/IZObject.h"

struct IZStream;
struct ZDfValue;

struct ZDM_INTERFACE IZProperty : IZObject {
  virtual void GetName(BSTR* out) = 0;  // 3
  /// Null gives an empty name.
  virtual void SetName(const OLECHAR* name) = 0;  // 4
  /// The text shown to the user.
  virtual void GetDisplayName(BSTR* out) = 0;            // 5
  virtual void SetDisplayName(const OLECHAR* name) = 0;  // 6
  virtual GUID* GetGUID(GUID* out) = 0;                  // 7
  virtual void SetGUID(const GUID& guid) = 0;            // 8
  virtual ULONG GetExtra2() = 0;                         // 9
  virtual void SetExtra2(ULONG value) = 0;               // 10
  /// Clears `*out` and copies the value into it; throws CAtlException when that fails.
  virtual void GetVariant(VARIANT* out) = 0;          // 11
  virtual void SetVariant(const VARIANT& value) = 0;  // 12
  virtual ULONG GetExtra1() = 0;                      // 13
  virtual void SetExtra1(ULONG value) = 0;            // 14
  virtual ULONG GetExtra3() = 0;                      // 15
  virtual void SetExtra3(ULONG value) = 0;            // 16
  virtual bool IsReadOnly() = 0;                      // 17
  virtual void SetReadOnly(bool flag) = 0;            // 18
  /// False when the value stands for several ones that differ.
  virtual bool IsValueUniform() = 0;            // 19
  virtual void SetValueUniform(bool flag) = 0;  // 20
  /// Takes value, attached value, GUID, type, names, flags, extra 1 and 2; not extra 3 and 4, nor
  /// the ranges. Null, the property itself and one of another class change nothing.
  virtual void CopyFrom(IZProperty* source) = 0;  // 21
  /// Makes this the property of one more object, which `other` presents: true when the values are
  /// the same. When they differ this one is no longer uniform; without flag 0x20 in `other` it
  /// becomes read-only. Null changes nothing.
  virtual bool MergeWith(IZProperty* other) = 0;  // 22
  /// No value, and uniform.
  virtual void ResetValue() = 0;             // 23
  virtual void Reserved24() = 0;             // 24
  virtual USHORT GetExtra4() = 0;            // 25
  virtual void SetExtra4(USHORT value) = 0;  // 26

  // Ranges. Whether the ends belong to the range is one setting for both.

  virtual void SetRange(double minimum, double maximum, bool includeMinimum,
                        bool includeMaximum) = 0;  // 27
  virtual void GetRange(double* minimum, double* maximum, bool* includeMinimum,
                        bool* includeMaximum) = 0;  // 28
  /// Within CMT::GetDist(). A range whose ends are the same restricts nothing.
  virtual bool IsInRange(double value) = 0;  // 29
  virtual void SetIntRange(LONG minimum, LONG maximum, bool includeMinimum,
                           bool includeMaximum) = 0;  // 30
  virtual void GetIntRange(LONG* minimum, LONG* maximum, bool* includeMinimum,
                           bool* includeMaximum) = 0;  // 31
  virtual bool IsInIntRange(LONG value) = 0;           // 32

  virtual bool IsFlag40() = 0;            // 33
  virtual void SetFlag40(bool flag) = 0;  // 34

  // The value by type. A getter converts nothing: a value of another type gives what is named here.

  /// -1.
  virtual SHORT GetShort() = 0;            // 35
  virtual void SetShort(SHORT value) = 0;  // 36
  /// 0.
  virtual double GetDouble() = 0;            // 37
  virtual void SetDouble(double value) = 0;  // 38
  /// Null.
  virtual void GetString(BSTR* out) = 0;  // 39
  /// Null gives a null text.
  virtual void SetString(const OLECHAR* text) = 0;  // 40
  virtual ULONG GetType() = 0;                      // 41
  virtual void SetType(ULONG type) = 0;             // 42
  /// 0.
  virtual ULONG GetULong() = 0;            // 43
  virtual void SetULong(ULONG value) = 0;  // 44
  /// -1.
  virtual LONG GetLong() = 0;            // 45
  virtual void SetLong(LONG value) = 0;  // 46
  /// False.
  virtual bool GetBool() = 0;            // 47
  virtual void SetBool(bool value) = 0;  // 48
  /// The attached value (borrowed), or null.
  virtual ZDfValue* GetObject() = 0;  // 49
  /// Attaches a clone in place of the present one; null attaches none.
  virtual void SetObject(const ZDfValue* object) = 0;  // 50

  virtual bool IsFlag20() = 0;            // 51
  virtual void SetFlag20(bool flag) = 0;  // 52
  virtual bool IsFlag02() = 0;            // 53
  virtual void SetFlag02(bool flag) = 0;  // 54
  /// The value came from a linked parameter.
  virtual bool IsLinked() = 0;            // 55
  virtual void SetLinked(bool flag) = 0;  // 56

  virtual void Save(IZStream* stream) = 0;  // 57
  /// A stream that ends early and damage throw CAtlException(E_FAIL) and change nothing.
  virtual void Load(IZStream* stream) = 0;     // 58
  virtual void* Reserved59() = 0;              // 59
  virtual void Reserved60() = 0;               // 60
  virtual bool HasGUID(const GUID& guid) = 0;  // 61
};
