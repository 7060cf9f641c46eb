// The defaults of a document for new categories. Answered by the same object as IZDatabase; a
// document that does not answer it gets no categories made on demand.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObjMgr;
struct IZDispAttrib;

namespace zdm {
/// The name of the default material: "缺省".
inline constexpr const OLECHAR* kDefaultMaterialName = OLESTR("\u7F3A\u7701");
}  // namespace zdm

struct ZDM_INTERFACE IZDMModel : IZObject {
  /// The manager of materials (borrowed), whose FindByName finds the default material
  /// (zdm::kDefaultMaterialName). Null: no category is made. Without that material they have none.
  virtual IZDMObjMgr* GetMaterialMgr() = 0;  // 3
  /// The display attribute whose values new categories copy (borrowed). Null: no category is made.
  virtual IZDispAttrib* GetDefaultDispAttrib() = 0;  // 4
};
