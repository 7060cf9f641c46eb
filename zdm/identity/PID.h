// A path: the records of the objects that lead from the document's root through nested references
// to where an object lives. The pool (CPIDManager) keeps one PID for one sequence of records, so
// paths of one pool are compared by pointer. A path that is in a pool is not changed any more.
// Records: borrowed, may be null. Stream form: above Save in PID.cpp.
#pragma once

#include "zdm/identity/KID.h"
#include "zdm/identity/eZObjStatus.h"

#include <list>
#include <vector>

class COIDManager;
class GeMatrix;
class OID;
struct IZDMObject;
struct IZOptPath;
struct IZStream;

class ZDM_API PID : public KID {
 public:
  /// An empty path.
  explicit PID(const LONG& id);
  /// The records of the path's objects, from head to end.
  PID(const LONG& id, IZOptPath* path);
  /// The ID and records of `other`, which may be null: ID 0, empty. Valid is 1.
  explicit PID(const PID* other);
  PID(const PID&) = default;
  PID& operator=(const PID&) = default;

  // True when both are equally long and hold the same records in the same order; false for null.
  bool IsSame(const PID* other) const;
  bool IsSame(const std::vector<OID*>& records) const;
  bool IsSame(const std::list<OID*>& records) const;
  bool IsSame(IZOptPath* path) const;
  /// A record on the path has the same ID as `oid`.
  bool IsExistOID_SameID(const OID* oid) const;
  /// `object` is bound to a record on the path; false for null.
  bool IsDirectRelateTo(const IZDMObject* object) const;
  /// Every record is there and valid; true for an empty path.
  bool IsValid() const;

  using KID::ClearStatus;
  using KID::SetStatus;
  // On every record of the path.
  void SetStatus(eZObjStatus status);
  void ClearStatus(eZObjStatus status);
  /// Every record has the bit; true for an empty path.
  bool JudgeStatus(eZObjStatus status) const;

  /// Puts the placements of the path's objects, first to last, in front of `m`: what is seen from
  /// inside the last object becomes seen from outside the first. The caller passes the matrix to
  /// start from.
  void get_SToP(GeMatrix& m) const;

  void Save(IZStream* stream) const;
  /// Sets the ID and appends the records that `ids` lists; the others are left out. A stream that
  /// ends before the record does throws CAtlException(E_FAIL), and nothing changes.
  void Load(IZStream* stream, COIDManager* ids);

  std::list<OID*> OIDs;
  BYTE Valid = 1;  ///< only paths with 1 are stored; the library never changes it
};
