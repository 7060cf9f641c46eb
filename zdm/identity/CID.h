// A reference: where the referring object lives, the path to the object it refers to, and that
// object. All three are borrowed and may be null: paths belong to their pool, records to their
// objects. Stream form: above Save in CID.cpp.
#pragma once

#include "platform/ole/ole.h"

class COIDManager;
class CPIDManager;
class OID;
class PID;
struct IZDMObjColl;
struct IZDMObject;
struct IZStream;

class ZDM_API CID {
 public:
  CID() = default;
  CID(PID* self, PID* ref, OID* oid) : SelfPID(self), RefPID(ref), ReltnOID(oid) {}

  /// A copy with the same pointers, for the caller to delete.
  CID* Clone() const { return new CID(*this); }
  /// The same target over paths that hold the same records; false for null.
  bool IsSame(const CID* other) const;
  /// `object` is the target or stands on one of the paths; false for null.
  bool IsDirectRelateTo(const IZDMObject* object) const;
  /// Appends the objects on SelfPID, those on RefPID, then the target.
  void ExpandCID(IZDMObjColl* coll) const;
  /// Replaces both paths by the pooled ones without `oid`. Changes nothing when the object of `oid`
  /// is in no document.
  void RemoveOIDOnPID(OID* oid);
  /// Compares RefPID, then SelfPID, then ReltnOID, each only where the pointers before it are equal
  /// in both; a record is less than none, and different records compare by ID, which is final. So
  /// two references over different paths of equal ID are equivalent.
  static bool Less(const CID* a, const CID* b);
  struct lessCID {
    bool operator()(const CID* a, const CID* b) const { return Less(a, b); }
  };

  void Save(IZStream* stream) const;
  /// Replaces all three; an ID that the tables do not list gives null. A stream that ends early
  /// throws CAtlException(E_FAIL), and nothing changes.
  void Load(IZStream* stream, CPIDManager* pids, COIDManager* ids);

  PID* SelfPID = nullptr;   ///< to the object that holds the reference; null at top level
  PID* RefPID = nullptr;    ///< through which the target is reached; null at top level
  OID* ReltnOID = nullptr;  ///< the target
};
