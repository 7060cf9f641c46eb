// The nine field values. Each holds one payload; copies and assignments share a payload that is an
// object (one reference each), while Clone and CopyFrom make one of their own.
// The library knows each by its type code; rxInit() adds it to the registry.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/relations/ZDfValue.h"
#include "zdm/relations/ZDfValueRxClass.h"

struct IZReltnColl;
struct IZSingleReltn;

/// What every value declares. `Creator` makes a default value, null without memory; `gpDesc` is its
/// record in the registry, null while it has none there.
// NOLINTBEGIN(bugprone-macro-parentheses): Class names a type.
#define ZDM_FIELD_VALUE(Class, code)                          \
  static constexpr unsigned char kType = code;                \
  static ZDfValueRxClass* gpDesc;                             \
  static ZDfValue* Creator();                                 \
  static void rxInit();                                       \
  Class();                                                    \
  Class(const Class& other);                                  \
  Class& operator=(const Class& other);                       \
  ~Class() override;                                          \
  void Clone(ZDfValue** out) override;                        \
  unsigned char GetType() override;                           \
  void Release() override;                                    \
  bool JudgeSame(ZDfValue* other) override;                   \
  void CopyFrom(ZDfValue* other) override;                    \
  void Load(IZStream* stream, IZDatabase* database) override; \
  void Save(IZStream* stream, IZDatabase* database) override;

// NOLINTEND(bugprone-macro-parentheses)

/// 8 bytes. Values are the same when they differ by less than CMT::GetDist().
struct ZDM_API ZDfDouble : ZDfValue {
  ZDM_FIELD_VALUE(ZDfDouble, 1)
  double Value = 0.0;
};

/// 16 bytes.
struct ZDM_API ZDfGUID : ZDfValue {
  ZDM_FIELD_VALUE(ZDfGUID, 2)
  GUID Value = GUID_NULL;
};

/// Starts with a new plain relation of the host, not diffusible; without that class, and after
/// copying from a value that holds none, with null. Stored as the relation's own record; one that
/// holds none is stored like a new one. Two are the same when their relations refer to one object.
struct ZDM_API ZDfRelation : ZDfValue {
  ZDM_FIELD_VALUE(ZDfRelation, 3)
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  ZRefPtr<IZSingleReltn> Value;
};

/// Starts empty, not null. Compared as a name (zdm::SameName).
struct ZDM_API ZDfCComBSTR : ZDfValue {
  ZDM_FIELD_VALUE(ZDfCComBSTR, 4)
  zdm::Bstr Value;
};

/// Not stored. The same when it holds the same object; copies hold a clone.
struct ZDM_API ZDfElement : ZDfValue {
  ZDM_FIELD_VALUE(ZDfElement, 5)
  ZRefPtr<IZDMObject> Value;
};

/// 4 bytes.
struct ZDM_API ZDfLong : ZDfValue {
  ZDM_FIELD_VALUE(ZDfLong, 6)
  LONG Value = 0;
};

/// 1 byte; any other than 0 is true.
struct ZDM_API ZDfBool : ZDfValue {
  ZDM_FIELD_VALUE(ZDfBool, 7)
  bool Value = false;
};

/// A pointer-sized number of this process; not stored.
struct ZDM_API ZDfUlongPtr : ZDfValue {
  ZDM_FIELD_VALUE(ZDfUlongPtr, 8)
  ULONGLONG Value = 0;
};

/// Starts with a new collection. Stored as its record, to which loading appends; one that holds
/// none is stored as empty. Never the same as another, nor as itself; copies are deep.
struct ZDM_API ZDfReltnColl : ZDfValue {
  ZDM_FIELD_VALUE(ZDfReltnColl, 9)
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  ZRefPtr<IZReltnColl> Value;
};

#undef ZDM_FIELD_VALUE
