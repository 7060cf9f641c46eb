// An ordered list of relations that is itself a relation. Elements are borrowed and may be null.
// Valid elements are those that are not null and have ZRS_VALID; a nested collection is never one.
#pragma once

#include "zdm/framework/IZList.h"
#include "zdm/relations/IZRelation.h"

struct ZDM_INTERFACE IZReltnColl : IZList<IZRelation, IZReltnColl, IZRelation> {
  using IZObject::Clone;

  // The 31 list operations take the places 61 (GetHead) to 91 (AddTailColl).

  /// First element from the head that holds every bit of `mask`; 0 if none.
  virtual LONGLONG GetHeadStatusPosition(LONG mask) = 0;  // 92
  /// The same from the tail backwards.
  virtual LONGLONG GetTailStatusPosition(LONG mask) = 0;  // 93
  /// Element at `pos`, whether it passes or not; moves `pos` to the next one that holds every bit
  /// of `mask`, 0 past the last. Throws CAtlException(E_FAIL) if `pos` is 0.
  virtual IZRelation* GetStatusNext(LONG mask, LONGLONG& pos) = 0;  // 94
  /// The same towards the head.
  virtual IZRelation* GetStatusPrev(LONG mask, LONGLONG& pos) = 0;  // 95
  /// Copies this collection into a plain one, invalid elements included; the copy selects ZR_ALL.
  /// @param out   the copy, one reference for the caller.
  /// @param deep  true: elements are cloned, and those that cannot be are left out; false: both
  ///              collections share them.
  virtual void Clone(IZReltnColl** out, bool deep) = 0;  // 96
  // The four status operations with mask ZRS_VALID.
  virtual LONGLONG GetValidHeadPosition() = 0;          // 97
  virtual LONGLONG GetValidTailPosition() = 0;          // 98
  virtual IZRelation* GetValidNext(LONGLONG& pos) = 0;  // 99
  virtual IZRelation* GetValidPrev(LONGLONG& pos) = 0;  // 100
};
