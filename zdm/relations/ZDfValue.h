// A typed value, as parameters hold it: no framework object and not counted; whoever holds one ends
// it with Release. A value does not store its type code: its holder writes the code, and makes the
// value from it before loading (ZDfValueRxClass::CreateZDfValue).
#pragma once

#include "platform/core/SmallBlocks.h"
#include "platform/ole/ole.h"

struct IZDMObject;
struct IZDatabase;
struct IZReltnVisitor;
struct IZStream;

struct ZDM_API ZDfValue : zdm::InSmallBlocks {
  virtual ~ZDfValue();  // 0
  /// A new value of the same class with an equal payload (Release by the caller).
  virtual void Clone(ZDfValue** out) = 0;  // 1
  virtual unsigned char GetType() = 0;     // 2
  virtual void Release() = 0;              // 3
  /// False for null and for a value of another class.
  virtual bool JudgeSame(ZDfValue* other) = 0;  // 4
  /// Null and a value of another class change nothing.
  virtual void CopyFrom(ZDfValue* other) = 0;  // 5
  /// A stream that ends early and damage throw CAtlException(E_FAIL).
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 6
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;  // 7
  /// Offers the references that the value holds, as IZRelation::Accept does; false for none.
  virtual bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor);  // 8
};
