// A definition: what the parameters made from it have in common. It holds one property, which gives
// name, key GUID and presentation, and a few numbers; the index says in which group of a property
// sheet its parameters stand.
// A definition is a data-model object besides; where both sides have an operation (GetName) it
// answers alike.
#pragma once

#include "platform/core/IZObject.h"

struct IZDefinitionMgr;
struct IZProperty;
struct IZPropertyColl;

/// Data that a definition's user attaches to it; stored and copied as it is, 24 bytes.
struct ZDefinitionExtra {
  ULONG first = 0;
  ULONG second = 0;
  BYTE data[16] = {};
};
static_assert(sizeof(ZDefinitionExtra) == 24);

struct ZDM_INTERFACE IZDefinition : IZObject {
  /// Bit 0 of the flags.
  virtual bool GetFlag() = 0;          // 3
  virtual void SetFlag(bool set) = 0;  // 4
  /// The property's name (SysFreeString by the caller). Without a property, and for null, nothing
  /// is done.
  virtual void GetName(BSTR* out) = 0;  // 5
  /// -1 at first.
  virtual LONG GetIndex() = 0;            // 6
  virtual void SetIndex(LONG index) = 0;  // 7
  /// Writes the property's GUID, GUID_UNSET without a property, and returns `out`.
  virtual GUID* GetKey(GUID* out) = 0;  // 8
  /// Takes another property; one equal to the present one changes nothing.
  /// @param share  true: the definition holds `property` itself, false: a copy of it.
  virtual void SetProperty(IZProperty* property, bool share) = 0;  // 9
  /// Borrowed; null at first.
  virtual IZProperty* GetProperty() = 0;  // 10
  /// The property's type code; 0 without a property.
  virtual ULONG PropertyCall() = 0;  // 11
  /// Appends a copy of the property; nothing without one.
  virtual void AddPropertyCopyTo(IZPropertyColl* coll) = 0;  // 12
  virtual ULONG GetFlags() = 0;                              // 13
  virtual void SetFlags(ULONG flags) = 0;                    // 14
  /// The manager that owns the definition (borrowed), or null.
  virtual IZDefinitionMgr* GetDefinitionMgr() = 0;  // 15
  /// The name that the manager has for the index (SysFreeString by the caller); without a manager
  /// nothing is done.
  virtual void GetIndexName(BSTR* out) = 0;  // 16
  /// 3 at first.
  virtual ULONG GetKind() = 0;           // 17
  virtual void SetKind(ULONG kind) = 0;  // 18
  /// Borrowed until the next SetExtra; null without.
  virtual const ZDefinitionExtra* GetExtra() = 0;  // 19
  /// Stores a copy; null clears.
  virtual void SetExtra(const ZDefinitionExtra* extra) = 0;  // 20
  /// True when the property's GUID is `key`; false without a property.
  virtual bool MatchKey(const GUID& key) = 0;  // 21
};
