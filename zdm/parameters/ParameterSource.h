// A walk over the parameters that others can be brought up to date from.
#pragma once

#include "zdm/framework/ZRefPtr.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"

namespace zdm {

/// Calls `visit` for each parameter of `source`, which is an array, or a manager whose objects are
/// taken from the head where they are parameters; of anything else there is none.
template <class Visit>
void ForEachParameter(IZObject* source, const Visit& visit) {
  const ZRefPtr<IZObject> held = source;
  if (auto* array = ViewAs<IZParameterArray>(source)) {
    for (LONG i = 0; i < array->GetCount(); ++i) {
      const ZRefPtr<IZParameter> parameter = array->GetAt(i);
      if (parameter != nullptr) visit(parameter.Get());
    }
  } else if (auto* manager = ViewAs<IZDMObjMgr>(source)) {
    for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) {
      ZRefPtr<IZParameter> parameter;
      if (IZDMObject* object = manager->GetNext(pos)) parameter.Query(object);
      if (parameter != nullptr) visit(parameter.Get());
    }
  }
}

}  // namespace zdm
