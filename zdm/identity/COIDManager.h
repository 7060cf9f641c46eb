// The ID table of a document: the records of all its objects in one vector, ascending by ID. It
// hands out IDs, binds records to objects when a document is read, and answers what needs the whole
// document, such as who refers to an object.
// Records: every record that was ever listed is kept until the table goes, also after Clean,
// Remove, Init or AssertValid took it out of the list; so nothing that refers to an object points
// at freed memory while the table lives. A copy of a table lists the records without keeping them
// and must not outlive the original. Stream form: above Save in OIDTableStream.cpp.
#pragma once

#include "platform/ole/CStringW.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/relations/eZRelation.h"

#include <list>
#include <unordered_map>
#include <vector>

class OID;
struct IZDMObjColl;
struct IZDMObjMgr;
struct IZDMObject;
struct IZDatabase;
struct IZMergeMapTool;
struct IZReltnColl;
struct IZReltnMapID;
struct IZStream;

class ZDM_API COIDManager {
 public:
  /// An object that was read from a stream and found no owner.
  struct UnresolvedObject {
    LONGLONG Word0 = 0;
    LONGLONG Word1 = 1;
    LONG OwnerID = 0;
    LONG SelfID = 0;
    GUID ClassID = {};
    ZRefPtr<IZDMObject> Object;
  };

  /// Empty, both counters 0: Init or Load comes next.
  COIDManager();
  COIDManager(const COIDManager& other);
  COIDManager& operator=(const COIDManager& other);
  virtual ~COIDManager();

  // IDs.

  /// Empties the list; the first hard ID is -2, the first soft one 1.
  void Init();
  /// The next hard (soft) ID. Throw CAtlException(E_FAIL) when all are taken.
  LONG QueryHardID();
  LONG QuerySoftID();
  /// The soft ID handed out last; 0 before the first.
  LONG GetLastSoftID() const { return SoftCounter; }
  /// The counters follow the first and last ID of the list; an empty list changes nothing.
  void SetIDRange();
  /// A new ID would be one that is listed already.
  bool AreCountersBehind() const;
  /// Lists the object under a new hard or soft ID and makes it attached and valid, unless it is
  /// attached already.
  /// @param recurse  the objects of a manager too, down its tree, in list order.
  void AssignItemID(IZDMObject* object, const bool& hard, bool recurse);
  /// Lists the record, wherever it was listed before, at the end under the next soft ID. Returns
  /// its former ID.
  LONG AssignNewID(OID* oid);
  /// Lists a record at the end; it was made with `new`. The caller sees to the order of IDs.
  void AddOID(OID* oid);
  /// Takes the record out of the list; nothing when it is not there.
  void Remove(OID* oid);
  /// The root's record, answered for -1 and kept like a listed one. It is not in the list.
  void SetRootOID(OID* oid);
  OID* GetRootOID() const { return RootOID; }
  /// Told the table's size when it is loaded, and stepped by long operations. Null for none.
  void SetProgressMeter(IZProgressMeter* meter) { ProgressMeter = meter; }

  // Look-up. Results are borrowed; null for absence.

  OID* GetOIDByID(const LONG& id) const;
  /// As GetOIDByID, remembering the last answer: objects of one owner are read one after the other.
  OID* GetOwnerPIDByID(const LONG& id);
  /// The first object of the same ID in the manager that owns `object`.
  static IZDMObject* GetSameIDObj(IZDMObject* object);
  /// The record listed here that belongs to the same object (IZDMObject::JudgeSame) as `oid`, a
  /// record of another document: by ID, else among the hard IDs.
  OID* GetSameInitPID(OID* oid);
  /// 0 without owner.
  static LONG GetObjOwnerID(IZDMObject* object);
  /// Listed records that are valid and have an object.
  LONG GetValidOIDCount() const;
  /// The object at the bottom of the document's current path of nested references.
  static IZDMObject* GetOptPathBottomObj(IZDatabase* db);
  /// All records in table order.
  const std::vector<OID*>& GetOIDs() const;
  /// Another number whenever the list has changed otherwise than by records added at its end, or
  /// a record was given to another object.
  ULONGLONG GetRevision() const;
  const std::list<UnresolvedObject>& GetUnresolved() const { return Unresolved; }

  // IDs that are referred to and not listed. Without KeepReferred they are none.

  /// As GetOIDByID; after KeepReferred also a new record for an ID that is not listed, so that it
  /// is saved again by those who refer to it.
  OID* GetReferredOID(const LONG& id);
  /// Before references are read.
  void KeepReferred() { keepsReferred_ = true; }
  /// Lists the records made since, and ends it.
  void ListReferred();

  // Binding objects.

