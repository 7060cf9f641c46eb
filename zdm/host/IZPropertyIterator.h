// The side of a property that lets the user choose an object: a list of candidates around a current
// one. Answered by host property classes next to IZProperty, for the property types 17 and 24.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObject;

struct ZDM_INTERFACE IZPropertyIterator : IZObject {
  /// The object that the parameter refers to becomes the chosen one; null for none.
  virtual void SetChosenObject(IZDMObject* object) = 0;  // 3
  /// Builds the list of candidates anew, for the object just set.
  virtual void Rebuild() = 0;  // 4
  /// The chosen object (borrowed), null for none. The parameter then refers to its IZDMObject view.
  virtual IZObject* GetChosenObject() = 0;  // 5
};
