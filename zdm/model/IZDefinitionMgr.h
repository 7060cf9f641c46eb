// The manager of a document's definitions. It finds them by key, and knows the display names of
// their indexes in the order in which they were registered.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/model/IZDMObjMgr.h"

#include <map>
#include <memory>
#include <vector>

struct IZDefinition;

/// The display name of one index.
struct ZDefinitionName {
  ULONG seq = 0;  ///< number of names when this one was registered
  LONG key = 0;
  zdm::Bstr name;  ///< may be null
};

using ZDefinitionNames = std::map<LONG, std::unique_ptr<ZDefinitionName>>;

struct ZDM_INTERFACE IZDefinitionMgr : IZDMObjMgr {
  /// The first valid definition of that key (borrowed); null if none, and for GUID_NULL.
  virtual IZDefinition* FindDefinition(const GUID* key) = 0;  // 184
  /// A registering AddTail.
  virtual void AddDefinition(IZObject* definition) = 0;  // 185
  /// A copy (SysFreeString by the caller): "Unknown" for a key without a name.
  virtual void GetNameByKey(LONG key, BSTR* out) = 0;  // 186
  /// Replaces the name the key had. Null is a name of its own. Throws CAtlException(E_OUTOFMEMORY)
  /// without memory.
  virtual void RegisterName(LONG key, const OLECHAR* name) = 0;  // 187
  /// The names themselves (borrowed).
  virtual ZDefinitionNames* GetNameTable() = 0;  // 188
  /// Sorts keys by the registration of their names; keys without a name follow in their order.
  virtual void SortKeysByRegistration(std::vector<LONG>& keys) = 0;  // 189
  /// True when a valid definition answers that key; false for GUID_NULL.
  virtual bool HasDefinition(const GUID* key) = 0;  // 190
};
