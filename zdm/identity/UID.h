// A reference as relations store it: a CID, and a SubID that names a part of the target (an edge, a
// face). Both parts are owned; no CID means that the UID refers to nothing, no SubID means the
// whole object. A copy is deep. Placements are GeMatrix; a missing path counts as the unit matrix.
// Stream form: above Save in UIDStream.cpp.
#pragma once

#include "platform/geometry/GeMatrix.h"
#include "zdm/identity/CID.h"

#include <vector>

class GiContext;
class KID;
class SubID;
struct IGeCurve;
struct IGePlane;
struct IZDatabase;
struct IZObject;
struct ZGeIOData;

class ZDM_API UID {
 public:
  UID() = default;
  /// The paths are pooled in the document's path table; null and empty ones are none.
  UID(IZDatabase* db, const std::vector<OID*>* selfPath, const std::vector<OID*>* refPath,
      IZDMObject* object, const ::SubID* sub);
  /// Reached through `refOwner` alone (may be null), from top level.
  UID(IZDatabase* db, IZObject* refOwner, IZDMObject* object, const ::SubID* sub);
  UID(const UID& other);
  UID& operator=(const UID& other);
  ~UID();

  /// Deletes both parts.
  void Release();
  // Store copies (or null) in place of the present part; that part itself changes nothing.
  void SetSubID(const ::SubID* sub);
  void SetCID(const ::CID* cid);
  /// Becomes a copy of `other`; refers to nothing for null.
  void CopyFrom(const UID* other);
  /// A copy for the caller to delete.
  UID* Clone() const;

  /// Refers to `oid` at top level: RefPID becomes null, SelfPID stays. Null refers to nothing.
  void SetReltnOID(OID* oid);
  /// The same with the record of the object's IZDMObject view.
  void SetReltnObj(IZObject* object);
  OID* GetReltnOID() const { return CID != nullptr ? CID->ReltnOID : nullptr; }
  /// Borrowed; null when the record has no object.
  IZDMObject* GetReltnObject() const;
  /// The object if it is valid, or with `acceptAffected` if it is marked ZOS_AFFECTED; else null.
  IZDMObject* GetValidObject(bool acceptAffected) const;
  /// Sets a status bit of the target if that is valid.
  void SetValidObjStatus(LONG status);
  /// The target and every record on RefPID are there and valid. SelfPID does not count.
  bool IsValid() const;
  /// The same target, the same paths (as pointers) and equal parts; false for null.
  bool IsSame(const UID* other) const;
  /// RefPID holds exactly these `count` records, in order.
  bool IsSameRootToRefPID(unsigned short count, KID** path) const;
  void ExpandCID(IZDMObjColl* coll) const;
  void RemoveOIDOnPID(OID* oid);

  // Placement of the place named by SelfPID (RefPID), and its inverse; the unit matrix for a
  // placement that has none.
  GeMatrix GetSelfToRootMatrix() const;
  GeMatrix GetRootToSelfMatrix() const;
  GeMatrix GetRefToRootMatrix() const;
  GeMatrix GetRootToRefMatrix() const;
  /// The target as seen by the referring object: itself (borrowed) where both see the same, else a
  /// copy that is moved there, with count 0. Null without target and when it cannot be copied.
  IZDMObject* GetUIDObject() const;

  // The shape of the referred part in the target's own coordinates: as the target's IZDMEntity view
  // answers it, a copy of that when it is reached through a path; none unless the target is valid.
  // `*valid` (may be null) is the target's own word if it is marked ZOS_AFFECTED, else true; false
  // when nobody was asked.
  /// @param out  one reference for the caller, or null.
  void Get_Updated_OCS_Valid_GeCurve(GiContext* context, IGeCurve** out, bool* valid) const;
  void Get_Updated_OCS_Valid_GePlane(GiContext* context, IGePlane** out, bool* valid) const;
  /// @param data  the context to ask in; receives the answer.
  void Get_Updated_OCS_Valid_Geometry(ZGeIOData& data, bool* valid) const;

  /// By CID::Less; a null UID, or one without CID, comes before all others.
  struct lessCID {
    ZDM_API bool operator()(const UID* a, const UID* b) const;
  };

  /// @param withCID  false: the CID is not written.
  void Save(IZStream* stream, IZDatabase* db, bool withCID) const;
  /// Replaces both parts. `withCID` changes nothing; the stream tells. A stream that ends early and
  /// damage throw CAtlException(E_FAIL), and nothing changes.
  void Load(IZStream* stream, IZDatabase* db, bool withCID);
  /// Writes `uid`, which may be null.
  static void SaveUID(const UID* uid, IZStream* stream, IZDatabase* db);
  /// What SaveUID wrote, for the caller to delete; may be null. Throws as Load does.
  static UID* LoadUID(IZStream* stream, IZDatabase* db);
  /// A count, then each element as Save writes it; elements are not null.
  static void Save(const std::vector<UID*>& uids, IZStream* stream, IZDatabase* db, bool withCID);
  /// Appends what was saved, for the caller to delete. Throws as Load does; those read before stay,
  /// and a count that the bytes left cannot hold is damage.
  static void Load(std::vector<UID*>& uids, IZStream* stream, IZDatabase* db, bool withCID);

  ::SubID* SubID = nullptr;
  ::CID* CID = nullptr;
};
