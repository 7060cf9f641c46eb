// The path table of a document: the pool that keeps one PID for one sequence of records and gives
// each an ID of its own, 1, 2, … in order of creation. Looking a path up, by ID or by sequence,
// does not depend on how many there are. Paths are owned and live until the pool goes, also those
// that Init took out. Stream form: above Save in CPIDManager.cpp.
#pragma once

#include "platform/ole/ole.h"

#include <list>
#include <map>
#include <memory>
#include <vector>

class COIDManager;
class OID;
class PID;
struct IZDMObject;
struct IZObject;
struct IZOptPath;
struct IZStream;

class ZDM_API CPIDManager {
 public:
  CPIDManager() = default;
  CPIDManager(const CPIDManager&) = delete;
  CPIDManager& operator=(const CPIDManager&) = delete;
  virtual ~CPIDManager();

  /// Empties the pool; the next path gets ID 1.
  void Init();
  /// The first pooled path with that ID (borrowed), or null.
  PID* GetPIDByID(const LONG& id) const;

  // The first pooled path with the same records (borrowed), or null; null for a null argument.
  PID* FindPID(const PID* path) const;
  PID* FindPID(const std::vector<OID*>& records) const;
  PID* FindPID(const std::list<OID*>& records) const;
  PID* FindPID(IZOptPath* path) const;
  /// The path of that object alone.
  PID* FindPID(IZDMObject* object) const;

  // What FindPID answers; a new path where there is none. Null for a null argument. Throw
  // CAtlException(E_FAIL) when all IDs are taken.
  PID* QueryPID(const PID* path);
  PID* QueryPID(const std::vector<OID*>& records);
  PID* QueryPID(const std::list<OID*>& records);
  PID* QueryPID(IZOptPath* path);
  PID* QueryPID(IZDMObject* object);
  /// The path of `base` (null for the empty one) extended by the IZDMObject view of `last`; null
  /// without such a view.
  PID* QueryPID(const PID* base, IZObject* last);

  /// Number of pooled paths whose Valid is 1.
  LONG GetValidLIDCount() const;
  /// Asks paths whether they are valid: mode 1 all, 2 those whose Valid is 1, 3 those whose Valid
  /// is 0. Nothing is kept of the answers.
  void NormalizeValidity(const unsigned int& mode) const;

  void Save(IZStream* stream) const;
  /// Appends the stored paths; records that `ids` does not list are left out of them. False when
  /// the stream ended or a path was damaged before all stored ones were read: those before stay.
  bool Load(IZStream* stream, COIDManager* ids);

  /// In pool order (borrowed).
  const std::list<PID*>& GetPIDs() const { return PIDList; }

 private:
  struct Place {
    std::size_t hash = 0;
    PID* path = nullptr;
  };

  template <class Records>
  std::size_t PlaceOf(const Records& records, std::size_t hash) const;
  template <class Records>
  PID* Find(const Records& records) const;
  template <class Records>
  PID* Query(const Records& records);
  LONG NextID() const;
  void Pool(std::unique_ptr<PID> path);
  void MakeRoom();
  void NoteID(PID* path);

  LONG LastPID = 0;
  std::list<PID*> PIDList;

  // By sequence: a power of two places, at most half of them taken, each by the first of equal
  // paths, at the first free place from the one that its hash names.
  std::vector<Place> places_;
  // By ID, the first of several. IDs about as high as there are paths are indexes, others are far.
  std::vector<PID*> byID_;
  std::map<LONG, PID*> byFarID_;
  std::list<PID*> dropped_;  // by Init
};
