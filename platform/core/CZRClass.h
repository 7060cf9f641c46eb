// The descriptor of a class that the factory can create, and the call that registers one.
#pragma once

#include "platform/ole/ole.h"

#include <string>

class CZObject;

using ZClassCreator = CZObject* (*)();               // a new object, count 1; null without memory
using ZClassDestroyer = void (*)(CZObject* object);  // destroys and frees; null does nothing

class ZDM_API CZRClass {
 public:
  CZRClass(const GUID& moduleId, const char* moduleName, const GUID& classId, const char* name,
           ZClassCreator creator, ZClassDestroyer destroyer, unsigned short flag);

  const GUID& GetModuleID() const { return moduleId_; }
  const char* GetModuleName() const { return moduleName_.c_str(); }
  const GUID& GetClassID() const { return classId_; }
  const char* GetName() const { return name_.c_str(); }
  unsigned short GetFlag() const { return flag_; }
  /// The version of the class: the flag it was registered with.
  ULONG GetVersion() const { return flag_; }

  /// A new object (one reference for the caller); null without memory.
  CZObject* Create() const { return creator_(); }
  void Destroy(CZObject* object) const { destroyer_(object); }

 private:
  GUID moduleId_;
  std::string moduleName_;
  GUID classId_;
  std::string name_;
  ZClassCreator creator_;
  ZClassDestroyer destroyer_;
  unsigned short flag_;
};

/// Registers a class with the factory. Returns its descriptor, which lives until the library is
/// unloaded; for a class identifier that is registered already, the descriptor of the first
/// registration. Null when a name, the creator or the destroyer is missing.
ZDM_API CZRClass* newZRClass(const GUID& moduleId, const char* moduleName, const GUID& classId,
                             const char* name, ZClassCreator creator, ZClassDestroyer destroyer,
                             unsigned short flag);
