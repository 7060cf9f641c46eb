// The identity of one object: its ID, 64 status bits, an option mask and the link to the object.
// Everything that refers to the object holds this record, never the object, so the record lives as
// long as someone has it: it counts the objects that have it as their own (Take, GiveUp, Leave) and
// the ID tables that have listed it, and the last of them deletes it. A record that an ID table has
// listed therefore outlives its object until the table goes; it is then without object, neither
// valid nor attached. A record that nobody holds is whoever's made it; held ones come from `new`.
// Stream form: above Save in OID.cpp.
#pragma once

#include "zdm/identity/KID.h"
#include "zdm/identity/eZObjStatus.h"

#include <bitset>

class COIDManager;
struct IZDMObject;
struct IZStream;

class ZDM_API OID : public KID {
 public:
  /// ID 0, no status, every option allowed, no object.
  OID();
  OID(const LONG& aux1, const LONG& aux2, const LONG& id, IZDMObject* object);
  /// Copies every field, the link to the object included; who holds the record is not copied.
  OID(const OID& other);
  OID& operator=(const OID& other);
  ~OID() override = default;

  // A status outside 0 to 63 throws std::out_of_range. Locked bits are changed like any other.
  void SetStatus(const LONG& status, ULONGLONG key) override;    // 1
  void ClearStatus(const LONG& status, ULONGLONG key) override;  // 2
  virtual bool JudgeStatus(LONG status) const;                   // 3
  /// Reads an entry. AuxWord1 stays as it is: only an ID table keeps the stored one. A stream that
  /// ends early throws CAtlException(E_FAIL), and nothing changes.
  virtual void Load(IZStream* stream);  // 4
  virtual void Save(IZStream* stream);  // 5

  const LONGLONG& GetOptionAllowed() const { return OptionAllowed; }
  void AppenOptionAllowed(const LONGLONG& bits) { OptionAllowed |= bits; }
  void ClearOptionAllowed(const LONGLONG& bits) { OptionAllowed &= ~bits; }
  /// True when every bit of `bits` is set.
  bool JudgeOptionAllowed(const LONGLONG& bits) const { return (OptionAllowed & bits) == bits; }

  /// An object takes `record` (may be null) as its own: one more holder. Returns `record`.
  static OID* Take(OID* record);
  /// `object` gives up `record` (may be null), which was its own. A record bound to `object`, or to
  /// none, is left without object, not valid and not attached; the last holder deletes it.
  static void GiveUp(OID* record, IZDMObject* object);
  /// The object that took `record` (may be null) has another one now, and nothing else changes:
  /// without other holders the record is the caller's.
  static void Leave(OID* record);
  /// The record is that of another object from now on: another revision of its table.
  void NoteOtherObject() const;

  // The status lock: whoever uses a bit as a passing mark over many objects sets it in the lock,
  // stores its own address as the key, and clears both when done.
  static std::bitset<64> c_ObjStatusLock;
  static ULONGLONG c_ObjStatusKey[64];

  LONG AuxWord1 = 0;             ///< carried; written into object headers, stored as 0
  LONG AuxWord2 = 0;             ///< carried; written into object headers and stored
  std::bitset<64> Status;        ///< by eZObjStatus
  LONGLONG OptionAllowed = -1;   ///< what may be done with the object
  IZDMObject* Object = nullptr;  ///< borrowed; null while no object is bound

 private:
  friend class COIDManager;
  void TakeStatus(LONG status, bool set);
  void Release();

  COIDManager* table_ = nullptr;  // the ID table that listed the record last
  ULONG holders_ = 0;
  bool isListed_ = false;  // in that table's list now
};
