// A named item of extended data: what another module attaches to an object under its key.
#pragma once

#include "platform/core/IZObject.h"

struct IZDatabase;
struct IZStream;

struct ZDM_INTERFACE IZExtData : IZObject {
  using IZObject::Clone;

  /// A copy of the name (SysFreeString by the caller), or null.
  virtual void GetName(BSTR* out) = 0;  // 3
  /// Takes a copy; null clears. Throws CAtlException(E_OUTOFMEMORY) without memory.
  virtual void SetName(const OLECHAR* name) = 0;  // 4
  virtual void CopyFrom(IZExtData* source) = 0;   // 5
  /// Damage throws CAtlException(E_FAIL).
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 6
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;  // 7
  /// A new item of the same class with the same content; one reference for the caller.
  virtual void Clone(IZExtData** out) = 0;  // 8
};
