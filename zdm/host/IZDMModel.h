// The defaults of a document for new categories. Answered by the same object as IZDatabase; a
// document that does not answer it gets no categories made on demand.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObjMgr;
struct IZDispAttrib;

struct ZDM_INTERFACE IZDMModel : IZObject {
  /// The manager of materials (borrowed), whose FindByName finds the default material under
  /// the name "缺省". Null, or without that material: no category is made.
  virtual IZDMObjMgr* GetMaterialMgr() = 0;  // 3
  /// The display attribute whose values new categories copy (borrowed). Null: no category is made.
  virtual IZDispAttrib* GetDefaultDispAttrib() = 0;  // 4
};
