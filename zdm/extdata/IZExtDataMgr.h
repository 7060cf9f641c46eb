// The extended data of one object: for each key, the collection of one module, one reference each.
// Keys are ordered by their fields, as unsigned numbers.
#pragma once

#include "platform/core/IZObject.h"

struct IZDatabase;
struct IZExtDataCollection;
struct IZStream;

struct ZDM_INTERFACE IZExtDataMgr : IZObject {
  using IZObject::Clone;

  /// Borrowed; null when there is none under `key`.
  virtual IZExtDataCollection* GetCollection(const GUID& key) = 0;  // 3
  /// Borrowed; a new empty one is stored under `key` when there is none.
  virtual IZExtDataCollection* QueryCollection(const GUID& key) = 0;  // 4
  virtual void RemoveCollection(const GUID& key) = 0;                 // 5
  virtual void RemoveAll() = 0;                                       // 6
  /// A new manager with copies of all collections, one reference for the caller; nothing for null.
  virtual void Clone(IZExtDataMgr** out) = 0;  // 7
  /// Nothing for a null stream.
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;  // 8
  /// Adds the collections read, in place of those under the same keys. Nothing for a null stream;
  /// damage throws CAtlException(E_FAIL), and what was read stays.
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 9
  /// The keys in their order as an array of strings (lower bound 0), each in braces; the caller
  /// destroys it. Null throws CAtlException(E_POINTER).
  virtual void GetKeys(SAFEARRAY** out) = 0;  // 10
};