  /// Binds `object` to the record listed under `id`: 1, or 0 when there is none.
  int RegisterSelf(const LONG& id, IZDMObject* object);
  /// Makes the record listed under `id` the owner of `object`: 1, or 0 when there is none.
  int RegisterOwner(const LONG& id, IZDMObject* object);
  static void SetOwnerOID(const std::list<IZDMObject*>& objects, OID* owner);
  /// Attaches every bound object to the manager that owns it, hard IDs at the head, soft ones at
  /// the tail, and gives up the creation reference of each that it attaches, but for those kept
  /// among the unresolved; all of them are attached and valid then. An object without such a
  /// manager is neither.
  void SetupOwner();

  // Status over the whole list; 0 to 63, otherwise std::out_of_range.

  void SetAllStatus(const LONG& status);
  /// Records without object keep the bit.
  void ClearAllStatus(const LONG& status);

  // Order.

  /// The object of `a` refers to that of `b`, and not the other way round unless its ID is greater.
  static bool IsAGreaterThanB(OID* a, OID* b);
  /// Exchanges neighbours of which the left is greater until there are none. So an object comes
  /// after what it refers to wherever the two became neighbours. Records without object stay.
  static void Sort(std::vector<OID*>& oids);
  /// Sorts the list by ID, equal ones in their present order, and sets the ranges.
  void ReSort();

  // Who refers to whom, by valid objects in table order. "Refers" is asked with a visitor that the
  // factory makes; without its class nothing refers to anything.

  /// 1 when a valid object other than `object` refers to it through a diffusible relation, else 0.
  int IsDependByOtherObjs(IZDMObject* object);
  /// 1 when `object` may be deleted, 0 when not: its ID is hard, it is its manager's current
  /// object, or it is kept while referenced (zdm::kKeptWhileReferenced) and another valid object
  /// whose references count refers to it through a diffusible relation. Outside of managers 1.
  int JudgeDelete(IZDMObject* object);
  /// Appends to `out` the objects that refer to `target`. Answers 0.
  LONG GetReltnObjs(eZRelation kind, IZDMObject* target, IZDMObjColl* out);
  /// Appends to `relations` the relations, of valid and other objects, that lead to `target`. `out`
  /// receives the objects whose walk the recorder ends, which is none. Answers 0.
  LONG GetRelations(eZRelation kind, IZDMObject* target, IZReltnColl* relations, IZDMObjColl* out);

  // Streams.

  /// Writes the records that are valid and have an object.
  void Save(IZStream* stream);
  /// Appends the stored records, without objects, then sets the ranges and tells the meter. False
  /// when the stream ended before all stored ones were read: those before stay.
  bool Load(IZStream* stream);

  // Recovery and validation.

  /// Reads a sequence of objects as IZDMObject::Save writes them, and attaches each that finds its
  /// record listed and not bound to the manager that owns it. Zeros between records are passed
  /// over; objects without such a record end again; those without such a manager, and those that
  /// cannot be loaded, are kept among the unresolved. An object that cannot be loaded is reported
  /// to the debugger's output, and to the user where the variable qv_unlock is defined and not
  /// empty.
  /// @return 1 at the end of the stream; 0 when zeros reach up to it, or at a record whose class
  ///         neither the factory nor the document can create: what was read before stays.
  int ReadStream(IZStream* stream);
  /// ReadStream for every stream of the tree, in the order in which storages list their elements.
  /// What cannot be opened, and storages below zdm::LoadDepth::kMax levels, are left out.
  /// @return 1.
  int ReadStorage(IStorage* storage);
  /// Takes the records with ZOS_DELETED out of the list and their objects out of all managers below
  /// the root. Returns 0.
  LONG Clean();
  /// Lets every valid object check itself and takes the records without object out of the list;
  /// records listed meanwhile stay. A list in which no record has an object stays as it is.
  void AssertValid();

  // Environment and types.

  /// The variable's text; false, and `value` unchanged, when it is not defined.
  static bool GetSysVariant(const char* name, CStringW& value);
  /// The variable is defined and its text is `value`, whatever the case.
  static bool HasSameSysVariantValue(const char* name, const CStringW& value);
  /// The name registered for the object's class identifier; empty when there is none.
  static CStringW GetObjType(IZDMObject* object);

  // Managers.

  /// Makes the manager's first object its current one; nothing for an empty manager.
  static void ValidCurrentObj(IZDMObjMgr* manager);
  /// Exchanges the data of every object with that of the object of the same ID in its owner.
  static void SetObjEx(IZDMObjColl* objects);

  // Copies and merges: objects get new IDs here, and their references are led over. Copies are
  // appended to `added`, managers before what they hold; nobody but `added` holds them, and their
  // owners stay those of the originals until they are led over, too. Each object below a manager is
  // met once. No argument is null unless said otherwise.

