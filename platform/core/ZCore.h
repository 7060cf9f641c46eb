// The factory: creates objects by class identifier and knows every registered class.
#pragma once

#include "platform/core/CZObject.h"
#include "platform/core/CZRClass.h"

#include <functional>
#include <vector>

class ZDM_API CZFactory {
 public:
  /// Called for every object that RegisterCreated announces.
  using CreateReactor = std::function<void(CZObject* object, const GUID& classId)>;

  /// A new object of class `classId` (one reference for the caller); null when the class is not
  /// registered, so that nobody takes want of memory for that: then CAtlException(E_OUTOFMEMORY).
  /// A `moduleId` that is neither null nor GUID_NULL limits the search to that module's classes.
  CZObject* Create(const GUID& classId, const GUID* moduleId = nullptr) const;
  bool IsRegistered(const GUID& classId) const { return Find(classId) != nullptr; }
  /// The descriptor (borrowed), or null.
  CZRClass* Find(const GUID& classId) const;
  /// Descriptors in order of registration (borrowed).
  const std::vector<CZRClass*>& GetClasses() const;

  /// Takes over a descriptor; see newZRClass.
  CZRClass* RegisterClass(const CZRClass& description);
  /// Announces a new object to the reactor, as cloning does with each copy. Null does nothing.
  void RegisterCreated(CZObject* object, const GUID& classId) const;
  /// Replaces the reactor that RegisterCreated calls; empty for none. Returns the former one.
  CreateReactor SetCreateReactor(CreateReactor reactor);

 private:
  friend class ZCore;
  CZFactory(const CZFactory&) = delete;
  CZFactory& operator=(const CZFactory&) = delete;
  CZFactory();
  ~CZFactory();

  struct Table;
  Table* table_;
};

class ZDM_API ZCore {
 public:
  /// The process's one factory (borrowed, never null).
  static CZFactory* GetZFactory();
};
