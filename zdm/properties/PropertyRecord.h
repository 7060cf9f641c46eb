// What a property stores, and how: everything but the attached value.
#pragma once

#include "platform/ole/Bstr.h"
#include "platform/ole/Variant.h"
#include "zdm/properties/GUID_UNSET.h"

struct IZStream;

namespace zdm {

struct ZDM_API PropertyRecord {
  // Bits of `flags`.
  static constexpr USHORT kFlag02 = 0x02;
  static constexpr USHORT kLinked = 0x04;
  static constexpr USHORT kReadOnly = 0x08;
  static constexpr USHORT kUniform = 0x10;
  static constexpr USHORT kFlag20 = 0x20;
  static constexpr USHORT kFlag40 = 0x40;
  static constexpr USHORT kIncludesMinimum = 0x80;
  static constexpr USHORT kIncludesMaximum = 0x100;

  Bstr name;         // null counts as empty
  Bstr displayName;  // null counts as empty
  GUID guid = GUID_UNSET;
  ULONG type = 0;
  USHORT flags = kUniform | kFlag20;
  Variant value;
  ULONG extra1 = 0;
  ULONG extra2 = 0;
  ULONG extra3 = 0xFFFFFFFF;
  USHORT extra4 = 0;
  double minimum = 0.0;
  double maximum = 0.0;
  LONG intMinimum = 0;
  LONG intMaximum = 0;

  bool Has(USHORT bit) const { return (flags & bit) != 0; }
  void Set(USHORT bit, bool on) { flags = static_cast<USHORT>(on ? flags | bit : flags & ~bit); }
  bool IsInRange(double number) const;
  bool IsInIntRange(LONG number) const;

  void Save(IZStream* stream) const;
  /// Changes nothing when it throws.
  void Load(IZStream* stream);
};

/// A copy of a name for the caller, empty for null.
inline BSTR CopyOfName(const Bstr& name) { return Bstr(name.View()).Detach(); }

/// Whether two values count as one when properties are merged; numbers do within 1e-5.
ZDM_API bool SameValue(const VARIANT& left, const VARIANT& right);

}  // namespace zdm