  /// Gives `object`, and everything below it, new soft IDs, makes them attached and valid, and adds
  /// the pairs to `map`.
  void QueryNewPID(IZReltnMapID* map, IZDMObject* object, IZDMObjColl* added);
  /// A clone of `object`, without what a manager holds, gets a new ID. Nothing for one that cannot
  /// be cloned.
  void CloneItemEx(IZReltnMapID* map, IZDMObject* object, IZDMObjColl* added);
  /// CloneItemEx for `object` and the valid objects below it, with a step of the meter for each.
  void CloneEx(IZReltnMapID* map, IZDMObject* object, IZDMObjColl* added);
  /// Rebinds a copy that has its final ID, with `ids` as the table of `db`: owner, current object
  /// and references become the records of the same ID, null where there is none. A copy with a soft
  /// ID comes under its owner, which takes over the caller's reference.
  /// @param pending  receives a manager whose current object is not there yet.
  /// @return 0.
  static LONG MapPIDForCopy(IZDMObject* object, IZDatabase* db, COIDManager* ids,
                            std::list<IZDMObject*>& pending);
  /// Leads over what `object` of `db` refers to, and its current object where that is found.
  /// @param remapOwner  1: its owner too, unless that is being loaded.
  /// @return 0.
  static LONG MapPIDForMerge(IZReltnMapID* map, IZDMObject* object, IZDatabase* db, int remapOwner);
  /// Merges the valid objects of `src` into `dst`, by eZMergeOption: an object without counterpart
  /// (IZDMObjMgr::FindObject) is added, for the others `tool` is asked. References are led over
  /// afterwards, with MapPIDForMerge.
  /// @param added     receives the copies of objects that are added; they are in no manager yet.
  /// @param replaced  receives clones of the objects of `dst` that were replaced.
  /// @param srcNode   an object of `src` whose counterpart is `dstNode`, a manager, and merged by
  ///     the strategy of the target document; both may be null.
  static void MergeMgr(IZDMObjMgr* src, IZDMObjMgr* dst, IZMergeMapTool* tool, IZDMObjColl* added,
                       IZDMObjColl* replaced, IZDMObject* srcNode, IZDMObject* dstNode);
  /// The manager that the first relation of status 0x08000000 of an object with ZOS_HASREFMGR leads
  /// to (borrowed), or null.
  static IZDMObjMgr* GetRefMgr(IZDMObject* object);
  /// Leads that relation from `oldMgr` over to `newMgr`.
  static void SetRefMgr(IZDMObject* object, OID* oldMgr, OID* newMgr);

  // Diagnostics; they produce no output. Those that differ only by `int` and `long` exist twice
  // where these are two types.

  static void DumpOIDVect(IZDatabase* db);
  static void DumpOIDVect(IZDatabase* db, const LONG& id);
  static void DumpObj(IZDMObjMgr* manager, const int& level);
  static void DumpObj(IZDMObject* object, const int& level);
  static void DumpObj(OID* oid, const int& level);
#if defined(_WIN32)
  static void DumpObj(IZDMObject* object, const LONG& level);
  static void DumpObj(OID* oid, const LONG& level);
#endif
  static void DumpObjColl(IZDMObjColl* objects, const int& level);
  static void DumpObjVect(const std::vector<OID*>& oids);
  static void DumpObjVect(const std::vector<OID*>& oids, const LONG& level);
  static void DumpObjVect(const std::vector<OID>& oids);
  static void DumpTree(IZDMObject* object, CStringW indent);

 protected:
  /// Lists exactly `oids`, in this order.
  void Replace(std::vector<OID*> oids);
  /// The record was listed here and in no other table since.
  bool Keeps(const OID* oid) const;
  /// Gives up the records that are kept; the list is empty then.
  void ReleaseRecords();

 private:
  friend class OID;
  class RecordReader;

  void Keep(OID* oid);
  void List(OID* oid);
  void Unlist(OID* oid);
  void Settle() const;
  OID* At(std::size_t index) const;
  OID* SearchRecords(LONG id) const;
  std::size_t IndexOf(const OID* oid) const;
  void AssignID(IZDMObject* object, bool hard);
  IZDMObject* GetRootObject() const;
  void ReadObjects(IStream* stream);

  mutable std::vector<OID*> OIDVect;
  std::list<UnresolvedObject> Unresolved;
  LONG HardCounter = 0;
  LONG SoftCounter = 0;
  OID* RootOID = nullptr;
  OID* OwnerCache = nullptr;
  ZRefPtr<IZProgressMeter> ProgressMeter;

  mutable std::vector<OID*> front_;  // hard IDs since the last walk, before OIDVect, last one first
  mutable std::vector<LONG> ids_;    // of OIDVect, place by place: what searches read
  mutable ULONGLONG revision_ = 0;
  std::vector<OID*> kept_;  // every record that was ever listed, one holder each
  bool keepsReferred_ = false;
  std::unordered_map<LONG, OID*> referred_;  // not listed; one holder each
};
