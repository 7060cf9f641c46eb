// The manager of a document's categories. Each number leads to the category that was indexed under
// it first.
#pragma once

#include "zdm/model/IZDMObjMgr.h"

struct IZReltnColl;

struct ZDM_INTERFACE IZCategoryMgr : IZDMObjMgr {
  /// A registering AddTail, after which the category is found by its number.
  virtual void AddCategory(IZDMObject* object) = 0;  // 184
  /// Borrowed; null when there is none under that number, or no longer.
  virtual IZCategory* GetCategoryByNumber(LONG number) = 0;  // 185
  /// The relation trees of the categories without parent, in list order. Throws
  /// CAtlException(E_FAIL) for more than 10^6 relations.
  /// @param out  a new collection, one reference for the caller.
  virtual void CreateCategoryReltnColl(IZReltnColl** out) = 0;  // 186
  /// Fills the manager's map of category relations anew.
  virtual void RebuildReltnMap() = 0;  // 187
  /// Shows `target` with the values of the category. False, and nothing changes, without that
  /// category, and for what is not shown.
  virtual bool ApplyCategoryDispAttrib(ULONG number, IZObject* target) = 0;  // 188
  /// The category under that number; otherwise a new one with the document's default material, if
  /// there is one, and display attribute. Null, and nothing is made, when the document has no
  /// manager of materials or no such attribute.
  /// @return  with one reference for the caller.
  virtual IZCategory* GetOrCreateCategory(ULONG number, const OLECHAR* name) = 0;  // 189
};
