// A visitor that gathers the relations it is shown.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"
#include "zdm/relations/eZRelation.h"

struct ZDM_INTERFACE IZReltnCollector : IZReltnVisitor {
  /// What is gathered from now on, by the strict test (zdm::SelectsStrictly).
  virtual void SetReltnType(eZRelation type) = 0;  // 12
};
