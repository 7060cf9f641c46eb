// Something that takes its display values from a category relation while it has one, and from
// itself otherwise. Results are borrowed.
#pragma once

#include "platform/core/IZObject.h"

struct IZCategoryReltn;
struct IZDispAttrib;
struct ZGiHatchData;

struct ZDM_INTERFACE IZCategorizing : IZObject {
  /// Holds the argument's IZCategoryReltn view, if it has one, in place of the former.
  virtual void SetCategoryReltn(IZObject* relation) = 0;  // 3
  virtual IZCategoryReltn* GetCategoryReltn() = 0;        // 4
  /// The relation's attribute for projection or section; without a relation the own one for
  /// projection, whatever the argument.
  virtual IZDispAttrib* GetCategorizedDispAttrib(bool projection) = 0;  // 5
  /// The relation's second hatch when true, its first when false; without a relation the own second
  /// one, whatever the argument.
  virtual ZGiHatchData* GetCategorizedHatch(bool second) = 0;  // 6
  /// The relation's visibility; true without a relation.
  virtual bool IsCategorizedVisible() = 0;  // 7
};
