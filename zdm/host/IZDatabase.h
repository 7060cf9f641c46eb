// The document as the library sees it. The root object of a document answers this interface next to
// IZDMObjMgr; it is its own owner and has ID -1, so that every object reaches the document by
// climbing its owners (IZDMObject::GetDatabase).
// A document owns one ID table and one path table, which outlive its objects, and sets itself as
// the root of the ID table (COIDManager::SetRootOID). Of the library only the visitors that remap
// references hold a reference on a document.
#pragma once

#include "platform/core/IZObject.h"
#include "zdm/host/eZMergeOption.h"

class COIDManager;
class CPIDManager;
class OID;
struct IZDMObjColl;
struct IZDMObjMgr;
struct IZDMObject;
struct IZMergeStrategy;
struct IZOptPath;
struct IZPersistStrategy;

struct ZDM_INTERFACE IZDatabase : IZObject {
  /// The ID table (borrowed), the same on every call. Null only while the document is being built:
  /// objects added meanwhile are attached and get no ID.
  virtual COIDManager* GetOIDManager() = 0;  // 3
  /// The path table (borrowed), the same on every call; never null once objects are loaded.
  virtual CPIDManager* GetPIDManager() = 0;  // 4
  /// The record listed under `id` (borrowed, and held by somebody): the root's for -1, null for 0 and for an ID that is
  /// not listed. COIDManager::GetOIDByID is the expected answer.
  virtual OID* GetOIDByID(LONG id) = 0;  // 5
  /// The library changed the document. `state` is 1 after an object was added and got its ID.
  virtual void OnStateChanged(LONG state) = 0;  // 6
  /// Makes an object for a record whose class the factory cannot create.
  /// @param type  byte 32 of the record's header (IZDMObject::GetTypeByte).
  /// @param out   the object, one reference for the caller; null when there is none for `type`, and
  ///              then reading the stream ends. The object is given the record's ID and owner and
  ///              reads header, body and tail with Load, from the header's first byte: its header
  ///              is the common one of 41 bytes, so a CZDMProxyObject, whose header has 33, never
  ///              fits. It keeps the class identifier and all else that Save has to write back;
  ///              as long as nothing changed, Save writes the record byte for byte as it was read.
  virtual void CreateByType(BYTE type, IZDMObject** out) = 0;  // 7
  /// How objects read from a stream reach their managers (borrowed, alive until the stream is
  /// read); null for IZDMObjMgr::AttachTail. Asked once per stream.
  virtual IZPersistStrategy* GetPersistStrategy() = 0;  // 8
  /// How the contents of two managers are merged where the caller of the merge named the pair.
  /// @param target  the manager of this document that receives objects.
  /// @param added   receives the objects that are new in this document.
  /// @param out     the strategy, one reference for the caller; null merges nothing.
  virtual void GetMergeStrategy(IZDMObjMgr* target, IZDMObjColl* added,
                                IZMergeStrategy** out) = 0;  // 9
  /// What becomes of `source`, an object of another document, given `target`, its counterpart in
  /// this one: an eZMergeOption; any other value leaves both alone.
  virtual BYTE GetMergeOption(IZDMObject* source, IZDMObject* target) = 0;  // 10
  /// The current path of nested references (borrowed); null outside of any.
  virtual IZOptPath* GetOptPath() = 0;  // 11
};
