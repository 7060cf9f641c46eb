// A relation to a category that carries its holder's own display values beside those of the
// category, and the relations of sub-categories: the root of a tree that mirrors the members of the
// category. Its visibility is IsVisible and SetVisibility. Results are borrowed.
#pragma once

#include "zdm/relations/IZSingleReltn.h"

struct IZCategory;
struct IZDispAttrib;
struct IZReltnColl;
struct ZGiHatchData;

struct ZDM_INTERFACE IZCategoryReltn : IZSingleReltn {
  /// Display values, never null where the host has the class. Set copies the values of `source`.
  virtual IZDispAttrib* GetProjectionDispAttrib() = 0;             // 66
  virtual void SetProjectionDispAttrib(IZDispAttrib* source) = 0;  // 67
  virtual IZDispAttrib* GetSectionDispAttrib() = 0;                // 68
  virtual void SetSectionDispAttrib(IZDispAttrib* source) = 0;     // 69
  /// Appends the relation of a sub-category (one reference). A relation that this one hangs below,
  /// itself included, is left out.
  virtual void AddSubReltn(IZObject* relation) = 0;  // 70
  /// Null until the first is added.
  virtual IZReltnColl* GetSubReltns() = 0;  // 71
  /// The category's name (SysFreeString by the caller); empty without a category.
  virtual void GetCategoryName(BSTR* out) = 0;  // 72
  /// Null without a target, and when its object is gone or no category.
  virtual IZCategory* GetCategory() = 0;  // 73
  /// 0 without a category.
  virtual ULONG GetCategoryNumber() = 0;  // 74

  // Searches by the number of a category: this relation first, then the sub-relations in order,
  // each with its whole tree. Null when nothing is found.

  virtual IZDispAttrib* FindProjectionDispAttrib(LONG number) = 0;  // 75
  virtual IZDispAttrib* FindSectionDispAttrib(LONG number) = 0;     // 76
  /// True when nothing is found.
  /// @param found  whether something was.
  virtual bool FindCategoryVisible(LONG number, bool* found) = 0;  // 77
  virtual IZCategoryReltn* FindCategoryReltn(LONG number) = 0;     // 78

  virtual ZGiHatchData* GetHatchA() = 0;                   // 79
  virtual void SetHatchA(const ZGiHatchData* source) = 0;  // 80
  virtual ZGiHatchData* GetHatchB() = 0;                   // 81
  virtual void SetHatchB(const ZGiHatchData* source) = 0;  // 82
  virtual void SetFlag02(bool set) = 0;                    // 83
  virtual bool IsFlag02() = 0;                             // 84
  virtual void SetFlag04(bool set) = 0;                    // 85
  virtual bool IsFlag04() = 0;                             // 86
  virtual void SetLevel(BYTE level) = 0;                   // 87
  virtual BYTE GetLevel() = 0;                             // 88
  virtual void SetFlag08(bool set) = 0;                    // 89
  virtual bool IsFlag08() = 0;                             // 90
  /// True when flags, level, target object, hatches and display attributes are the same;
  /// sub-relations, status and tag do not matter. False for null.
  virtual bool JudgeSameValues(IZCategoryReltn* other) = 0;  // 91
  /// Appends the whole tree to `coll`, a parent before its sub-relations.
  virtual void CollectReltns(IZReltnColl* coll) = 0;  // 92
  /// As CopyFrom without the sub-relations.
  virtual void CopyValuesFrom(IZCategoryReltn* other) = 0;  // 93
  /// Makes this relation the category's own: the category then shows these values.
  virtual void ApplyToCategory() = 0;  // 94
};
