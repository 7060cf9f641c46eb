// What an embedded object (CZDMObjEmbed) leaves to another module: its data and behaviour. The
// object is given its extension with SetExt, keeps one reference on it while it lives, and hands it
// out with a reference of the caller's (GetExt). An extension that knows its object does not hold a
// reference on it, or neither would go. A document
// stores the extension's class identifier (CZObject::GetClassID) with the object and makes the
// extension through the factory, so its class is registered.
#pragma once

#include "platform/core/IZObject.h"

class GiContext;
struct IZDMObject;
struct IZDatabase;
struct IZReltnVisitor;
struct IZStream;
struct IZUpdater;

struct ZDM_INTERFACE IZDMObjExt : IZObject {
  /// Reads what SaveData wrote, as the last part of the object's body. Damage throws
  /// CAtlException(E_FAIL).
  virtual void LoadData(IZStream* stream, IZDatabase* database) = 0;  // 3
  /// Writes the data; the body's length is kept by the object. Not called for an invalid object.
  virtual void SaveData(IZStream* stream, IZDatabase* database) = 0;  // 4
  /// The object is to be brought up to date. Both arguments may be null.
  virtual void Update(IZUpdater* updater, GiContext* context) = 0;  // 5
  /// Checks and repairs the extension's own data: the object's AssertValid comes here first, then
  /// compares the references offered with those it stored. `database` may be null.
  virtual void AssertValid(IZDatabase* database) = 0;  // 6
  /// Takes over the data of `source`, the extension of the object copied from; null changes
  /// nothing.
  virtual void CopyFrom(IZDMObjExt* source) = 0;  // 7
  /// True when the objects of both extensions count as the same. `other` is not null.
  virtual bool JudgeSame(IZDMObjExt* other) = 0;  // 8
  /// Offers all references of `owner`, the embedded object: its owner's record first, then those
  /// held by the object and by the extension, each to the visitor's operation that fits it, with
  /// `root` (may be null) and `owner`. Stops with true at the first true. The embedded object
  /// itself answers false all the same.
  virtual bool VisitReferences(IZDMObject* root, IZDMObject* owner,
                               IZReltnVisitor* visitor) = 0;  // 9
};
