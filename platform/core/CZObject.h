// The one identity of an object: its reference count, its class and its aggregated interfaces.
// Every class has exactly one CZObject part, as a virtual base, however many interfaces it has.
// Counts are plain: an object is used on one thread at a time.
#pragma once

#include "platform/core/SmallBlocks.h"
#include "platform/ole/ole.h"

#include <memory>

class CZRClass;
struct IZObject;

namespace zdm {
class ChangeWatch;
}

class ZDM_API CZObject : public zdm::InSmallBlocks {
 public:
  /// Starts at count 1: the creator's reference. So does a copy; assignment leaves the count alone.
  /// Aggregated interfaces belong to the one object and are not copied.
  CZObject();
  CZObject(const CZObject& other);
  CZObject& operator=(const CZObject& other);

  /// The class descriptor (borrowed); null for a class the factory does not know.
  virtual CZRClass* getZRClass() const;  // 0
  virtual ~CZObject();                   // 1
  /// True for the same object.
  virtual bool EqualTo(const CZObject* other);  // 2
  /// True when the class answers to the interface `id`.
  virtual bool IsA(unsigned short id);  // 3
  /// Offset in bytes from GetLPVOID() to the view for interface `id`; all ones when there is none.
  virtual ULONGLONG _GetOffsetofClass(unsigned short id);  // 4
  /// The class identifier; GUID_NULL without a descriptor.
  virtual GUID GetZRID() const;  // 5
  /// The identifier of the module that registered the class; GUID_NULL without a descriptor.
  virtual GUID GetZRMID() const;  // 6
  /// Writes the class identifier. E_INVALIDARG for null; E_FAIL and GUID_NULL without a descriptor.
  virtual HRESULT GetClassID(GUID* out) const;  // 7
  /// The identifier under which the object is stored: the class identifier.
  virtual GUID GetObjectCLSID() const;  // 8
  /// The IZObject view (borrowed), or null.
  virtual IZObject* GetIZObject();  // 9
  /// The start of the whole object.
  virtual void* GetLPVOID();  // 10
  /// Attaches `object` under interface `id` (one reference, released with this object), in place of
  /// an earlier one; null removes. Aggregated objects are not reached by interface queries.
  virtual void AddAggregation(unsigned short id, IZObject* object);  // 11
  /// The object attached under `id` (borrowed), or null.
  virtual IZObject* GetAggregation(unsigned short id);  // 12
  /// Releases the object attached under `id`, if any.
  virtual void RemoveAggregation(unsigned short id);  // 13
  virtual bool HasAggregation(unsigned short id);     // 14

  /// The id of an interface name: the same for the same name on every call, from 1 upwards.
  /// 0 for null. Throws CAtlException(E_OUTOFMEMORY) when all 65535 ids are taken.
  static unsigned short AddInterface(const char* name);
  /// The name registered under `id`; null when there is none.
  static const char* GetInterfaceName(unsigned short id);

  /// Ends the object's life, whatever its count.
  void Destroy_XXX();

  ULONG IncrementCount() { return ++count_; }
  /// Returns the new count; the object ends when the count before was 1.
  ULONG DecrementCount();
  ULONG GetReferenceCount() const { return count_; }
  /// Takes one reference back without ending the object, also at 0: what Clone hands out.
  ULONG ForgetReference() { return --count_; }

 private:
  friend class ZWeakHandle;
  friend class zdm::ChangeWatch;
  struct Extras;  // what few objects have: aggregated interfaces, weak handles

  Extras& GetExtras();

  ULONG count_ = 1;
  ULONG watch_ = 0;  // the mark of those who remember what this object holds
  std::unique_ptr<Extras> extras_;
};
