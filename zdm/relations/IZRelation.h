// The unit of reference between objects: carries a 32-bit status word, offers the references it
// holds to a visitor, and persists, copies and compares itself. Data-model objects and relation
// collections are relations too. References are ID records (OID, PID, CID, UID), never interface
// pointers.
#pragma once

#include "zdm/relations/IZDisplay.h"
#include "zdm/relations/eZRelation.h"

struct IZDMObject;
struct IZDatabase;
struct IZReltnVisitor;
struct IZStream;
struct IZUpdater;

struct ZDM_INTERFACE IZRelation : IZDisplay {
  /// Takes over the content of `other`; what that is, each class says.
  virtual void CopyFrom(IZRelation* other) = 0;  // 45
  /// Both arguments may be null.
  virtual void Update(IZUpdater* updater, GiContext* context) = 0;  // 46
  /// Sets every bit of `bits` in the status word.
  virtual void SetReltnStatus(LONG bits) = 0;    // 47
  virtual LONG GetReltnStatus() = 0;             // 48
  virtual void ClearReltnStatus(LONG bits) = 0;  // 49
  /// True when the status word holds every bit of `mask`.
  virtual bool JudgeReltnStatus(LONG mask) = 0;          // 50
  virtual bool IsReltnDiffusible() = 0;                  // 51
  virtual void SetReltnDiffusible(bool diffusible) = 0;  // 52
  /// Reads what Save wrote. Targets are looked up in `database`, which may be null: then there are
  /// none. A stream that ends early and damage throw CAtlException(E_FAIL).
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 53
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;  // 54
  /// True while the relation is valid itself and what it refers to is; each class says what counts.
  virtual bool IsValid() = 0;  // 55
  /// A number for the owner of the relation; -1 when it was never set.
  virtual void SetReltnTag(LONG tag) = 0;  // 56
  virtual LONG GetReltnTag() = 0;          // 57
  /// Checks and repairs. `database` may be null.
  virtual void AssertValid(IZDatabase* database) = 0;  // 58
  /// Offers every reference to the visitor's operation that fits it; the visitor may replace the
  /// reference. Stops with true at the first true.
  /// @param root   where the walk began; may be null.
  /// @param owner  who holds this relation; may be null.
  virtual bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) = 0;  // 59
  /// True when `other` counts as the same; false for null.
  virtual bool JudgeSame(IZRelation* other) = 0;  // 60
};
