// Walks the objects of a manager or a collection. Positions are those of their lists; objects
// handed out are borrowed. "Status" is a bit of the object's status, 0 to 63.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObject;

struct ZDM_INTERFACE IZDMObjIterator : IZObject {
  /// 0 when empty.
  virtual LONGLONG GetHeadPosition() = 0;  // 3
  virtual LONGLONG GetTailPosition() = 0;  // 4
  /// First (last) object with the bit, or 0.
  virtual LONGLONG GetHeadStatusPosition(LONG bit) = 0;  // 5
  virtual LONGLONG GetTailStatusPosition(LONG bit) = 0;  // 6
  /// Object at `pos`; moves `pos` to the next (previous) one with the bit, or 0. Throws
  /// CAtlException(E_FAIL) if `pos` is 0.
  virtual IZDMObject* GetStatusNext(LONG bit, LONGLONG& pos) = 0;  // 7
  virtual IZDMObject* GetStatusPrev(LONG bit, LONGLONG& pos) = 0;  // 8
  virtual ULONG GetStatusCount(LONG bit) = 0;                      // 9
  /// Object at `pos`; moves `pos` on, 0 past the end. Throws CAtlException(E_FAIL) if `pos` is 0.
  virtual IZDMObject* GetNext(LONGLONG& pos) = 0;  // 10
  virtual IZDMObject* GetPrev(LONGLONG& pos) = 0;  // 11
  /// The same over valid objects.
  virtual LONGLONG GetValidHeadPosition() = 0;          // 12
  virtual IZDMObject* GetValidNext(LONGLONG& pos) = 0;  // 13
  virtual bool IsEmpty() = 0;                           // 14
};
